#pragma once

#include "base/image/ChannelImage.h"

namespace tavrin::fuzz {

/// What everybody does with an image of unknown origin: applies its settings and tone mapping,
/// which survive being written, asks for its camera, and lists its elements, whose descriptions
/// survive being written too.
void checkMetadata(const image::ChannelImage& image);

}  // namespace tavrin::fuzz
