#pragma once

#include "foundation/String.h"

#include <tl/expected.hpp>

namespace tavrin {
inline namespace foundation {

/// The answer of an operation whose failure is an ordinary answer (load, save, deserialise):
/// a value, or one English sentence that says what went wrong.
template <class T>
using Result = tl::expected<T, String>;

/// Makes a failed Result: `return Failure("There is no such file.");`.
using Failure = tl::unexpected<String>;

}  // namespace foundation
}  // namespace tavrin
