#pragma once

#include "base/image/ChannelImage.h"
#include "base/image/Weight.h"
#include "foundation/Function.h"

#include <set>
#include <utility>

namespace tavrin::image {

/// Merges images of one frame that were rendered apart into one: the weighted mean of each pixel
/// and channel, and the sum of the render statistics. The first image decides on channels, windows,
/// gamma, elements and post-processing settings. Made for one merge: `add` for each image, then
/// `finish`, then the image is taken. One thread at a time may use it.
class Accumulator {
public:
    /// The merged image gets the sums of the weights in a channel of the given name. `onWarning`
    /// may be empty; it is told, once each, sentences about what the images disagree on.
    Accumulator(String weightsChannelName, Function<void(const String&)> onWarning);

    /// Adds a valid image that has the float channel that the weight may name. Every image after
    /// the first fits within getImage(). Channels that the first image lacks are left out, as are
    /// those of integers. A constant weight counts for all of the merged image, so that pixels
    /// outside of this image's data window grow darker. Throws std::bad_alloc, and an Exception
    /// when the first image's windows ask for a merged image that does not fit in memory.
    void add(const Weight& weight, const ChannelImage& image);

    /// Turns the sums into means; 0 where all weights are 0. Called once, after the last `add`.
    void finish();

    /// Empty before the first `add`, then the sums, and after `finish` the merged image.
    const ChannelImage& getImage() const { return image_; }
    ChannelImage takeImage() { return std::move(image_); }

private:
    void start(const Weight& weight, const ChannelImage& image);
    void addPixels(const Weight& weight, const ChannelImage& image);
    void addWeightEverywhere(float weight);
    void addMetadata(const ChannelImage& image);
    bool matchOrAdopt(const String& name, const ChannelImage& image);
    void warnOnce(const String& text);

    ChannelImage image_;
    String weightsChannelName_;
    Function<void(const String&)> onWarning_;
    std::set<String> reported_;
    int count_ = -1;  ///< of the images added; -1 before the first
};

}  // namespace tavrin::image
