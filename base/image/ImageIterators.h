#pragma once

#include "base/image/ChannelImage.h"
#include "base/image/PixelRows.h"
#include "foundation/Bitmap.h"
#include "services/imageio/IImageIterator.h"

#include <type_traits>

namespace tavrin::image {

/// The image type that channels of T belong to.
template <class T>
using ImageOf = std::conditional_t<std::is_const_v<T>, const ChannelImage, ChannelImage>;

/// Addresses the channels R, G and B of an element, row by row. T is float or float const. Holds
/// raw pointers: the image outlives it and is not changed meanwhile. The channels exist.
template <class T>
class RgbIteratorHelperCommon {
public:
    /// One row of the three channels; pixels carry 1.0 in the fourth float.
    struct Row {
        T* r;
        T* g;
        T* b;

        Rgb operator[](std::size_t x) const { return {r[x], g[x], b[x], 1.0f}; }
        void read(std::size_t x, std::span<Rgb> pixels) const {
            interleave(r + x, g + x, b + x, nullptr, pixels);
        }
        void set(std::size_t x, const Rgb& color) const {
            r[x] = color.r;
            g[x] = color.g;
            b[x] = color.b;
        }
    };

    RgbIteratorHelperCommon(ImageOf<T>& image, const String& element)
        : size_(image.getDataWindow().size()),
          r_(image.template getChannel<float>(joinChannelName(element, u"R")).getData()),
          g_(image.template getChannel<float>(joinChannelName(element, u"G")).getData()),
          b_(image.template getChannel<float>(joinChannelName(element, u"B")).getData()) {}

    /// Row y of the data window.
    Row row(int y) const {
        const std::size_t offset = std::size_t(y) * std::size_t(size_.x);
        return {r_ + offset, g_ + offset, b_ + offset};
    }

protected:
    Pixel size_;

private:
    T* r_;
    T* g_;
    T* b_;
};

/// The same with channel A.
template <class T>
class RgbaIteratorHelperCommon {
public:
    struct Row {
        typename RgbIteratorHelperCommon<T>::Row color;
        T* a;

        Rgba operator[](std::size_t x) const { return {color.r[x], color.g[x], color.b[x], a[x]}; }
        /// Pixels as Rgba, or as Rgb with alpha in the fourth float.
        template <class P>
        void read(std::size_t x, std::span<P> pixels) const {
            interleave(color.r + x, color.g + x, color.b + x, a + x, pixels);
        }
        void set(std::size_t x, const Rgba& pixel) const {
            color.set(x, {pixel.r, pixel.g, pixel.b});
            a[x] = pixel.a;
        }
    };

    RgbaIteratorHelperCommon(ImageOf<T>& image, const String& element)
        : size_(image.getDataWindow().size()),
          color_(image, element),
          a_(image.template getChannel<float>(joinChannelName(element, u"A")).getData()) {}

    Row row(int y) const { return {color_.row(y), a_ + std::size_t(y) * std::size_t(size_.x)}; }

protected:
    Pixel size_;

private:
    RgbIteratorHelperCommon<T> color_;
    T* a_;
};

/// An element's colour channels as the pixels of a picture without alpha.
template <class T>
class RgbIteratorHelper final : public imageio::IImageIterator, public RgbIteratorHelperCommon<T> {
public:
    using RgbIteratorHelperCommon<T>::RgbIteratorHelperCommon;

    Pixel getSize() const override { return this->size_; }
    Rgb getPixel(Pixel position, float& alpha) const override {
        alpha = 1.0f;
        return this->row(position.y)[std::size_t(position.x)];
    }
    bool hasAlpha() const override { return false; }
};

/// An element's channels R, G, B and A as pixels; the alpha is told with each pixel, but does not
/// become part of a picture.
template <class T>
class RgbaIteratorHelper final : public imageio::IImageIterator,
                                 public RgbaIteratorHelperCommon<T> {
public:
    using RgbaIteratorHelperCommon<T>::RgbaIteratorHelperCommon;

    Pixel getSize() const override { return this->size_; }
    Rgb getPixel(Pixel position, float& alpha) const override {
        const Rgba pixel = this->row(position.y)[std::size_t(position.x)];
        alpha = pixel.a;
        return {pixel.r, pixel.g, pixel.b, 1.0f};
    }
    bool hasAlpha() const override { return false; }
};

/// A bitmap as the pixels of a picture, with an optional bitmap of the same size for alpha. Both
/// outlive the iterator. The template argument is the order of the bitmap's rows: 0, top to bottom.
template <int rowOrder>
class RgbImageIterator;

template <>
class RgbImageIterator<0> final : public imageio::IImageIterator {
public:
    explicit RgbImageIterator(const BitmapImpl<Rgb>& bitmap,
                              const BitmapImpl<float>* alpha = nullptr)
        : bitmap_(bitmap), alpha_(alpha) {}

    Pixel getSize() const override { return bitmap_.getSize(); }
    Rgb getPixel(Pixel position, float& alpha) const override {
        alpha = alpha_ == nullptr ? 1.0f : alpha_->at(position.x, position.y);
        return bitmap_.at(position.x, position.y);
    }
    bool hasAlpha() const override { return alpha_ != nullptr; }

private:
    const BitmapImpl<Rgb>& bitmap_;
    const BitmapImpl<float>* alpha_;
};

/// A bitmap with alpha in the fourth float as the pixels of a picture; it outlives the iterator.
/// The first template argument is the order of the bitmap's rows: 0, top to bottom. Colours of the
/// pipeline are Rgb, which carry alpha too.
template <int rowOrder, class P = Rgba>
class RgbaImageIterator;

template <class P>
class RgbaImageIterator<0, P> final : public imageio::IImageIterator {
public:
    explicit RgbaImageIterator(const BitmapImpl<P>& bitmap) : bitmap_(bitmap) {}

    Pixel getSize() const override { return bitmap_.getSize(); }
    Rgb getPixel(Pixel position, float& alpha) const override {
        const P& pixel = bitmap_.at(position.x, position.y);
        alpha = pixel.a;
        return {pixel.r, pixel.g, pixel.b, pixel.a};
    }
    bool hasAlpha() const override { return true; }

private:
    const BitmapImpl<P>& bitmap_;
};

}  // namespace tavrin::image
