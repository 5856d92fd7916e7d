#include "foundation/FatalError.h"

#include <cstdio>
#include <cstdlib>

namespace tavrin {
inline namespace foundation {

void fatalError(const char* reason, const char* file, int line) {
    std::fprintf(stderr, "%s:%d: %s\n", file, line, reason);
    std::abort();
}

}  // namespace foundation
}  // namespace tavrin
