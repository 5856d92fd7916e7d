#pragma once

#include "services/postcore/bloomglare/PointSpreadFunction.h"

namespace tavrin::postcore {

/// The soft glow around a light that scatters in the eye or a lens, `radius` pixels in all
/// directions (negative counts as 0). The same picture at every radius. Uses the default scheduler.
/// Throws std::bad_alloc. Any thread.
PointSpreadFunction makeBloomPsf(int radius);

}  // namespace tavrin::postcore
