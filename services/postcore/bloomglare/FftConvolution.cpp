#include "services/postcore/bloomglare/FftConvolution.h"

#include "services/postcore/bloomglare/ComplexKernels.h"
#include "services/postcore/bloomglare/RowLoop.h"

#include <algorithm>
#include <cstddef>

namespace tavrin::postcore {
namespace {

std::size_t toSize(int number) {
    return static_cast<std::size_t>(number);
}

}  // namespace

FftConvolution::Axis FftConvolution::makeAxis(int sourceBegin, int sourceEnd, int frameSize,
                                              int radius) {
    Axis axis;
    axis.sourceBegin = sourceBegin;
    axis.sourceEnd = sourceEnd;
    axis.resultBegin = std::max(sourceBegin - radius, 0);
    axis.resultEnd = std::min(frameSize - sourceEnd, radius) + sourceEnd;
    axis.nearest = axis.resultBegin - (sourceEnd - 1);
    axis.farthest = axis.resultEnd - 1 - sourceBegin;
    // Distances that occur without having a weight may share a number of the transform with each
    // other, but not with those that have one.
    const int leastPeriod = 1 + std::max(axis.farthest - std::max(axis.nearest, -radius),
                                         std::min(axis.farthest, radius) - axis.nearest);
    axis.nearest = std::max(axis.nearest, -radius);
    axis.farthest = std::min(axis.farthest, radius);
    axis.fftSize = tavrin::postcore::getFftSize(std::max(leastPeriod, sourceEnd - sourceBegin));
    return axis;
}

FftConvolution::FftConvolution(Flags<ImageOperatorsFlag> flags, Pixel frame, const Bucket& bounds,
                               int radius)
    : flags_(flags),
      radius_(radius),
      horizontal_(makeAxis(bounds.x0, bounds.x1, frame.x, radius)),
      vertical_(makeAxis(bounds.y0, bounds.y1, frame.y, radius)),
      result_{horizontal_.resultBegin, vertical_.resultBegin, horizontal_.resultEnd,
              vertical_.resultEnd},
      rowFft_(horizontal_.fftSize),
      columnFft_(vertical_.fftSize) {}

int FftConvolution::getColumnCount() const {
    return (rowFft_.getFrequencyCount() + kFftColumns - 1) / kFftColumns * kFftColumns;
}

FftConvolution::Plane FftConvolution::makePlane(int rows) const {
    // An odd number of blocks: with a power of two, columns would fall on few lines of the cache.
    const std::size_t stride = toSize(getColumnCount() | kFftColumns);
    return {PixelArray<Complex>(stride * toSize(rows)), stride};
}

bool FftConvolution::convolve(const ReadRow& readRow, std::span<const float* const> kernels,
                              std::span<float* const> results, const Function<bool()>& isAborted) {
    if (source_.stride == 0) {
        source_ = makePlane(vertical_.getSourceSize());
    }
    while (products_.size() < kernels.size()) {
        products_.push_back(makePlane(std::max(vertical_.getTapCount(), result_.height())));
    }
    products_.resize(kernels.size());
    if (isAborted()) {
        return false;
    }
    transformSource(readRow);
    for (std::size_t i = 0; i < kernels.size(); ++i) {
        if (isAborted()) {
            return false;
        }
        transformKernel(kernels[i], products_[i]);
    }
    if (isAborted()) {
        return false;
    }
    multiplyColumns();
    for (std::size_t i = 0; i < kernels.size(); ++i) {
        if (isAborted()) {
            return false;
        }
        transformBack(products_[i], results[i]);
    }
    return true;
}

void FftConvolution::transformSource(const ReadRow& readRow) {
    const int width = horizontal_.getSourceSize();
    forEachRow(flags_, vertical_.getSourceSize(), [&](int y) {
        PixelArray<float> reals(toSize(horizontal_.fftSize));
        if (readRow(vertical_.sourceBegin + y, {reals.data(), toSize(width)})) {
            std::fill(reals.data() + width, reals.data() + horizontal_.fftSize, 0.0f);
            transformRow(reals.data(), source_.row(y));
        } else {
            std::fill_n(source_.row(y), getColumnCount(), Complex());
        }
    });
}

void FftConvolution::transformKernel(const float* kernel, Plane& plane) {
    const std::size_t kernelSize = 2 * toSize(radius_) + 1;
    forEachRow(flags_, vertical_.getTapCount(), [&](int y) {
        PixelArray<float> reals(toSize(horizontal_.fftSize));
        // The weight for distance 0, which is at the middle.
        const float* own = kernel + toSize(radius_ + vertical_.nearest + y) * kernelSize + radius_;
        float* next = std::copy(own, own + horizontal_.farthest + 1, reals.data());
        float* wrapped = reals.data() + horizontal_.fftSize + horizontal_.nearest;
        std::fill(next, wrapped, 0.0f);
        std::copy(own + horizontal_.nearest, own, wrapped);
        transformRow(reals.data(), plane.row(y));
    });
}

void FftConvolution::transformRow(float* reals, Complex* row) const {
    rowFft_.transformForward(reals, row);
    std::fill(row + rowFft_.getFrequencyCount(), row + getColumnCount(), Complex());
}

void FftConvolution::multiplyColumns() {
    const float factor =
        1.0f / (static_cast<float>(horizontal_.fftSize) * static_cast<float>(vertical_.fftSize));
    forEachRow(flags_, getColumnCount() / kFftColumns, [&](int index) {
        const int x = index * kFftColumns;
        ColumnBlock source(vertical_.fftSize);
        for (int y = 0; y < vertical_.getSourceSize(); ++y) {
            std::copy_n(source_.row(y) + x, kFftColumns, source.row(y));
        }
        std::fill(source.row(vertical_.getSourceSize()), source.data() + source.getCount(),
                  Complex());
        columnFft_.transformForward(source);
        ColumnBlock product(vertical_.fftSize);
        for (Plane& plane : products_) {
            readKernelColumns(plane, x, product);
            columnFft_.transformForward(product);
            multiplyBy(source.data(), factor, source.getCount(), product.data());
            columnFft_.transformInverse(product);
            for (int y = 0; y < result_.height(); ++y) {
                const int number = vertical_.wrap(result_.y0 + y - vertical_.sourceBegin);
                std::copy_n(product.row(number), kFftColumns, plane.row(y) + x);
            }
        }
    });
}

void FftConvolution::readKernelColumns(Plane& plane, int x, ColumnBlock& block) const {
    std::fill(block.row(vertical_.farthest + 1), block.row(vertical_.fftSize + vertical_.nearest),
              Complex());
    for (int y = 0; y < vertical_.getTapCount(); ++y) {
        std::copy_n(plane.row(y) + x, kFftColumns,
                    block.row(vertical_.wrap(vertical_.nearest + y)));
    }
}

void FftConvolution::transformBack(Plane& plane, float* result) {
    const int width = result_.width();
    const int before = horizontal_.sourceBegin - result_.x0;  // columns that have wrapped around
    forEachRow(flags_, result_.height(), [&](int y) {
        PixelArray<float> reals(toSize(horizontal_.fftSize));
        rowFft_.transformInverse(plane.row(y), reals.data());
        const auto keep = [](float value) { return std::max(value, 0.0f); };
        const float* end = reals.data() + horizontal_.fftSize;
        float* target = result + toSize(y) * toSize(width);
        target = std::transform(end - before, end, target, keep);
        std::transform(reals.data(), reals.data() + (width - before), target, keep);
    });
}

}  // namespace tavrin::postcore
