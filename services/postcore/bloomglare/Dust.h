#pragma once

#include "services/postcore/bloomglare/ApertureMarks.h"
#include "services/postcore/bloomglare/ApertureParams.h"

namespace tavrin::postcore {

/// The particles of dust on a lens, the same on every machine.
ApertureMarks makeDust(const ApertureDust& dust);

}  // namespace tavrin::postcore
