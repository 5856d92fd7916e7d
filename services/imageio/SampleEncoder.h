#pragma once

#include "services/imageio/IImageIterator.h"
#include "services/imageio/ImageFormat.h"

#include <cstddef>

namespace tavrin::imageio {

/// Turns the pixels of a picture into the samples of a file, row by row: red, green, blue and, when
/// the file has it, alpha, one after the other. Integer samples are clamped to 0..1 and rounded to
/// the nearest level; not-a-number counts as 0. They are kept in one byte, or in two with the level
/// in the upper bits. Floating-point samples are floats and keep every value; a file of halves
/// gets finite values clamped to the range of halves. Rows may be encoded by several threads.
class SampleEncoder {
public:
    /// `isDisplayReferred`: the colours are sRGB-encoded, and a linear format gets them decoded.
    SampleEncoder(const IImageIterator& picture, const ImageFormatInfo& format, BitDepth bitDepth,
                  bool isDisplayReferred);

    /// Samples per pixel: 4 when the picture has alpha and the format carries it, otherwise 3.
    int getChannelCount() const { return channels_; }
    BitDepth getBitDepth() const { return bitDepth_; }
    int getRowCount() const { return size_.y; }
    std::size_t getRowBytes() const;
    /// Writes getRowBytes() bytes to `samples`, which is aligned for floats.
    void encodeRow(int y, void* samples) const;

private:
    void encodeFloats(int y, float* samples) const;
    template <class Sample>
    void encodeIntegers(int y, Sample* samples) const;
    std::size_t getSampleBytes() const;

    const IImageIterator& picture_;
    ImageFormat format_;
    BitDepth bitDepth_;
    bool decodesSrgb_;
    Pixel size_;
    int channels_;
};

/// Linear light from an sRGB-encoded value (IEC 61966-2-1, 1999); the two pieces of the curve
/// continue below 0 and above 1.
float decodeSrgb(float encoded);

}  // namespace tavrin::imageio
