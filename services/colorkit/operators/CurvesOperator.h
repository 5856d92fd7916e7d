#pragma once

#include "services/colorkit/ColorMappingOperatorDescriptor.h"
#include "services/colorkit/simd/ScaledPower.h"

namespace tavrin::colorkit {

/// Tone curves over log2(x / 0.18), one for all components and then one for each of them: a
/// monotone cubic through the points (Fritsch, Carlson 1980), continued by its slopes at the ends.
/// 0 stays 0 unless the curve begins level, which lifts black to where it begins.
struct CurvesOperator {
    static constexpr Parameter<std::vector<CurvePoint>> kMaster =
        declareEmpty<std::vector<CurvePoint>>(
            "master", "Master", "The curve of red, green and blue, in stops from middle grey.");
    static constexpr Parameter<std::vector<CurvePoint>> kRed =
        declareEmpty<std::vector<CurvePoint>>("red", "Red",
                                              "The curve of red, after the master curve.");
    static constexpr Parameter<std::vector<CurvePoint>> kGreen =
        declareEmpty<std::vector<CurvePoint>>("green", "Green",
                                              "The curve of green, after the master curve.");
    static constexpr Parameter<std::vector<CurvePoint>> kBlue =
        declareEmpty<std::vector<CurvePoint>>("blue", "Blue",
                                              "The curve of blue, after the master curve.");

    /// A curve as the kernel reads it.
    struct Numbers {
        int segmentCount;
        float starts[kMostCurvePoints];  ///< of segments, then the last point
        float coefficients[4][kMostCurvePoints];
        float smallest;  ///< what smaller colours count as
        ScaledPower below;
        ScaledPower above;
    };

    static const ColorMappingOperatorDescriptor kDescriptor;
};

}  // namespace tavrin::colorkit
