#include "services/colorkit/opencolorio/TransformFactory.h"

#include <stdexcept>

namespace OCIO = OCIO_NAMESPACE;

namespace tavrin::colorkit {
namespace {

OCIO::ConstCPUProcessorRcPtr finish(const OCIO::ConstProcessorRcPtr& processor,
                                    OCIO::OptimizationFlags optimization) {
    return processor->getOptimizedCPUProcessor(OCIO::BIT_DEPTH_F32, OCIO::BIT_DEPTH_F32,
                                               optimization);
}

/// The request's colour space, or what the configuration calls linear colours with the primaries of
/// Rec. 709.
std::string findSource(const OCIO::ConstConfigRcPtr& config, const DisplayView& request) {
    if (!request.source.empty()) {
        if (!config->getColorSpace(request.source.c_str())) {
            throw std::runtime_error("it has no colour space \"" + request.source + "\"");
        }
        return request.source;
    }
    for (const char* name :
         {"lin_rec709", "lin_rec709_srgb", "Linear Rec.709 (sRGB)", "Utility - Linear - Rec.709",
          "Utility - Linear - sRGB", "Linear Rec.709", "lin_srgb", "Linear BT.709"}) {
        if (config->getColorSpace(name)) {
            return name;
        }
    }
    return OCIO::ROLE_SCENE_LINEAR;
}

/// The library's own words for a display or a view that is not there are hard to understand.
void requireView(const OCIO::ConstConfigRcPtr& config, const std::string& display,
                 const std::string& view) {
    for (int i = 0; i < config->getNumViews(display.c_str()); ++i) {
        if (view == config->getView(display.c_str(), i)) {
            return;
        }
    }
    throw std::runtime_error("it has no view \"" + view + "\" of a display \"" + display + "\"");
}

struct ProcessorMaker {
    OCIO::ConstCPUProcessorRcPtr operator()(const LutFile& lut) const {
        // The library keeps files by their names, also when they have changed.
        OCIO::ClearAllCaches();
        const auto transform = OCIO::FileTransform::Create();
        transform->setSrc(lut.path.c_str());
        transform->setInterpolation(OCIO::INTERP_BEST);
        return finish(OCIO::Config::CreateRaw()->getProcessor(transform),
                      OCIO::OPTIMIZATION_LOSSLESS);
    }

    OCIO::ConstCPUProcessorRcPtr operator()(const AcesOutput&) const {
        const auto group = OCIO::GroupTransform::Create();
        const auto append = [&](const char* style, OCIO::TransformDirection direction) {
            const auto transform = OCIO::BuiltinTransform::Create();
            transform->setStyle(style);
            transform->setDirection(direction);
            group->appendTransform(transform);
        };
        constexpr const char* kAp1ToRec709 = "UTILITY - ACES-AP1_to_LINEAR-REC709_BFD";
        constexpr const char* kAp1ToAp0 = "ACEScg_to_ACES2065-1";
        append(kAp1ToRec709, OCIO::TRANSFORM_DIR_INVERSE);
        append(kAp1ToAp0, OCIO::TRANSFORM_DIR_FORWARD);
        append("ACES-OUTPUT - ACES2065-1_to_CIE-XYZ-D65 - SDR-VIDEO_1.0",
               OCIO::TRANSFORM_DIR_FORWARD);
        append("UTILITY - ACES-AP0_to_CIE-XYZ-D65_BFD", OCIO::TRANSFORM_DIR_INVERSE);
        append(kAp1ToAp0, OCIO::TRANSFORM_DIR_INVERSE);
        append(kAp1ToRec709, OCIO::TRANSFORM_DIR_FORWARD);
        // What a display cannot show is clipped before its encoding, as the output transform asks.
        const auto range = OCIO::RangeTransform::Create();
        range->setMinInValue(0.0);
        range->setMinOutValue(0.0);
        range->setMaxInValue(1.0);
        range->setMaxOutValue(1.0);
        group->appendTransform(range);
        return finish(OCIO::Config::CreateRaw()->getProcessor(group), OCIO::OPTIMIZATION_LOSSLESS);
    }

    OCIO::ConstCPUProcessorRcPtr operator()(const DisplayView& request) const {
        OCIO::ClearAllCaches();
        const auto config = OCIO::Config::CreateFromFile(request.configuration.c_str());
        config->validate();
        const auto transform = OCIO::DisplayViewTransform::Create();
        transform->setSrc(findSource(config, request).c_str());
        const std::string display =
            request.display.empty() ? config->getDefaultDisplay() : request.display;
        const std::string view =
            request.view.empty() ? config->getDefaultView(display.c_str()) : request.view;
        requireView(config, display, view);
        transform->setDisplay(display.c_str());
        transform->setView(view.c_str());
        const auto pipeline = OCIO::LegacyViewingPipeline::Create();
        pipeline->setDisplayViewTransform(transform);
        if (!request.look.empty()) {
            pipeline->setLooksOverrideEnabled(true);
            pipeline->setLooksOverride(request.look.c_str());
        }
        return finish(pipeline->getProcessor(config), OCIO::OPTIMIZATION_DEFAULT);
    }
};

}  // namespace

OCIO::ConstCPUProcessorRcPtr makeProcessor(const ColorTransformRequest& request) {
    return std::visit(ProcessorMaker{}, request);
}

}  // namespace tavrin::colorkit
