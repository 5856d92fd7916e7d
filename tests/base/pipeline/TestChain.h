#pragma once

#include "base/pipeline/Completion.h"
#include "base/pipeline/Performer.h"

#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace tavrin::pipeline {

/// The windows of an image that starts at (0, 0).
inline Bucket windowOf(int width, int height) {
    return {0, 0, width, height};
}

/// An image whose element pixels are random, 0 to 2, with four light selects "L1" to "L4" (as
/// header and channels), a beauty that is not their sum, an element "Data" that is not to be
/// mapped, and alpha.
image::ChannelImage makeRender(const Bucket& window, unsigned seed);

/// An image with one element of one value.
image::ChannelImage makeConstant(const Bucket& window, const String& element, float value);

/// The chain with its settings over files that exist only here.
class TestChain {
public:
    TestChain();

    using Maker = Function<image::ChannelImage()>;
    /// What loading this file gives.
    void setFile(const String& name, Maker make);
    /// Loads files one after the other; an empty text, or the error.
    std::string load(const std::vector<String>& names, std::vector<image::Weight> weights = {});

    std::vector<std::string> takeWarnings();

    settings::Settings& settings() { return *settings_; }

private:
    std::shared_ptr<settings::Settings> settings_ = std::make_shared<settings::Settings>();
    std::mutex mutex_;
    std::map<String, Maker> files_;      // guarded by mutex_
    std::vector<std::string> warnings_;  // guarded by mutex_

public:
    colorkit::ColorMapping colorMapping;
    Performer chain{*settings_, colorMapping};
    Completion loaded{chain.load};
};

/// The part of a bitmap inside a rectangle, which lies within.
BitmapImpl<Rgb> crop(const BitmapImpl<Rgb>& bitmap, const Bucket& rectangle);

/// True when the bitmaps have the same size and the same bits.
bool areIdentical(const BitmapImpl<Rgb>& left, const BitmapImpl<Rgb>& right);

}  // namespace tavrin::pipeline
