#pragma once

#include "services/postcore/bloomglare/ApertureMarks.h"
#include "services/postcore/bloomglare/ApertureParams.h"

namespace tavrin::postcore {

/// The scratches in a lens. More density adds scratches to those that are there; a seed gives the
/// same ones on every machine.
ApertureMarks makeScratches(const ApertureScratches& scratches);

}  // namespace tavrin::postcore
