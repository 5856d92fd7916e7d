#pragma once

#include "foundation/Color.h"
#include "services/colorkit/OperatorValues.h"

#include <array>
#include <functional>
#include <vector>

namespace tavrin::colorkit::test {

/// A colour of the scalar references, which compute in double precision.
using Reference = std::array<double, 3>;

OperatorValues exposure(float stops);

/// Up to a dozen operators with any values, within a property of RapidCheck.
std::vector<OperatorValues> arbitraryOperators();

/// Maps the pixels as one row by these operators, with the display encoding of `gamma` (1: none).
std::vector<Rgb> mapWith(const std::vector<OperatorValues>& operators, std::vector<Rgb> pixels,
                         float gamma = 1.0f);

/// Every operator with values that are not neutral.
std::vector<OperatorValues> makeTellingOperators();

/// Colours over many magnitudes and corner cases (0, negative, subnormal, the largest float, NaN,
/// infinities), in all positions of vectors and with a length that no vector divides.
std::vector<Rgb> makeColors();

/// What a mapping sees of a colour: no negative components, no NaN, nothing above the largest
/// float.
Reference toMappable(const Rgb& color);

/// Checks `actual` within 1e-5 of `expected` after clamping that to what a mapping may return. The
/// scale is that of each component, or, for operators that mix components, of the largest term.
void expectClose(const Rgb& actual, const Reference& expected, double largestTerm = 0.0);

using ReferenceFunction = std::function<Reference(const Reference&)>;

double luminance(const Reference& color);

ReferenceFunction perComponent(std::function<double(double)> function);

/// What the errors of an operator are measured by besides the component itself: the largest
/// component of the colour times `ofLargest`, for operators that mix components, and `absolute`,
/// for those that subtract.
struct ErrorScale {
    double ofLargest = 0.0;
    double absolute = 0.0;
};

/// Compares one operator with its formula on all colours.
void expectFormula(const OperatorValues& values, const ReferenceFunction& formula,
                   const ErrorScale& scale = {});

/// Bit for bit, so that -0 differs from 0.
bool haveSameBits(const Rgb& left, const Rgb& right);

}  // namespace tavrin::colorkit::test
