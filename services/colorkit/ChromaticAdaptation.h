#pragma once

#include "services/colorkit/Chromaticity.h"
#include "services/colorkit/Matrix3.h"

namespace tavrin::colorkit {

/// The space of cone-like responses in which white is scaled.
enum class AdaptationMethod { Bradford, Cat16 };

/// From linear Rec. 709 colours to X, Y, Z with Y = 1 for white.
Matrix3 rec709ToXyz();

/// From linear Rec. 709 colours to those of Rec. 2020, whose white is the same.
Matrix3 rec709ToRec2020();

/// Turns the X, Y, Z of a thing lit by `source` into what it would be under `destination` (complete
/// adaptation after von Kries). Responses are raised by at most a hundred times, so that any light
/// gives a usable matrix.
Matrix3 adaptXyz(const Chromaticity& source, const Chromaticity& destination,
                 AdaptationMethod method);

/// The same for linear Rec. 709 colours.
Matrix3 adaptRec709(const Chromaticity& source, const Chromaticity& destination,
                    AdaptationMethod method);

}  // namespace tavrin::colorkit
