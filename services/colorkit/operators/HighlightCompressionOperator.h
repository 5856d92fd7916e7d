#pragma once

#include "services/colorkit/ColorMappingOperatorDescriptor.h"

namespace tavrin::colorkit {

/// What the highlight compression measures to find how much it lowers a colour.
enum class HighlightMeasure { Luminance, Channels };

/// Brings highlights down to white and leaves shadows: x (1 + x/w²) / (1 + x) (Reinhard, Stark,
/// Shirley, Ferwerda 2002, eq. 4), blended with x by an amount. On the luminance it scales a colour
/// as a whole and keeps its hue; on the channels bright colours fade towards white.
struct HighlightCompressionOperator {
    static constexpr ParameterChoice kMeasures[] = {{"luminance", "Luminance"},
                                                    {"channels", "Each channel"}};

    static constexpr Parameter<float> kAmount = declareNumber(
        "amount", "Amount", 1.0f, 0.0f, 1.0f, "0 changes nothing, 1 compresses in full.");
    static constexpr Parameter<float> kWhite =
        declareNumber("white", "White", 4.0f, 1.0f, 100.0f,
                      "The linear value that becomes white; larger ones compress more.");
    static constexpr Parameter<HighlightMeasure> kMeasure =
        declareChoice("measure", "Works on", HighlightMeasure::Luminance, kMeasures,
                      "Luminance keeps hues, each channel lets bright colours fade to white.");

    static const ColorMappingOperatorDescriptor kDescriptor;
};

}  // namespace tavrin::colorkit
