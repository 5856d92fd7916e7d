#include "services/postcore/PostProcessData.h"

namespace tavrin::postcore {

PostProcessData getPostProcessData(const ISettings& settings) {
    return getPostProcessData(settings, {}, {});
}

PostProcessData getPostProcessData(const ISettings& settings, Pixel displaySize,
                                   const CameraData& camera) {
    constexpr int kIso = 341;
    constexpr int kShutterSpeed = 342;
    constexpr int kFStop = 343;
    const auto getFloat = [&settings](int id) { return settings.get(id).get<float>(); };
    PostProcessData data{camera, displaySize};
    data.camera.exposure = {getFloat(kIso), getFloat(kShutterSpeed), getFloat(kFStop)};
    return data;
}

colorkit::CommonColorMappingContext getCommonColorMappingContext(const PostProcessData& data) {
    colorkit::CommonColorMappingContext context;
    context.iso = data.camera.exposure.iso;
    context.shutterSpeed = data.camera.exposure.shutterSpeed;
    context.fStop = data.camera.exposure.fStop;
    return context;
}

}  // namespace tavrin::postcore
