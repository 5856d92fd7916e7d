#include "services/colorkit/ChromaticAdaptation.h"

#include <algorithm>

namespace tavrin::colorkit {
namespace {

// Lam 1985, the numbers also as in Hunt, "The Reproduction of Colour", and on Lindbloom's page on
// chromatic adaptation. Each row sums up to 1: equal energy gives equal responses.
constexpr Matrix3 kBradford{{{{0.8951, 0.2664, -0.1614},  //
                              {-0.7502, 1.7135, 0.0367},
                              {0.0389, -0.0685, 1.0296}}}};

// Li et al. 2017, "Comprehensive color solutions: CAM16, CAT16, and CAM16-UCS", also as in CIE
// 248:2022. Rows sum up to 1 here, too.
constexpr Matrix3 kCat16{{{{0.401288, 0.650173, -0.051461},
                           {-0.250268, 1.204414, 0.045854},
                           {-0.002079, 0.048952, 0.953127}}}};

// A light far from white may lie outside the real colours, where a response reaches 0.
constexpr double kSmallestResponse = 0.01;

/// The chromaticities of the primaries of a space of colours.
struct Primaries {
    Chromaticity red;
    Chromaticity green;
    Chromaticity blue;
};

// ITU-R BT.709 and BT.2020.
constexpr Primaries kRec709{{0.640, 0.330}, {0.300, 0.600}, {0.150, 0.060}};
constexpr Primaries kRec2020{{0.708, 0.292}, {0.170, 0.797}, {0.131, 0.046}};

Matrix3 toXyz(const Primaries& primaries) {
    const Vector3 r = toXyz(primaries.red);
    const Vector3 g = toXyz(primaries.green);
    const Vector3 b = toXyz(primaries.blue);
    const Matrix3 columns{{{{r[0], g[0], b[0]}, {r[1], g[1], b[1]}, {r[2], g[2], b[2]}}}};
    return columns * Matrix3::diagonal(inverse(columns) * toXyz(kD65));
}

}  // namespace

Matrix3 rec709ToXyz() {
    return toXyz(kRec709);
}

Matrix3 rec709ToRec2020() {
    return inverse(toXyz(kRec2020)) * toXyz(kRec709);
}

Matrix3 adaptXyz(const Chromaticity& source, const Chromaticity& destination,
                 AdaptationMethod method) {
    const Matrix3& toCones = method == AdaptationMethod::Bradford ? kBradford : kCat16;
    const Vector3 from = toCones * toXyz(source);
    const Vector3 to = toCones * toXyz(destination);
    Vector3 gains{};
    for (std::size_t i = 0; i < gains.size(); ++i) {
        gains[i] = to[i] / std::max(from[i], kSmallestResponse);
    }
    return inverse(toCones) * Matrix3::diagonal(gains) * toCones;
}

Matrix3 adaptRec709(const Chromaticity& source, const Chromaticity& destination,
                    AdaptationMethod method) {
    const Matrix3 fromRec709 = rec709ToXyz();
    return inverse(fromRec709) * adaptXyz(source, destination, method) * fromRec709;
}

}  // namespace tavrin::colorkit
