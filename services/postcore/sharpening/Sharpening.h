#pragma once

#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "foundation/Flags.h"
#include "foundation/Geometry.h"
#include "services/postcore/sharpening/BitmapFilter.h"
#include "services/postcore/sharpening/ImageOperators.h"

namespace tavrin::postcore {

/// Sharpening by an unsharp mask and Gaussian blurring of colour bitmaps, encoded for the display
/// or linear.
///
/// A radius is the standard deviation of a Gaussian G, in pixels of the full resolution. Sharpening
/// adds `amount` times what a blur with the sharpening radius takes away; blurring is a blur with
/// the blurring radius. With both set, the picture is sharpened and blurred at once:
///
///     out = G(b) in + amount (G(b) in - G(sqrt(b² + s²)) in)
///
/// with s the sharpening and b the blurring radius. As Gaussians add up, that is the blurred
/// picture sharpened and the sharpened picture blurred: there is no order of the two to know about,
/// and nothing is cut off between them. At the edges of a bitmap, and beside pixels with a
/// component that is not finite, only the pixels that are there count. Such pixels themselves stay
/// as they are. Sharpening takes no component below 0, nor a negative one further down; it does go
/// above 1.
///
/// initialize() is for one thread; the other functions may then be called from any thread.
class Sharpening {
public:
    static constexpr double kLargestRadius = 64.0;
    static constexpr float kLargestAmount = 100.0f;

    /// `radiusFactor` is the size in pixels of the full resolution of the unit that both radii are
    /// in: 1 when they are in such pixels. Numbers that are negative or not finite count as 0,
    /// larger ones than kLargestAmount and kLargestRadius (in pixels) as those.
    void initialize(bool enabled, float amount, float sharpenRadius, float blurRadius,
                    float radiusFactor);

    /// How many pixels of the full resolution around a region the filters look at in an image of
    /// this size, of which every `scale`th pixel is taken (1 or more; less counts as 1): always a
    /// multiple of `scale`, so that the region and its surroundings are on the same grid. 0 when
    /// there is nothing to do.
    int getWindowRadius(Pixel imageSize, int scale) const;

    /// Filters a bitmap of every `scale`th pixel in place. A pixel's result depends on nothing but
    /// the pixels within the window radius: computed in parts that have such surroundings, or with
    /// other threads, it is the same to the bit. Alpha stays as it is.
    ///
    /// With `sidesMeet` the bitmap is a whole panorama, whose left and right edges are neighbours:
    /// the filters look across the seam.
    ///
    /// Throws std::bad_alloc; the bitmap is then filtered only in part.
    void apply(Flags<ImageOperatorsFlag> flags, BitmapImpl<Rgb>& bitmap, int scale,
               bool sidesMeet) const;

private:
    BitmapFilter makeFilter(int scale) const;

    // All 0 when there is nothing to do.
    float amount_ = 0.0f;
    double sharpenVariance_ = 0.0;  // in squared pixels of the full resolution
    double blurVariance_ = 0.0;
};

}  // namespace tavrin::postcore
