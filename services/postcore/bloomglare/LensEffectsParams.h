#pragma once

#include "services/postcore/ISettings.h"
#include "services/postcore/bloomglare/ApertureParams.h"
#include "services/postcore/bloomglare/GlarePsf.h"

namespace tavrin::postcore {

/// The parameters of effects that come from the lens, in settings. May be called from the threads
/// that the settings allow.
namespace LensEffectsParams {

/// Both throw an Exception when a setting has another type.
ApertureParams loadApertureFromSettings(const ISettings& settings);
GlareParams loadGlareFromSettings(const ISettings& settings);

/// Writes every property of the aperture. No effect on settings that are read-only.
void saveApertureToSettings(const ApertureParams& params, ISettings& settings);

}  // namespace LensEffectsParams

}  // namespace tavrin::postcore
