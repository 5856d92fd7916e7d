#pragma once

#include "services/colorkit/StageList.h"

namespace tavrin::colorkit {

/// Appends the curve that turns linear colours into those a display takes, continued above 1, by
/// the display gamma of a CommonColorMappingContext.
void appendDisplayEncoding(float gamma, StageList& stages);

/// Appends the inverse of that curve.
void appendDisplayDecoding(float gamma, StageList& stages);

}  // namespace tavrin::colorkit
