#include "services/postcore/bloomglare/FftConvolution.h"

#include "services/postcore/bloomglare/RowLoop.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace tavrin::postcore {
namespace {

std::size_t toSize(int number) {
    return static_cast<std::size_t>(number);
}

/// product[i] *= source[i] * factor. Written out, because the product of complex numbers in the
/// library looks for numbers that are not finite.
void multiply(const Complex* source, float factor, std::size_t count, Complex* product) {
    const auto* a = reinterpret_cast<const float*>(source);
    auto* b = reinterpret_cast<float*>(product);
    for (std::size_t i = 0; i < 2 * count; i += 2) {
        const float real = a[i] * b[i] - a[i + 1] * b[i + 1];
        const float imaginary = a[i] * b[i + 1] + a[i + 1] * b[i];
        b[i] = factor * real;
        b[i + 1] = factor * imaginary;
    }
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
        source_ = makePlane(vertical_.sourceEnd - vertical_.sourceBegin);
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
    const int width = horizontal_.sourceEnd - horizontal_.sourceBegin;
    forEachRow(flags_, vertical_.sourceEnd - vertical_.sourceBegin, [&](int y) {
        Complex* row = source_.row(y);
        auto* reals = reinterpret_cast<float*>(row);
        readRow(vertical_.sourceBegin + y, {reals, toSize(width)});
        std::fill(reals + width, reals + horizontal_.fftSize, 0.0f);
        transformRow(row);
    });
}

void FftConvolution::transformKernel(const float* kernel, Plane& plane) {
    const std::size_t kernelSize = 2 * toSize(radius_) + 1;
    forEachRow(flags_, vertical_.getTapCount(), [&](int y) {
        Complex* row = plane.row(y);
        auto* reals = reinterpret_cast<float*>(row);
        // The weight for distance 0, which is at the middle.
        const float* own = kernel + toSize(radius_ + vertical_.nearest + y) * kernelSize + radius_;
        float* next = std::copy(own, own + horizontal_.farthest + 1, reals);
        float* wrapped = reals + horizontal_.fftSize + horizontal_.nearest;
        std::fill(next, wrapped, 0.0f);
        std::copy(own + horizontal_.nearest, own, wrapped);
        transformRow(row);
    });
}

void FftConvolution::transformRow(Complex* row) const {
    rowFft_.transformForward(row);
    std::fill(row + rowFft_.getFrequencyCount(), row + getColumnCount(), Complex());
}

void FftConvolution::multiplyColumns() {
    const float factor =
        1.0f / (static_cast<float>(horizontal_.fftSize) * static_cast<float>(vertical_.fftSize));
    const std::size_t blockSize = toSize(vertical_.fftSize) * kFftColumns;
    const int sourceHeight = vertical_.sourceEnd - vertical_.sourceBegin;
    const int taps = vertical_.getTapCount();
    constexpr std::size_t kLine = kFftColumns * sizeof(Complex);
    const auto getLine = [](PixelArray<Complex>& block, int y) {
        return block.data() + toSize(y) * kFftColumns;
    };
    forEachRow(flags_, getColumnCount() / kFftColumns, [&](int block) {
        const std::size_t x = toSize(block) * kFftColumns;
        PixelArray<Complex> source(blockSize);
        PixelArray<Complex> product(blockSize);
        for (int y = 0; y < sourceHeight; ++y) {
            std::memcpy(getLine(source, y), source_.row(y) + x, kLine);
        }
        std::fill(getLine(source, sourceHeight), source.data() + blockSize, Complex());
        columnFft_.transformForward(source.data());
        for (Plane& plane : products_) {
            std::fill(product.data(), product.data() + blockSize, Complex());
            for (int y = 0; y < taps; ++y) {
                std::memcpy(getLine(product, vertical_.wrap(vertical_.nearest + y)),
                            plane.row(y) + x, kLine);
            }
            columnFft_.transformForward(product.data());
            multiply(source.data(), factor, blockSize, product.data());
            columnFft_.transformInverse(product.data());
            for (int y = 0; y < result_.height(); ++y) {
                const int index = vertical_.wrap(result_.y0 + y - vertical_.sourceBegin);
                std::memcpy(plane.row(y) + x, getLine(product, index), kLine);
            }
        }
    });
}

void FftConvolution::transformBack(Plane& plane, float* result) {
    const int width = result_.width();
    const int before = horizontal_.sourceBegin - result_.x0;  // columns that have wrapped around
    forEachRow(flags_, result_.height(), [&](int y) {
        Complex* row = plane.row(y);
        rowFft_.transformInverse(row);
        const auto* reals = reinterpret_cast<const float*>(row);
        float* target = result + toSize(y) * toSize(width);
        const auto keep = [](float value) { return std::max(value, 0.0f); };
        target = std::transform(reals + horizontal_.fftSize - before, reals + horizontal_.fftSize,
                                target, keep);
        std::transform(reals, reals + (width - before), target, keep);
    });
}

}  // namespace tavrin::postcore
