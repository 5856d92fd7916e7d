#pragma once

#include "base/pipeline/Performer.h"
#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "foundation/Function.h"
#include "foundation/Geometry.h"
#include "foundation/Optional.h"
#include "foundation/Vec.h"
#include "gui/components/Histogram.h"

namespace tavrin::components {

/// What the window shows: one render element at the end of the display chain. Main thread. The
/// performer outlives it.
class DisplayedImage {
public:
    /// The pixels of a region of the element, one for every `scale` × `scale` pixels of it; empty
    /// when they have not been computed.
    using Provider = Function<Optional<BitmapImpl<Rgb>>(const Bucket& region, float scale)>;

    explicit DisplayedImage(pipeline::Performer& performer) : performer_(performer) {}

    /// The internal name of the element; that of the beauty at first.
    void setElement(const String& element) { element_ = element; }
    const String& getElement() const { return element_; }
    /// Of the data window; (0, 0) while no image is loaded.
    Pixel getSize() const;

    /// Asks an operator of the performer for regions of the element, whichever it is then. Valid as
    /// long as this object.
    Provider getDrawProvider(pipeline::IOperator& op) const;

    /// Counts the whole element as it enters an operator of the tone mapping; without one, black.
    std::vector<Histogram> getHistograms(const HistogramRequest& request);
    /// Of the pixel at a position, as it enters the operator that was last measured. Empty beyond
    /// the image, and while there are no pixels.
    Optional<float> getPixelValue(Vec2 position, ColorCurveChannel channel) const;
    /// Chooses what is measured; see HistogramRequest::stage.
    void setMeasuredStage(Optional<int> stage);

private:
    pipeline::Performer& performer_;
    String element_;
};

}  // namespace tavrin::components
