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
#include "base/pipeline/SaveSeparateOperator.h"
#include "base/pipeline/SaveTxrOperator.h"
#include "base/pipeline/SaveTxrOperatorCli.h"
#include "base/pipeline/SharpenBlurOperator.h"
#include "base/pipeline/ZoomOperator.h"

namespace tavrin::pipeline {

/// Owns one operator of each kind and wires them, once and for all: the display chain from the file
/// to the picture, and the operators that save. What varies is which element is asked for and what
/// the settings say. Made and destroyed by one thread; the settings and the colour mapping outlive
/// it. Its end waits for the computations that run.
class Performer {
public:
    Performer(settings::Settings& settings, colorkit::ColorMapping& colorMapping);

    // Each reads only from those above it, so that the readers end first.
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
    ZoomOperator zoom;  ///< what is shown
    SaveTxrOperator saveTxr;
    SaveTxrOperatorCli saveTxrCli;
    SaveSeparateOperator saveSeparate;
};

}  // namespace tavrin::pipeline
