#pragma once

#include "services/colorkit/ColorMappingOperatorDescriptor.h"

#include <cstdint>

namespace tavrin::colorkit {

/// Adds the grain of film: x (1 + a n / (1 + 4 Y)), where n is noise with a mean of 0 and a
/// standard deviation of 0.25 that belongs to positions in the image, so that each pixel keeps its
/// grain at every zoom, and Y the luminance: grain shows in midtones most and fades towards black
/// and white. Larger grains are mixed from neighbours (bilinear) with the deviation kept.
struct GrainOperator {
    static constexpr Parameter<float> kAmount =
        declareNumber("amount", "Amount", 0.0f, 0.0f, 1.0f, "How strong the grain is.");
    static constexpr Parameter<float> kSize =
        declareNumber("size", "Size", 1.0f, 1.0f, 8.0f, "The size of the grains in pixels.");

    /// What the kernel needs of a row of pixels: hashes of the two rows of grains around it and
    /// their weights.
    struct Row {
        std::uint32_t upperHash;
        std::uint32_t lowerHash;
        float upperWeight;
        float lowerWeight;
        float squaredWeights;
    };

    static const ColorMappingOperatorDescriptor kDescriptor;
};

}  // namespace tavrin::colorkit
