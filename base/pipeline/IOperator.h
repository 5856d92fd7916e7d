#pragma once

#include "base/image/ElementInfo.h"
#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "foundation/Flags.h"
#include "foundation/Function.h"
#include "foundation/Geometry.h"
#include "foundation/Optional.h"
#include "foundation/String.h"

#include <cstdint>
#include <limits>
#include <vector>

namespace tavrin::pipeline {

/// One stage of the processing pipeline. Nothing is pushed: a consumer asks the last operator of a
/// chain for a region of one render element, and every operator asks its inputs for what it needs
/// and transforms the answer. Any thread may call everything. No failure reaches the caller but
/// want of memory (std::bad_alloc): an answer that cannot be given is empty.
class IOperator {
public:
    enum class Control : std::uint32_t {
        Display = 1,  ///< asked by the canvas
        Wait = 2,     ///< the caller needs an up-to-date answer and accepts to be blocked
        Measure = 4,  ///< asked for measured values: the pixel probe, the histogram
    };

    /// What is asked of an operator.
    struct Request {
        String element;  ///< internal name of a render element
        /// In pixels of the image, relative to its data window.
        Bucket region;
        /// Image pixels per pixel of the answer along each axis: 1 is full resolution, 2 point
        /// samples every second pixel, 0.5 repeats each pixel twice.
        float scale = 1.0f;
        Flags<Control> flags;
    };

    /// Chooses elements by what the user calls them.
    class ElementSelector {
    public:
        /// The display name of an element, or "*" for every one.
        explicit ElementSelector(String selector) : selector_(std::move(selector)) {}
        /// Accepts what is chosen; nothing when no element has the name.
        Function<bool(const image::ElementInfo&)> toFilter() const;

    private:
        String selector_;
    };

    /// The revision while no image is loaded.
    static constexpr std::int64_t kNoRevision = std::numeric_limits<std::int64_t>::min();

    virtual ~IOperator() = default;

    /// The stamp of the loaded image that the operator's data derive from: seconds since 1970, but
    /// never the same for two images.
    virtual std::int64_t getRevision() const = 0;
    /// The elements at the operator's output, in the order of the loaded image.
    virtual std::vector<image::ElementInfo> getElements() const = 0;
    /// All zero while no image is loaded, like the data window.
    virtual Bucket getDisplayWindow() const = 0;
    virtual Bucket getDataWindow() const = 0;

    /// The colours of an element over the region, with alpha in the fourth float. Empty when the
    /// element is not known here, the region is empty or reaches out of the image, or the result
    /// is not ready. All of an answer is of one image, also when another one takes its place.
    Optional<BitmapImpl<Rgb>> provideRgbRegion(const Request& request);
    Optional<BitmapImpl<Rgb>> provideRgbRegion(const String& element, const Bucket& region,
                                               float scale, Flags<Control> flags = {}) {
        return provideRgbRegion({element, region, scale, flags});
    }
    /// The same for elements of a single channel.
    Optional<BitmapImpl<float>> provideMonoRegion(const Request& request);
    Optional<BitmapImpl<float>> provideMonoRegion(const String& element, const Bucket& region,
                                                  float scale, Flags<Control> flags = {}) {
        return provideMonoRegion({element, region, scale, flags});
    }

protected:
    /// Answer a request whose region is not empty and was in the image when it was made, and whose
    /// scale makes a bitmap that can be addressed.
    virtual Optional<BitmapImpl<Rgb>> computeRgbRegion(const Request& request) = 0;
    virtual Optional<BitmapImpl<float>> computeMonoRegion(const Request& request) = 0;

    /// For requests to an input in the middle of an answer, which has been checked as a whole.
    static Optional<BitmapImpl<Rgb>> forwardRgb(IOperator& input, const Request& request) {
        return input.computeRgbRegion(request);
    }
    static Optional<BitmapImpl<float>> forwardMono(IOperator& input, const Request& request) {
        return input.computeMonoRegion(request);
    }

private:
    bool isMeaningful(const Request& request) const;
};

}  // namespace tavrin::pipeline
