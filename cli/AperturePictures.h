#pragma once

#include "base/settings/Settings.h"
#include "cli/ProgressLine.h"
#include "foundation/Path.h"

namespace tavrin::cli {

/// Saves two pictures for looking at: the aperture that the glare of these settings comes from, to
/// `path`, and beside it, with "_psf" after the name, what it makes of a single light, on a
/// logarithmic scale. The extension has to be of a picture format. Throws an Exception.
void saveAperturePictures(const Path& path, const settings::Settings& settings,
                          ProgressLine& progress);

/// Where the second picture goes.
Path getPointSpreadFunctionPath(const Path& path);

}  // namespace tavrin::cli
