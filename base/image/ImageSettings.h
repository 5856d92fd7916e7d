#pragma once

#include "base/image/ChannelImage.h"
#include "foundation/Function.h"
#include "services/postcore/CameraData.h"
#include "services/postcore/ISettings.h"

#include <vector>

namespace tavrin::colorkit {
class ColorMapping;
}

namespace tavrin::image {

/// Takes the post-processing settings over that the image's header brings: of the properties with
/// these ids those that the header lacks, or has as another type, get their defaults. The tone
/// mapping is that of the header, else what its legacy parameters did, else the default one; a
/// pipeline that is the same as the current one is not set again. `warn` is told sentences about
/// what cannot be used; the context of the colour mapping keeps it for later failures of operators.
void readSettings(const ChannelImage& image, const std::vector<int>& ids,
                  postcore::ISettings& settings, colorkit::ColorMapping& colorMapping,
                  const Function<void(const String&)>& warn);

/// Stores the properties with these ids and the tone mapping as attributes of the image, so that
/// readSettings brings them back.
void writeSettings(ChannelImage& image, const std::vector<int>& ids,
                   const postcore::ISettings& settings, const colorkit::ColorMapping& colorMapping);

/// What the image's header says about the camera.
postcore::CameraData readCameraData(const ChannelImage& image);

}  // namespace tavrin::image
