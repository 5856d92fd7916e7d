#pragma once

#include "foundation/Optional.h"
#include "foundation/Path.h"
#include "foundation/Result.h"
#include "foundation/TaskProgress.h"
#include "services/imageio/IImageIterator.h"
#include "services/imageio/ImageFormat.h"
#include "services/imageio/ImageSaveSettings.h"

namespace tavrin::imageio {

/// Writes a picture file, which appears whole or not at all; a failure names the file and leaves an
/// existing one as it was. May be called from any thread, also for several pictures at once.
///
/// `isData` is false for a picture that has been mapped to colours for the display: its values are
/// sRGB-encoded, the file is tagged so where the format can say it, and formats that are linear by
/// convention (OpenEXR, Radiance HDR) get linear values again, also above 1. With `isData` the
/// values are stored as they are, untagged.
///
/// Integer samples are clamped to 0..1 and rounded to the nearest level, without dithering;
/// not-a-number becomes 0. Floating-point files keep every value; a floating-point TIFF therefore
/// holds a mapped picture sRGB-encoded. Alpha is written when the picture has it and the format
/// carries it, beside the very colours that the picture has: they are not divided by alpha, so
/// that a background seen through a transparent pixel is not lost.
///
/// Without `format` the extension of the file name decides.
Result<void> saveImage(const Path& path, const IImageIterator& picture, bool isData,
                       Optional<ImageFormat> format, const ImageSaveSettings& settings,
                       const TaskProgress& progress);

}  // namespace tavrin::imageio
