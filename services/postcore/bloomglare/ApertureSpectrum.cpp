#include "services/postcore/bloomglare/ApertureSpectrum.h"

#include "foundation/PixelArray.h"
#include "foundation/Scheduler.h"
#include "services/postcore/bloomglare/Fft.h"
#include "services/postcore/bloomglare/Interpolation.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>

namespace tavrin::postcore {
namespace {

/// The frequencies of each row of the mask.
BitmapImpl<Complex> transformRows(const BitmapImpl<float>& mask, int size) {
    const RealRowFft fft(size);
    BitmapImpl<Complex> rows(fft.getFrequencyCount(), mask.getHeight());
    Scheduler::defaultInstance().parallelFor(
        0, mask.getHeight(), TaskPriority::Normal, [&](std::int64_t y) {
            PixelArray<float> reals(static_cast<std::size_t>(size));
            PixelArray<Complex> row(static_cast<std::size_t>(fft.getFrequencyCount()));
            std::fill_n(reals.data(), reals.size(), 0.0f);
            std::ranges::copy(mask.row(static_cast<int>(y)), reals.data());
            fft.transformForward(reals.data(), row.data());
            std::copy_n(row.data(), row.size(), rows.row(static_cast<int>(y)).data());
        });
    return rows;
}

}  // namespace

ApertureSpectrum::ApertureSpectrum(const BitmapImpl<float>& mask, int padding, int reach)
    : reach_(reach), power_(reach + 2, 2 * reach + 3) {
    const int size = mask.getWidth() * padding;
    const BitmapImpl<Complex> rows = transformRows(mask, size);
    const ColumnFft fft(size);
    const auto transformColumns = [&](std::int64_t blockIndex) {
        const int begin = static_cast<int>(blockIndex) * kFftColumns;
        const int width = std::min(kFftColumns, power_.getWidth() - begin);
        ColumnBlock block(size);
        std::fill_n(block.data(), block.getCount(), Complex());
        for (int y = 0; y < rows.getHeight(); ++y) {
            std::copy_n(rows.row(y).data() + begin, width, block.row(y));
        }
        fft.transformForward(block);
        for (int y = 0; y < power_.getHeight(); ++y) {
            const int v = y - reach_ - 1;
            const Complex* row = block.row(v < 0 ? v + size : v);
            std::transform(row, row + width, power_.row(y).data() + begin,
                           [](const Complex& amplitude) { return std::norm(amplitude); });
        }
    };
    const int blockCount = (power_.getWidth() + kFftColumns - 1) / kFftColumns;
    Scheduler::defaultInstance().parallelFor(0, blockCount, TaskPriority::Normal, transformColumns);
}

float ApertureSpectrum::sample(float u, float v) const {
    const float side = u < 0.0f ? -1.0f : 1.0f;  // the other half is the same
    const float column = side * u;
    const float row = side * v + static_cast<float>(reach_ + 1);
    const int x = static_cast<int>(column);
    const int y = static_cast<int>(row);
    const float partX = column - static_cast<float>(x);
    const float partY = row - static_cast<float>(y);
    const auto lerpRow = [&](int j) { return mix(power_.at(x, j), power_.at(x + 1, j), partX); };
    return mix(lerpRow(y), lerpRow(y + 1), partY);
}

}  // namespace tavrin::postcore
