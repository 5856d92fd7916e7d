#pragma once

#include "services/postcore/bloomglare/ApertureParams.h"
#include "services/postcore/bloomglare/GlarePsf.h"

namespace tavrin::postcore {

/// Calls visit(id, member) for each property that an ApertureParams holds. Params is ApertureParams
/// or const ApertureParams.
template <class Params, class Visitor>
void visitApertureProperties(Params& params, Visitor&& visit) {
    visit(401, params.isCustom);
    visit(402, params.isBladed);
    visit(403, params.bladeCount);
    visit(404, params.bladeRotation);
    visit(405, params.grating.isEnabled);
    visit(406, params.grating.ratio);
    visit(407, params.grating.length);
    visit(408, params.grating.zoom);
    visit(409, params.grating.direction);
    visit(410, params.grating.strength);
    visit(411, params.occlusion.isEnabled);
    visit(412, params.occlusion.isSymmetric);
    visit(413, params.occlusion.ratio);
    visit(414, params.occlusion.rotation);
    visit(415, params.occlusion.arc);
    visit(416, params.scratches.isEnabled);
    visit(417, params.scratches.pattern);
    visit(418, params.scratches.haveCommonOrigin);
    visit(419, params.scratches.clustering);
    visit(420, params.scratches.density);
    visit(421, params.scratches.length);
    visit(422, params.scratches.seed);
    visit(423, params.scratches.slopeVariation);
    visit(424, params.scratches.widthVariation);
    visit(425, params.scratches.zoom);
    visit(426, params.scratches.rotation);
    visit(427, params.scratches.strength);
    visit(428, params.dust.isEnabled);
    visit(429, params.dust.pattern);
    visit(430, params.dust.density);
    visit(431, params.dust.radiusVariation);
    visit(432, params.dust.positionVariation);
    visit(433, params.dust.zoom);
    visit(434, params.dust.rotation);
    visit(435, params.dust.strength);
}

/// The same for GlareParams.
template <class Params, class Visitor>
void visitGlareProperties(Params& params, Visitor&& visit) {
    visit(355, params.streakCount);
    visit(356, params.rotation);
    visit(357, params.streakBlur);
    visit(358, params.colorIntensity);
    visit(359, params.colorShift);
}

/// With each number that is out of its property's range replaced by the nearest that is in it, and
/// each that is not finite by the property's default.
ApertureParams limitToRanges(ApertureParams params);
GlareParams limitToRanges(GlareParams params);

}  // namespace tavrin::postcore
