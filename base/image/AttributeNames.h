#pragma once

#include "foundation/String.h"

#include <array>

namespace tavrin::image {

/// Of value 1 in an image that the renderer wrote, together with all statistics.
inline const String kTxrMarkerAttribute = "tavrin.istavrinexr";
/// Whole numbers: render passes, render time in seconds, rays per second.
inline const std::array<String, 3> kSummedStatistics = {"tavrin.stats.passes", "tavrin.stats.time",
                                                        "tavrin.stats.rayspersecond"};
/// A float.
inline const String kRaysPerSampleStatistic = "tavrin.stats.rayspersample";

/// What the renderer says about its render elements, and the names of light selects that older
/// files have in its place.
inline const String kElementsAttribute = "tavrin.elements";
inline const String kLightMixElementsAttribute = "tavrin.lightmix.elements";

/// The tone mapping: the pipeline's text, and a whole number that is 0 when it is off.
inline const String kPipelineAttribute = "tavrin.cm.pipeline";
inline const String kColorMappingEnabledAttribute = "tavrin.cm.enabled";

/// Whole numbers: the renderer's number for the kind of projection, and 1 for a camera of VR.
inline const String kCameraTypeAttribute = "tavrin.camera.type";
inline const String kCameraVrAttribute = "tavrin.camera.isvrenabled";

}  // namespace tavrin::image
