#pragma once

#include "foundation/Flags.h"
#include "foundation/Function.h"
#include "foundation/Geometry.h"
#include "foundation/PixelArray.h"
#include "services/postcore/bloomglare/Fft.h"
#include "services/postcore/sharpening/ImageOperators.h"

#include <span>
#include <vector>

namespace tavrin::postcore {

/// Convolves planes with kernels of (2 radius + 1)² weights by way of their spectra: what a pixel
/// at (x, y) is, times the weight at (radius + i, radius + j), goes to (x + i, y + j). What leaves
/// the frame is lost, nothing comes in from outside it. Results are as exact as floats let them be,
/// against the largest of a plane.
///
/// The planes are 0 outside a rectangle of the frame. Transforms are only as large as it and the
/// radius ask for: light that wraps around them ends outside the frame.
class FftConvolution {
public:
    /// Writes the plane's row y of the frame (inside the rectangle) into the span. False when all
    /// of it is 0.
    using ReadRow = Function<bool(int y, std::span<float> row)>;

    /// `bounds` is not empty and inside the frame. Throws an Exception when the frame is too large.
    FftConvolution(Flags<ImageOperatorsFlag> flags, Pixel frame, const Bucket& bounds, int radius);

    /// What light inside the bounds reaches of the frame; everything else stays 0.
    const Bucket& getResultBounds() const { return result_; }
    /// Of the transforms.
    Pixel getFftSize() const { return {horizontal_.fftSize, vertical_.fftSize}; }

    /// Convolves one plane with each of the kernels; a result has the rows of the result bounds,
    /// without negative numbers. `isAborted` is asked between parts of the work, on the calling
    /// thread; when it says so, the answer is false and the results are unfinished. Throws
    /// std::bad_alloc.
    bool convolve(const ReadRow& readRow, std::span<const float* const> kernels,
                  std::span<float* const> results, const Function<bool()>& isAborted);

private:
    /// One direction. A kernel's weight for distance d is number d modulo fftSize of the transform,
    /// a pixel at p number p - sourceBegin.
    struct Axis {
        int sourceBegin = 0;
        int sourceEnd = 0;
        int resultBegin = 0;
        int resultEnd = 0;
        int nearest = 0;   // the distances from source to result that have a weight: 0 or less
        int farthest = 0;  // to 0 or more, inclusive
        int fftSize = 0;

        int getSourceSize() const { return sourceEnd - sourceBegin; }
        int getTapCount() const { return farthest - nearest + 1; }
        int wrap(int number) const { return number < 0 ? number + fftSize : number; }
    };

    /// Rows of frequencies, each of them of whole blocks of columns.
    struct Plane {
        PixelArray<Complex> values;
        std::size_t stride = 0;

        Complex* row(int y) { return values.data() + static_cast<std::size_t>(y) * stride; }
    };

    static Axis makeAxis(int sourceBegin, int sourceEnd, int frameSize, int radius);
    /// Frequencies of a row, filled up to whole blocks.
    int getColumnCount() const;
    Plane makePlane(int rows) const;
    void transformRow(float* reals, Complex* row) const;
    void transformSource(const ReadRow& readRow);
    void transformKernel(const float* kernel, Plane& plane);
    void multiplyColumns();
    void readKernelColumns(Plane& plane, int x, ColumnBlock& block) const;
    void transformBack(Plane& plane, float* result);

    const Flags<ImageOperatorsFlag> flags_;
    const int radius_;
    const Axis horizontal_;
    const Axis vertical_;
    const Bucket result_;
    const RealRowFft rowFft_;
    const ColumnFft columnFft_;
    Plane source_;
    std::vector<Plane> products_;  // first a kernel's rows, then the result's
};

}  // namespace tavrin::postcore
