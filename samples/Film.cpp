#include "samples/Film.h"

#include <cmath>

namespace tavrin::samples {
namespace {

const String kNormals = "VisibleNormals";
const String kAlbedo = "VisibleDiffuse";
const String kMask = "MaskObjects";
const String kDepth = "ZDepth";

// This renderer's own numbers for the kinds of its data elements.
constexpr postcore::ElementTypeWrapper kNormalsType{3001};
constexpr postcore::ElementTypeWrapper kAlbedoType{3002};
constexpr postcore::ElementTypeWrapper kMaskType{3003};
constexpr postcore::ElementTypeWrapper kDepthType{3004};

constexpr const char* kComponents[] = {"R", "G", "B"};

std::vector<String> measuredElements() {
    std::vector<String> elements{image::kBeautyElement, kNormals, kAlbedo};
    elements.insert(elements.end(), kLightNames.begin(), kLightNames.end());
    return elements;
}

std::vector<postcore::RenderElementInfo> describeElements() {
    using Flag = postcore::RenderElementFlag;
    std::vector<postcore::RenderElementInfo> infos;
    for (const char* light : kLightNames) {
        infos.push_back(postcore::RenderElementInfo({postcore::kLightSelectType,
                                                     {String("Light: ") + light, light},
                                                     {Flag::AllowBloom, Flag::AllowGlare}}));
    }
    const auto addData = [&](postcore::ElementTypeWrapper type, const char* title,
                             const String& name) {
        infos.push_back(postcore::RenderElementInfo({type, {title, name}, Flag::NoPostProcessing}));
    };
    addData(kNormalsType, "Visible normals", kNormals);
    addData(kAlbedoType, "Visible diffuse colour", kAlbedo);
    addData(kMaskType, "Object mask", kMask);
    addData(kDepthType, "Depth", kDepth);
    return infos;
}

void addColor(image::ChannelImage& image, const String& element) {
    for (const char* component : kComponents) {
        image.addChannel(image::joinChannelName(element, component));
    }
}

}  // namespace

Film::Film(Pixel size) : size_(size), image_({0, 0, size.x, size.y}, {0, 0, size.x, size.y}, 1.0f) {
    for (const String& element : measuredElements()) {
        addColor(image_, element);
        addColor(image_, image::getVarianceElementName(element));
    }
    addColor(image_, kMask);
    for (const String& channel : {image::kAlphaElement, kDepth, image::kWeightsElement}) {
        image_.addChannel(channel);
    }
    image_.fitChannelsToDataWindow();

    beauty_ = getMeasuredPlanes(image::kBeautyElement);
    for (std::size_t light = 0; light < lights_.size(); ++light) {
        lights_[light] = getMeasuredPlanes(kLightNames[light]);
    }
    normals_ = getMeasuredPlanes(kNormals);
    albedo_ = getMeasuredPlanes(kAlbedo);
    mask_ = getPlanes(kMask);
    alpha_ = getPlane(image::kAlphaElement);
    depth_ = getPlane(kDepth);
    weights_ = getPlane(image::kWeightsElement);
}

Film::Planes Film::getPlanes(const String& element) {
    Planes planes{};
    for (std::size_t i = 0; i < planes.size(); ++i) {
        planes[i] = getPlane(image::joinChannelName(element, kComponents[i]));
    }
    return planes;
}

Film::MeasuredPlanes Film::getMeasuredPlanes(const String& element) {
    return {getPlanes(element), getPlanes(image::getVarianceElementName(element))};
}

void Film::store(Pixel pixel, const PixelStatistics& statistics) {
    const auto index = static_cast<std::size_t>(pixel.y) * static_cast<std::size_t>(size_.x) +
                       static_cast<std::size_t>(pixel.x);
    const auto storeMeasured = [index](const MeasuredPlanes& planes, const Moments<3>& moments) {
        for (std::size_t i = 0; i < 3; ++i) {
            planes.mean[i][index] = static_cast<float>(moments.getMean(i));
            planes.variance[i][index] = static_cast<float>(moments.getVarianceOfMean(i));
        }
    };
    storeMeasured(beauty_, statistics.getBeauty());
    storeMeasured(normals_, statistics.getNormal());
    storeMeasured(albedo_, statistics.getAlbedo());
    for (std::size_t light = 0; light < lights_.size(); ++light) {
        storeMeasured(lights_[light], statistics.getLight(light));
    }
    // The stored lights shall add up to the stored beauty to the last bit.
    for (std::size_t i = 0; i < 3; ++i) {
        float sum = 0;
        for (const MeasuredPlanes& light : lights_) {
            sum += light.mean[i][index];
        }
        beauty_.mean[i][index] = sum;
        mask_[i][index] = static_cast<float>(statistics.getMask(i));
    }
    alpha_[index] = static_cast<float>(statistics.getCoverage());
    depth_[index] = static_cast<float>(statistics.getDepth());
    weights_[index] = static_cast<float>(statistics.getCount());
}

image::ChannelImage Film::finish(const RenderRecord& record) {
    const double samples = double(record.samples) * size_.x * size_.y;
    const double raysPerSecond = record.seconds > 0 ? double(record.rays) / record.seconds : 0.0;
    image_.setAttribute("tavrin.istavrinexr", 1);
    image_.setAttribute("tavrin.stats.passes", record.samples);
    image_.setAttribute("tavrin.stats.time", static_cast<int>(std::ceil(record.seconds)));
    image_.setAttribute("tavrin.stats.rayspersecond",
                        static_cast<int>(std::min(raysPerSecond, 2e9)));
    image_.setAttribute("tavrin.stats.rayspersample",
                        static_cast<float>(double(record.rays) / samples));
    image_.setAttribute("tavrin.camera.type", 1);
    image_.setAttribute("tavrin.camera.isvrenabled", 0);
    image_.setRenderElementInfos(describeElements());
    return std::move(image_);
}

}  // namespace tavrin::samples
