#pragma once

#include "base/pipeline/BlendBloomGlareOperator.h"
#include "base/pipeline/BlendDenoisedOperator.h"
#include "base/pipeline/BloomGlareOperator.h"
#include "base/pipeline/ColorMapOperator.h"
#include "base/pipeline/DenoiseOperator.h"
#include "base/pipeline/IncludeAlphaOperator.h"
#include "base/pipeline/LightMixOperator.h"
#include "base/pipeline/LoadOperator.h"
#include "base/pipeline/MonoToColorOperator.h"
#include "base/pipeline/SharpenBlurOperator.h"
#include "base/pipeline/ZoomOperator.h"

namespace tavrin::pipeline {

/// The operators from the file to the picture, each the input of the next. The settings and the
/// colour mapping outlive them.
struct DisplayChain {
    DisplayChain(settings::Settings& settings, colorkit::ColorMapping& colorMapping);

    LoadOperator load;
    DenoiseOperator denoise;
    BlendDenoisedOperator blendDenoised;
    LightMixOperator lightMix;
    BloomGlareOperator bloomGlare;
    BlendBloomGlareOperator blendBloomGlare;
    IncludeAlphaOperator includeAlpha;
    ColorMapOperator colorMap;
    SharpenBlurOperator sharpenBlur;
    MonoToColorOperator monoToColor;
    ZoomOperator zoom;
};

}  // namespace tavrin::pipeline
