#pragma once

#include "services/postcore/bloomglare/GlarePsf.h"
#include "services/postcore/bloomglare/PointSpreadFunction.h"

namespace tavrin::postcore {

// The point-spread functions of the older effect, which know nothing of eyes and apertures. Each
// keeps its look at every radius. Negative radii count as 0, other numbers out of range as the
// nearest that is in it. They throw std::bad_alloc and use the default scheduler; any thread.

/// A sum of Gaussians.
PointSpreadFunction makeLegacyBloomPsf(int radius);

/// Rays that run from the light outwards at equal angles, the first of them at the rotation, where
/// 0 is to the right. With colours, some channels reach farther than others.
PointSpreadFunction makeLegacyGlarePsf(const GlareParams& glare, int radius);

}  // namespace tavrin::postcore
