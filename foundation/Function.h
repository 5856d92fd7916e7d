#pragma once

#include <functional>

namespace tavrin {
inline namespace foundation {

/// A copyable callable; empty is allowed and tested with `if (function)`.
template <class Signature>
using Function = std::function<Signature>;

}  // namespace foundation
}  // namespace tavrin
