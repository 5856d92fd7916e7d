#include "base/pipeline/Performer.h"

#include "foundation/Scheduler.h"

namespace tavrin::pipeline {
namespace {

// Below the thread of a window, which stays responsive while all processors compute.
constexpr int kWorkerThreadsPriority = -2;

}  // namespace

Performer::Performer(settings::Settings& settings, colorkit::ColorMapping& colorMapping) {
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
    const auto wireTxrSaving = [&](TxrSaving& op) {
        op.setInput(load, 0);
        op.setInput(denoise, 1);
        op.setSettings(settings);
        op.setColorMapping(colorMapping);
        op.setImageInfoProvider(load);
    };
    wireTxrSaving(saveTxr);
    wireTxrSaving(saveTxrCli);
    saveSeparate.setInput(zoom);

    colorMap.updateColorMappingContext();
    Scheduler::highPriorityInstance().setWorkerThreadsPriority(kWorkerThreadsPriority);
}

}  // namespace tavrin::pipeline
