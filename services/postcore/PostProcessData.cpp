#include "services/postcore/PostProcessData.h"

namespace tavrin::postcore {

PostProcessData getPostProcessData(const ISettings& settings) {
    constexpr int kIso = 341;
    constexpr int kShutterSpeed = 342;
    constexpr int kFStop = 343;
    const auto getFloat = [&settings](int id) { return settings.get(id).get<float>(); };
    return {.camera = {getFloat(kIso), getFloat(kShutterSpeed), getFloat(kFStop)}};
}

colorkit::CommonColorMappingContext getCommonColorMappingContext(const PostProcessData& data) {
    colorkit::CommonColorMappingContext context;
    context.iso = data.camera.iso;
    context.shutterSpeed = data.camera.shutterSpeed;
    context.fStop = data.camera.fStop;
    return context;
}

}  // namespace tavrin::postcore
