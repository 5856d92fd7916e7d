#pragma once

#include <source_location>

namespace tavrin {
inline namespace foundation {

/// Ends the program after a programming error (an impossible state), naming the place.
[[noreturn]] void fatalError(const char* reason,
                             std::source_location place = std::source_location::current());

}  // namespace foundation
}  // namespace tavrin
