#pragma once

#include <array>
#include <cstddef>
#include <vector>

namespace tavrin::postcore {

/// What light of one pixel adds to the pixels around it: a square kernel for each channel of linear
/// sRGB, in the order red, green, blue. A kernel has (2 radius + 1)² weights, none negative, row by
/// row from the top; the light's own pixel is at (radius, radius). Light from pixel (x, y) adds the
/// weight at (radius + i, radius + j) times itself to pixel (x + i, y + j).
///
/// Each kernel sums up to 1, so that white light is white on the whole. The weight of the light's
/// own pixel is 0: a kernel is of the light that leaves its pixel. Where no light leaves it (radius
/// 0, an aperture that is closed) all weights are 0.
struct PointSpreadFunction {
    int radius = 0;
    std::array<std::vector<float>, 3> planes;

    /// Weights in a row, and rows.
    int getSize() const { return 2 * radius + 1; }
    std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(getSize()) +
               static_cast<std::size_t>(x);
    }
};

/// Leaves out the light's own pixel of a kernel and scales it so that it sums up to 1, where it has
/// any light. Uses the default scheduler.
void normalize(std::vector<float>& kernel);

}  // namespace tavrin::postcore
