#pragma once

#include "foundation/Color.h"
#include "foundation/Geometry.h"

namespace tavrin::imageio {

/// A picture to be saved, read pixel by pixel, so that nobody has to copy it into a layout of the
/// writer's. Reading changes nothing: several threads read pixels at the same time.
class IImageIterator {
public:
    virtual ~IImageIterator() = default;
    /// Width and height in pixels.
    virtual Pixel getSize() const = 0;
    /// The colour at a position, (0, 0) being the top-left pixel; `alpha` receives its coverage, 1
    /// where the picture has none.
    virtual Rgb getPixel(Pixel position, float& alpha) const = 0;
    virtual bool hasAlpha() const = 0;
};

}  // namespace tavrin::imageio
