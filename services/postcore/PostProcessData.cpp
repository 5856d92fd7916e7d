#include "services/postcore/PostProcessData.h"

#include "services/postcore/PropertyIds.h"
#include "services/postcore/bloomglare/LensEffectsParams.h"

namespace tavrin::postcore {
namespace {

BloomGlareData getBloomGlareData(const ISettings& settings) {
    const auto getBool = [&settings](int id) { return settings.get(id).get<bool>() ? 1 : 0; };
    const auto getFloat = [&settings](int id) { return settings.get(id).get<float>(); };
    BloomGlareData data;
    data.enabled = getBool(kBloomGlareEnabledId);
    data.legacy = getBool(kBloomGlareLegacyId);
    data.bloomIntensity = getFloat(kBloomIntensityId);
    data.glareIntensity = getFloat(kGlareIntensityId);
    data.threshold = getFloat(kBloomGlareThresholdId);
    data.size = getFloat(kBloomGlareSizeId);
    data.glare = LensEffectsParams::loadGlareFromSettings(settings);
    data.aperture = LensEffectsParams::loadApertureFromSettings(settings);
    return data;
}

}  // namespace

PostProcessData getPostProcessData(const ISettings& settings) {
    return getPostProcessData(settings, {}, {});
}

PostProcessData getPostProcessData(const ISettings& settings, Pixel displaySize,
                                   const CameraData& camera) {
    const auto getFloat = [&settings](int id) { return settings.get(id).get<float>(); };
    PostProcessData data{getBloomGlareData(settings), camera, displaySize};
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
