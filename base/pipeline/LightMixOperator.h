#pragma once

#include "base/image/RegionSampling.h"
#include "base/pipeline/DependentMixin.h"
#include "base/pipeline/IOperator.h"
#include "base/pipeline/ImageInfoMixin.h"
#include "base/pipeline/SettingsMixin.h"
#include "services/colorkit/Spectrum.h"

#include <vector>

namespace tavrin::pipeline {

/// Mixes the lights of a render anew: the virtual element "LightMix Interactive" is the sum of the
/// light selects, each by its switch, intensity and colour in the settings. Other elements pass
/// unchanged. Nothing is kept between requests; each takes the settings as they are when it starts.
class LightMixOperator final : public DependentMixin<1, SettingsMixin<ImageInfoMixin<IOperator>>> {
public:
    /// The input's elements and, where there are lights, their mix as the last one.
    std::vector<image::ElementInfo> getElements() const override;
    /// The light selects. Their order is that of the values in the settings for LightMix.
    std::vector<image::ElementInfo> getLightElements() const;

private:
    /// A light that takes part in the mix.
    struct Light {
        String element;
        colorkit::Spectrum multiplier;
    };

    Optional<BitmapImpl<Rgb>> computeRgbRegion(const Request& request) override;
    Optional<BitmapImpl<Rgb>> mix(const Request& request);
    /// Mixes some rows of the answer. False when a light is not available.
    bool mixPart(const Request& request, const std::vector<Light>& lights,
                 const image::RegionRows& part, BitmapImpl<Rgb>& sum) const;
    std::vector<Light> getLightsInMix() const;
};

}  // namespace tavrin::pipeline
