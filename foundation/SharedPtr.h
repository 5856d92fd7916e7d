#pragma once

#include <memory>

namespace tavrin {
inline namespace foundation {

/// An owner among several; the last one destroys the object.
template <class T>
using SharedPtr = std::shared_ptr<T>;

}  // namespace foundation
}  // namespace tavrin
