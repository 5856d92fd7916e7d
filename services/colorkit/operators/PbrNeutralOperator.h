#pragma once

#include "services/colorkit/ColorMappingOperatorDescriptor.h"

namespace tavrin::colorkit {

/// Keeps the base colours of materials as they are and compresses only highlights, which fade to
/// white (Khronos Group 2024, "Khronos PBR Neutral Tone Mapper"): with m the smallest component,
/// f = m - m²/0.16 up to m = 0.08 and 0.04 above, p the largest component of c - f; for p > 0.76
/// n = 1 - 0.24² / (p - 0.52), g = 1 / (0.15 (p - n) + 1) and (c - f) (n/p) g + n (1 - g), c - f
/// for smaller ones.
struct PbrNeutralOperator {
    static const ColorMappingOperatorDescriptor kDescriptor;
};

}  // namespace tavrin::colorkit
