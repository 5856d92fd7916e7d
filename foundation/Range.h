#pragma once

namespace tavrin {
inline namespace foundation {

/// From the minimum to the maximum.
template <class T>
struct Range {
    T minimum{};
    T maximum{};

    friend bool operator==(const Range&, const Range&) = default;
};

}  // namespace foundation
}  // namespace tavrin
