#include "services/postcore/PropertyTable.h"

#include <limits>
#include <utility>

namespace tavrin::postcore {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kFullTurn = 360.0f;

PropertyDescriptor makeInt(int id, const char* name, int value, int minimum, int maximum) {
    return {id, name, PropertyType::Int, value, minimum, maximum};
}

PropertyDescriptor makeChoice(int id, const char* name, int value,
                              std::vector<PropertyChoice> choices) {
    const int maximum = choices.back().value;
    return {id, name, PropertyType::Int, value, 0, maximum, std::move(choices)};
}

PropertyDescriptor makeFloat(int id, const char* name, float value, float minimum, float maximum) {
    return {id, name, PropertyType::Float, value, minimum, maximum};
}

/// A part or a strength: 0 is nothing of it, 1 all of it.
PropertyDescriptor makeFraction(int id, const char* name, float value) {
    return makeFloat(id, name, value, 0.0f, 1.0f);
}

/// An angle in degrees.
PropertyDescriptor makeAngle(int id, const char* name, float value) {
    return makeFloat(id, name, value, 0.0f, kFullTurn);
}

/// A magnification; 1 is none.
PropertyDescriptor makeZoom(int id, const char* name) {
    return makeFloat(id, name, 1.0f, 1.0f, 10.0f);
}

PropertyDescriptor makeBool(int id, const char* name, bool value) {
    return {id, name, PropertyType::Bool, value, {}, {}};
}

template <class T>
PropertyDescriptor makeEmptyArray(int id, const char* name) {
    const Property empty = std::vector<T>{};
    return {id, name, empty.getType(), empty, {}, {}};
}

}  // namespace

std::vector<PropertyDescriptor> makePropertyTable() {
    return {
        // Denoising; the last two modes are neural.
        makeChoice(996, "denoiseMode", 0,
                   {{0, "None"}, {1, "Fireflies"}, {2, "Full"}, {4, "NvidiaAi"}, {5, "IntelAi"}}),
        makeFloat(997, "denoiseSensitivity", 1.0f, 0.0f, 10.0f),
        // How readily a bright pixel is taken for a firefly.
        makeFloat(992, "denoiseFireflySensitivity", 1.0f, 0.0f, 10.0f),
        makeFraction(993, "denoiseAmount", 1.0f),
        makeBool(989, "denoiseBlending", true),
        // What the neural denoiser runs on.
        makeChoice(999, "denoiseBackend", 0, {{0, "Best"}, {1, "Processor"}, {2, "Gpu"}}),

        // LightMix: one element for each light; lights without one are on, white and as rendered.
        makeEmptyArray<bool>(381, "lightMixEnabled"),
        makeEmptyArray<float>(363, "lightMixIntensity"),
        makeEmptyArray<Vec3>(362, "lightMixColor"),

        // Bloom and glare. Intensities are factors of the light that is spread; the size is in
        // percent of the render's, the threshold in linear light.
        makeBool(391, "bloomGlareDelayed", false),
        makeBool(368, "bloomGlareEnabled", false),
        makeBool(400, "bloomGlareLegacy", false),
        makeFloat(387, "bloomGlareSize", 50.0f, 1.0f, 100.0f),
        makeFloat(353, "bloomIntensity", 0.2f, 0.0f, kInfinity),
        makeFloat(354, "glareIntensity", 0.2f, 0.0f, kInfinity),
        makeFloat(360, "bloomGlareThreshold", 1.0f, 0.0f, kInfinity),
        makeInt(355, "glareStreakCount", 6, 1, 16),
        makeFloat(356, "glareRotation", 15.0f, -kInfinity, kInfinity),
        makeFraction(357, "glareStreakBlur", 0.2f),
        makeFraction(358, "glareColorIntensity", 0.2f),
        makeFraction(359, "glareColorShift", 0.0f),

        // The aperture that glare comes from.
        makeBool(401, "apertureCustom", false),
        makeBool(402, "apertureBladed", true),
        makeInt(403, "apertureBladeCount", 6, 3, 16),
        makeAngle(404, "apertureBladeRotation", 0.0f),
        makeBool(405, "gratingEnabled", false),
        makeFraction(406, "gratingRatio", 0.5f),
        makeFraction(407, "gratingLength", 0.1f),
        makeZoom(408, "gratingZoom"),
        makeFloat(409, "gratingDirection", 0.0f, -90.0f, 90.0f),
        makeFraction(410, "gratingStrength", 1.0f),
        makeBool(411, "occlusionEnabled", false),
        makeBool(412, "occlusionSymmetric", false),
        makeFraction(413, "occlusionRatio", 0.25f),
        makeAngle(414, "occlusionRotation", 0.0f),
        makeFraction(415, "occlusionArc", 0.5f),
        makeBool(416, "scratchesEnabled", false),
        makeChoice(417, "scratchesPattern", 1, {{0, "Regular"}, {1, "Random"}}),
        makeBool(418, "scratchesCommonOrigin", false),
        makeInt(419, "scratchesClustering", 1, 1, 16),
        makeFraction(420, "scratchesDensity", 0.2f),
        makeFraction(421, "scratchesLength", 0.5f),
        makeInt(422, "scratchesSeed", 0, 0, 9999),
        makeFraction(423, "scratchesSlopeVariation", 0.2f),
        makeFraction(424, "scratchesWidthVariation", 0.5f),
        makeZoom(425, "scratchesZoom"),
        makeAngle(426, "scratchesRotation", 0.0f),
        makeFraction(427, "scratchesStrength", 1.0f),
        makeBool(428, "dustEnabled", false),
        makeChoice(429, "dustPattern", 0, {{0, "Squares"}, {1, "Hexagons"}}),
        makeFraction(430, "dustDensity", 0.2f),
        makeFraction(431, "dustRadiusVariation", 0.5f),
        makeFraction(432, "dustPositionVariation", 1.0f),
        makeZoom(433, "dustZoom"),
        makeAngle(434, "dustRotation", 0.0f),
        makeFraction(435, "dustStrength", 1.0f),

        // The camera: film speed as an ISO number, shutter speed in 1/s, focal length over
        // aperture.
        makeFloat(341, "cameraIso", 100.0f, 1.0f, 1000000.0f),
        makeFloat(342, "cameraShutterSpeed", 50.0f, 0.001f, 1000000.0f),
        makeFloat(343, "cameraFStop", 16.0f, 0.1f, 1000.0f),

        // Sharpening and blurring; radii in pixels.
        makeBool(383, "sharpenBlurEnabled", false),
        makeFloat(379, "sharpenAmount", 1.0f, 0.0f, 10.0f),
        makeFloat(380, "sharpenRadius", 0.5f, 0.0f, 10.0f),
        makeFloat(382, "blurRadius", 0.0f, 0.0f, 10.0f),
    };
}

}  // namespace tavrin::postcore
