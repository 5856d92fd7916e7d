#pragma once

#include "services/colorkit/ColorMappingOperatorDescriptor.h"

namespace tavrin::colorkit {

/// Applies a look-up table from a file. Tables are made for colours as displays take them, so they
/// work there unless `kLinear`; with `kLogarithmic` they are given the stops around middle grey as
/// appendLogEncoding() spreads them, and what they give is taken as it is otherwise.
struct LutOperator {
    /// A relative path that leads nowhere is looked for among the tables that come with the
    /// program.
    static constexpr Parameter<Path> kPath = declareEmpty<Path>("path", "", nullptr);
    static constexpr Parameter<float> kOpacity = withSlider(declareNumber(
        "opacity", nullptr, 1.0f, 0.0f, 1.0f,
        "Sets the opacity of the LUT transform. Value 0.0 does not change the result at all, while "
        "the default value 1.0 applies the full color transform according to the selected LUT "
        "file."));
    static constexpr Parameter<bool> kLogarithmic =
        declareSwitch("logarithmic", nullptr, false, nullptr);
    static constexpr Parameter<bool> kLinear =
        declareSwitch("linear", nullptr, false,
                      "If set to false (default), the LUT is applied in gamma-mapped color space. "
                      "If set to true, LUT is applied in the linear color space.");

    static const ColorMappingOperatorDescriptor kDescriptor;
};

}  // namespace tavrin::colorkit
