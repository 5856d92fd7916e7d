#include "foundation/platform/Environment.h"

#include <cstdlib>

namespace tavrin {
inline namespace foundation {
namespace platform {

Optional<Path> getEnvironmentPath(const char* name) {
    const char* value = std::getenv(name);
    if (value == nullptr || *value == '\0') {
        return std::nullopt;
    }
    return Path(std::filesystem::path(value));
}

}  // namespace platform
}  // namespace foundation
}  // namespace tavrin
