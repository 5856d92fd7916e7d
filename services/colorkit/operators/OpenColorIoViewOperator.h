#pragma once

#include "services/colorkit/ColorMappingOperatorDescriptor.h"

namespace tavrin::colorkit {

/// Shows the image as a display and view of an OpenColorIO configuration do.
struct OpenColorIoViewOperator {
    static constexpr Parameter<Path> kConfiguration =
        declareEmpty<Path>("configuration", "Configuration",
                           "The configuration's file; empty: the one that the environment variable "
                           "OCIO names.");
    static constexpr Parameter<String> kSource = declareEmpty<String>(
        "source", "Source space",
        "The colour space of the image; empty: linear Rec. 709, or the configuration's "
        "scene_linear when it has none.");
    static constexpr Parameter<String> kDisplay =
        declareEmpty<String>("display", "Display", "Empty: the configuration's default.");
    static constexpr Parameter<String> kView =
        declareEmpty<String>("view", "View", "Empty: the display's default.");
    static constexpr Parameter<String> kLook =
        declareEmpty<String>("look", "Look", "Empty: the looks of the view.");

    static const ColorMappingOperatorDescriptor kDescriptor;
};

}  // namespace tavrin::colorkit
