#pragma once

#include "services/colorkit/StageList.h"

namespace tavrin::colorkit {

/// Appends a stage that brings every component into a range; an empty one makes all `maximum`.
void appendClamping(float minimum, float maximum, StageList& stages);

}  // namespace tavrin::colorkit
