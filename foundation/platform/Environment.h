#pragma once

#include "foundation/Optional.h"
#include "foundation/Path.h"

namespace tavrin {
inline namespace foundation {
namespace platform {

/// The path in a variable of the process's environment; nothing when it is not set or empty. Any
/// thread, as long as none changes the environment.
Optional<Path> getEnvironmentPath(const char* name);

}  // namespace platform
}  // namespace foundation
}  // namespace tavrin
