#pragma once

#include "base/image/ChannelImage.h"
#include "base/image/Weight.h"
#include "foundation/Function.h"
#include "foundation/Path.h"
#include "foundation/Result.h"

#include <vector>

namespace tavrin::pipeline {

/// Reads a file into an image, or answers a message that names the file.
using Loader = Function<Result<image::ChannelImage>(const Path&)>;

/// Who is told how a merge goes, on the thread that merges.
struct MergeReport {
    Function<void(float fraction)> onProgress;
    Function<void(const String& text)> onWarning;
};

/// One weight for each of `inputCount` images: without any the channel of weights that renderers
/// write, and one weight stands for all. Throws an Exception when their number is neither, and
/// about weights that cannot be meant: numbers that are negative or not finite, 0 for all images,
/// and a channel of the beauty.
std::vector<image::Weight> normalizeWeights(std::vector<image::Weight> weights,
                                            std::size_t inputCount);

/// Loads an image. Throws an Exception that names the file.
image::ChannelImage loadImage(const Loader& loader, const Path& path);

/// Loads images of the same frame and merges them, each with its weight. One is added, on
/// another thread, while the next file is read; no more than two are in memory beside the sum.
/// Throws an Exception when a file cannot be loaded or does not suit the first one.
image::ChannelImage loadMerged(const Loader& loader, const std::vector<Path>& paths,
                               const std::vector<image::Weight>& weights,
                               const MergeReport& report);

}  // namespace tavrin::pipeline
