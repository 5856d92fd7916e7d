#include "services/postcore/PostProcessData.h"

#include "services/postcore/PropertyIds.h"

namespace tavrin::postcore {

PostProcessData getPostProcessData(const ISettings& settings) {
    return getPostProcessData(settings, {}, {});
}

PostProcessData getPostProcessData(const ISettings& settings, Pixel displaySize,
                                   const CameraData& camera) {
    const auto getFloat = [&settings](int id) { return settings.get(id).get<float>(); };
    PostProcessData data{camera, displaySize};
    data.camera.exposure = {getFloat(kCameraIsoId), getFloat(kCameraShutterSpeedId),
                            getFloat(kCameraFStopId)};
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
