#pragma once

#include <algorithm>

namespace tavrin {
inline namespace foundation {

/// A pair of integers: a position (x, y) or a size (width, height), in pixels.
struct Pixel {
    int x = 0;
    int y = 0;

    friend bool operator==(Pixel, Pixel) = default;
};

/// A rectangle of pixels; x1 and y1 are exclusive.
struct Bucket {
    int x0 = 0;
    int y0 = 0;
    int x1 = 0;
    int y1 = 0;

    bool isEmpty() const { return x0 >= x1 || y0 >= y1; }
    int width() const { return x1 - x0; }
    int height() const { return y1 - y0; }
    Pixel size() const { return {width(), height()}; }
    bool contains(const Bucket& other) const {
        return other.x0 >= x0 && other.y0 >= y0 && other.x1 <= x1 && other.y1 <= y1;
    }

    friend bool operator==(const Bucket&, const Bucket&) = default;
};

}  // namespace foundation
}  // namespace tavrin
