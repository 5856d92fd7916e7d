#pragma once

#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "foundation/Flags.h"
#include "services/postcore/CameraData.h"
#include "services/postcore/bloomglare/BloomGlareData.h"
#include "services/postcore/bloomglare/BloomGlareProgress.h"
#include "services/postcore/sharpening/ImageOperators.h"

namespace tavrin::postcore {

/// The number of steps that computing bloom and glare counts, whatever the image; at least 1. The
/// camera makes no difference so far.
int getBloomGlareTotalSteps(const BloomGlareData& bloomGlare, const CameraData& camera);

/// Replaces linear light by what bloom and glare add to it: the light above the threshold, spread
/// by the point-spread functions and multiplied by the intensities. Nothing of it is lost but what
/// leaves the image, and nothing is negative or not finite. Row 0 of the bitmap is the image's
/// lowest.
///
/// Counts its steps in `progress`. Answers false when that has been aborted; the bitmap is then
/// unchanged. Throws std::bad_alloc, and an Exception when the image is too large. Any thread.
bool computeBloomAndGlare(Flags<ImageOperatorsFlag> flags, BitmapImpl<CompressedRgb>& bitmap,
                          const BloomGlareData& bloomGlare, const CameraData& camera,
                          BloomGlareProgress& progress);

}  // namespace tavrin::postcore
