#pragma once

#include <optional>

namespace tavrin {
inline namespace foundation {

/// A value or nothing.
template <class T>
using Optional = std::optional<T>;

}  // namespace foundation
}  // namespace tavrin
