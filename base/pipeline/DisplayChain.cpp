#include "base/pipeline/DisplayChain.h"

namespace tavrin::pipeline {

DisplayChain::DisplayChain(settings::Settings& settings, colorkit::ColorMapping& colorMapping) {
    load.setSettings(settings);
    load.setColorMapping(colorMapping);
    denoise.setInput(load);
    denoise.setSettings(settings);
    blendDenoised.setInput(load, 0);
    blendDenoised.setInput(denoise, 1);
    blendDenoised.setSettings(settings);
    lightMix.setInput(blendDenoised);
    lightMix.setSettings(settings);
    lightMix.setImageInfoProvider(load);
    bloomGlare.setInput(lightMix);
    bloomGlare.setSettings(settings);
    bloomGlare.setColorMapping(colorMapping);
    bloomGlare.setImageInfoProvider(load);
    blendBloomGlare.setInput(lightMix, 0);
    blendBloomGlare.setInput(bloomGlare, 1);
    includeAlpha.setInput(blendBloomGlare);
    colorMap.setInput(includeAlpha);
    colorMap.setSettings(settings);
    colorMap.setColorMapping(colorMapping);
    sharpenBlur.setInput(colorMap);
    sharpenBlur.setSettings(settings);
    monoToColor.setInput(sharpenBlur);
    zoom.setInput(monoToColor);
    colorMap.updateColorMappingContext();
}

}  // namespace tavrin::pipeline
