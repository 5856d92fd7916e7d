#pragma once

namespace tavrin {
inline namespace foundation {

/// Ends the program after a programming error (an impossible state), naming the place of the call.
[[noreturn]] void fatalError(const char* reason, const char* file = __builtin_FILE(),
                             int line = __builtin_LINE());

}  // namespace foundation
}  // namespace tavrin
