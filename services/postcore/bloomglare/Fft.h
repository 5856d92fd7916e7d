#pragma once

#include <complex>
#include <memory>

namespace tavrin::postcore {

using Complex = std::complex<float>;

/// The least even size that is not smaller and has no other prime factors than 2, 3, 5 and 7, for
/// which transforms are fast. Throws an Exception when that is no int.
int getFftSize(int least);

/// The discrete Fourier transform of rows of `size` real numbers. None is scaled: forward and then
/// inverse multiplies by `size`. Rows are transformed in place and are aligned to 16 bytes. Making
/// one takes milliseconds; transforming may be done from any number of threads at once.
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
    void transformForward(Complex* row) const;
    /// Back to `size` real numbers.
    void transformInverse(Complex* row) const;

private:
    struct Plans;

    const int size_;
    std::unique_ptr<Plans> plans_;
};

/// The same for complex numbers, of kFftColumns columns side by side in a block: number y of column
/// x is at [y * kFftColumns + x]. What a processor's cache line holds of a row of a plane, so that
/// a plane's columns are read in whole lines. Blocks are aligned to 16 bytes.
inline constexpr int kFftColumns = 8;

class ColumnFft {
public:
    /// `size` is positive.
    explicit ColumnFft(int size);
    ~ColumnFft();
    ColumnFft(const ColumnFft&) = delete;
    ColumnFft& operator=(const ColumnFft&) = delete;

    void transformForward(Complex* block) const;
    void transformInverse(Complex* block) const;

private:
    struct Plans;

    std::unique_ptr<Plans> plans_;
};

}  // namespace tavrin::postcore
