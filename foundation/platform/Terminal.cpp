#include "foundation/platform/Terminal.h"

#include <unistd.h>

namespace tavrin {
inline namespace foundation {
namespace platform {

bool isErrorOutputTerminal() {
    return isatty(STDERR_FILENO) == 1;
}

}  // namespace platform
}  // namespace foundation
}  // namespace tavrin
