#include "services/colorkit/Chromaticity.h"

#include <cmath>

namespace tavrin::colorkit {
namespace {

/// A chromaticity in the CIE 1960 uniform diagram.
struct UniformChromaticity {
    double u = 0.0;
    double v = 0.0;
};

UniformChromaticity toUniform(const Chromaticity& light) {
    const double denominator = -2.0 * light.x + 12.0 * light.y + 3.0;
    return {4.0 * light.x / denominator, 6.0 * light.y / denominator};
}

Chromaticity fromUniform(const UniformChromaticity& light) {
    const double denominator = 2.0 * light.u - 8.0 * light.v + 4.0;
    return {3.0 * light.u / denominator, 2.0 * light.v / denominator};
}

// Krystek 1985, "An algorithm to calculate correlated colour temperature": rational approximation
// of the Planckian locus, 1000 K to 15000 K.
UniformChromaticity blackBody(double t) {
    return {(0.860117757 + 1.54118254e-4 * t + 1.28641212e-7 * t * t) /
                (1.0 + 8.42420235e-4 * t + 7.08145163e-7 * t * t),
            (0.317398726 + 4.22806245e-5 * t + 4.20481691e-8 * t * t) /
                (1.0 - 2.89741816e-5 * t + 1.61456053e-7 * t * t)};
}

// Judd, MacAdam, Wyszecki 1964, as in CIE 15: phases of daylight, 4000 K to 25000 K.
UniformChromaticity daylight(double nominalTemperature) {
    // The nominal temperatures were named with a second radiation constant of 0.014380 m K; it has
    // become 0.014388 m K.
    const double t = nominalTemperature * 1.4388 / 1.4380;
    const double x = t <= 7000.0 ? 0.244063 + (0.09911e3 + (2.9678e6 - 4.6070e9 / t) / t) / t
                                 : 0.237040 + (0.24748e3 + (1.9018e6 - 2.0064e9 / t) / t) / t;
    return toUniform({x, -3.000 * x * x + 2.870 * x - 0.275});
}

// The two curves lie apart by about 0.003; the mixture spares whoever moves the temperature a jump.
UniformChromaticity naturalLight(double temperature) {
    constexpr double kLastBlackBody = 4000.0;
    constexpr double kFirstDaylight = 5000.0;
    if (temperature <= kLastBlackBody) {
        return blackBody(temperature);
    }
    const UniformChromaticity day = daylight(temperature);
    if (temperature >= kFirstDaylight) {
        return day;
    }
    const UniformChromaticity body = blackBody(temperature);
    const double share = (temperature - kLastBlackBody) / (kFirstDaylight - kLastBlackBody);
    return {std::lerp(body.u, day.u, share), std::lerp(body.v, day.v, share)};
}

}  // namespace

Chromaticity lightOfTemperature(double temperature, double tint) {
    constexpr double kDistancePerTint = 1.0 / 3000.0;
    constexpr double kRelativeStep = 1e-3;
    const UniformChromaticity light = naturalLight(temperature);
    const UniformChromaticity warmer = naturalLight(temperature * (1.0 - kRelativeStep));
    const UniformChromaticity cooler = naturalLight(temperature * (1.0 + kRelativeStep));
    const double du = cooler.u - warmer.u;
    const double dv = cooler.v - warmer.v;
    // u and v fall with the temperature, so that (dv, -du) points towards green.
    const double distance = tint * kDistancePerTint / std::hypot(du, dv);
    return fromUniform({light.u + dv * distance, light.v - du * distance});
}

}  // namespace tavrin::colorkit
