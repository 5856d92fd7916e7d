#pragma once

#include "services/colorkit/ColorMappingOperatorDescriptor.h"

namespace tavrin::colorkit {

/// Exposes the picture as the camera that took it was set: by (ISO / 100) · t / N², in units of the
/// settings that a context has at first (ISO 100, 1/50 s, f/16), where colours stay what they are.
struct PhotographicExposureOperator {
    static const ColorMappingOperatorDescriptor kDescriptor;
};

}  // namespace tavrin::colorkit
