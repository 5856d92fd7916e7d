#pragma once

#include "services/postcore/bloomglare/ApertureMarks.h"
#include "services/postcore/bloomglare/ApertureOutline.h"
#include "services/postcore/bloomglare/ApertureParams.h"

namespace tavrin::postcore {

/// The dark lines at the rim of an aperture.
ApertureMarks makeGratingLines(const ApertureGrating& grating, const ApertureOutline& outline);

}  // namespace tavrin::postcore
