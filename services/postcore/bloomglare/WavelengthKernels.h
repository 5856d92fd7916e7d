#pragma once

#include <array>
#include <cstddef>

namespace tavrin::postcore {

/// What a row of a pattern adds to each of three channels.
struct RowWeight {
    int row;
    std::array<float, 3> channels;
};

/// Sums up `count` weighted rows, which begin `stride` values after each other from row 0 on, for
/// each channel over `columns` columns, a multiple of 16. Negative sums become 0.
void sumRows(const float* rows, std::size_t stride, const RowWeight* weights, std::size_t count,
             std::size_t columns, const std::array<float*, 3>& sums);

}  // namespace tavrin::postcore
