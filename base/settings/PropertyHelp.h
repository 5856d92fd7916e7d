#pragma once

#include "foundation/String.h"

#include <vector>

namespace tavrin::settings {

/// The help on a property with its placeholders filled in; empty when there is none. Any thread.
const String& getPropertyHelp(int id);

// The ids of the properties of each group in ascending order, and of groups together. They are
// built at the first call and live until the process ends. Any thread.

const std::vector<int>& denoisePropertyIds();
const std::vector<int>& lightMixPropertyIds();
const std::vector<int>& bloomGlarePropertyIds();
const std::vector<int>& cameraPropertyIds();
const std::vector<int>& sharpenBlurPropertyIds();
/// Denoising, bloom and glare, camera, sharpening and blurring.
const std::vector<int>& postPropertyIds();
/// Those and LightMix: what is stored in images.
const std::vector<int>& allPropertyIds();

}  // namespace tavrin::settings
