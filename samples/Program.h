#pragma once

#include "base/image/ChannelImage.h"
#include "samples/CommandLine.h"

namespace tavrin::samples {

/// Renders the desk scene as asked for; --timing decides whether the image tells the time taken.
image::ChannelImage renderDesk(const CommandLine& line);

/// Renders and saves. Throws an Exception.
void run(const CommandLine& line);

}  // namespace tavrin::samples
