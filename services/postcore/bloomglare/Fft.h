#pragma once

#include "foundation/PixelArray.h"

#include <complex>
#include <cstddef>
#include <memory>
#include <vector>

namespace tavrin::postcore {

using Complex = std::complex<float>;

// Discrete Fourier transforms along the rows and the columns of planes. None is scaled: forward and
// then inverse multiplies by the size. Making one takes milliseconds; transforming may be done from
// any number of threads at once.

/// The least even size that is not smaller and has no other prime factors than 2, 3, 5 and 7, for
/// which transforms are fast. Throws an Exception when that is no int.
int getFftSize(int least);

/// Of rows of `size` real numbers. Rows are aligned to 16 bytes; a transform spoils what it reads.
class RealRowFft {
public:
    /// `size` is even and positive.
    explicit RealRowFft(int size);
    ~RealRowFft();
    RealRowFft(const RealRowFft&) = delete;
    RealRowFft& operator=(const RealRowFft&) = delete;

    /// Complex numbers that a row takes: the frequencies from 0 to size / 2.
    int getFrequencyCount() const { return size_ / 2 + 1; }
    /// From `size` real numbers to the frequencies.
    void transformForward(float* reals, Complex* frequencies) const;
    /// Back to `size` real numbers.
    void transformInverse(Complex* frequencies, float* reals) const;

private:
    struct Plans;

    const int size_;
    std::unique_ptr<Plans> plans_;
};

/// As many columns as a processor's cache line holds numbers of a row, so that the columns of a
/// plane are read in whole lines.
inline constexpr int kFftColumns = 8;

/// kFftColumns columns of complex numbers side by side. They are not initialised.
class ColumnBlock {
public:
    explicit ColumnBlock(int size)
        : values_(static_cast<std::size_t>(size) * kFftColumns), other_(values_.size()) {}

    std::size_t getCount() const { return values_.size(); }
    /// Row by row.
    Complex* data() { return values_.data(); }
    Complex* row(int y) { return data() + static_cast<std::size_t>(y) * kFftColumns; }

private:
    friend class ColumnFft;

    PixelArray<Complex> values_;
    PixelArray<Complex> other_;
};

/// Of the columns of blocks of `size` rows.
class ColumnFft {
public:
    /// `size` is one that getFftSize answers.
    explicit ColumnFft(int size);
    ~ColumnFft();
    ColumnFft(const ColumnFft&) = delete;
    ColumnFft& operator=(const ColumnFft&) = delete;

    void transformForward(ColumnBlock& block) const;
    void transformInverse(ColumnBlock& block) const;

private:
    struct Stage;

    static std::vector<Stage> makeStages(int size, bool isForward);
    static void transform(const std::vector<Stage>& stages, ColumnBlock& block);

    std::vector<Stage> forward_;
    std::vector<Stage> inverse_;
};

}  // namespace tavrin::postcore
