#include "base/pipeline/BloomGlareOperator.h"

#include "base/image/RegionSampling.h"
#include "base/image/RowLoop.h"
#include "base/pipeline/VirtualElements.h"
#include "services/postcore/PostProcessData.h"
#include "services/postcore/PropertyIds.h"

#include <algorithm>
#include <utility>

namespace tavrin::pipeline {
namespace {

using image::ChannelImage;
using image::ElementInfo;
using image::ElementKind;

const String kName = "Pipeline_BloomGlare";
const String kTitle = "Bloom and Glare progress";

/// Whether lights in the element glow.
bool isApplicable(const ElementInfo& element) {
    const bool isColor = element.kind == ElementKind::Rgb || element.kind == ElementKind::Rgba;
    const bool isLight = element.has(image::kLightSelectElement) ||
                         element.name == image::kBeautyElement ||
                         element.name == image::kLightMixInteractive ||
                         element.name == image::kBloomGlareInteractive;
    return isColor && isLight && !(element.has(image::kNoBloom) && element.has(image::kNoGlare));
}

/// From pixels to what the core computes with, whose rows run from the lowest to the highest.
BitmapImpl<CompressedRgb> toBottomUp(const BitmapImpl<Rgb>& pixels) {
    BitmapImpl<CompressedRgb> result(pixels.getWidth(), pixels.getHeight());
    image::forEachRow(pixels.getSize(), [&](int y) {
        std::ranges::transform(pixels.row(y), result.row(pixels.getHeight() - 1 - y).begin(),
                               [](const Rgb& pixel) {
                                   return CompressedRgb{pixel.r, pixel.g, pixel.b};
                               });
    });
    return result;
}

BitmapImpl<Rgb> toTopDown(const BitmapImpl<CompressedRgb>& pixels) {
    BitmapImpl<Rgb> result(pixels.getWidth(), pixels.getHeight());
    image::forEachRow(pixels.getSize(), [&](int y) {
        std::ranges::transform(pixels.row(y), result.row(pixels.getHeight() - 1 - y).begin(),
                               [](const CompressedRgb& pixel) {
                                   return Rgb{pixel.r, pixel.g, pixel.b, 0.0f};
                               });
    });
    return result;
}

}  // namespace

BloomGlareOperator::BloomGlareOperator()
    : compute_([this](auto flags, auto& bitmap, const auto& data, const auto& camera) {
          return computeByCore(flags, bitmap, data, camera);
      }),
      progress_(TaskProgress([this](float fraction) { tellProgress(fraction); },
                             [this] { return isAbortable_ && isStopping(); })) {}

void BloomGlareOperator::setElement(const ElementInfo& element) {
    {
        const std::lock_guard lock(requestMutex_);
        requested_ = element;
    }
    run(kName);
}

void BloomGlareOperator::refresh() {
    run(kName);
}

std::vector<ElementInfo> BloomGlareOperator::getElements() const {
    std::vector<ElementInfo> elements = input().getElements();
    std::erase_if(elements, [](const ElementInfo& element) { return !isApplicable(element); });
    elements.push_back(makeVirtualElement(image::kBloomGlareInteractive, imageInfo()));
    return elements;
}

Optional<BitmapImpl<Rgb>> BloomGlareOperator::computeRgbRegion(const Request& request) {
    Result result = getResult();
    if (request.flags.has(Control::Wait) &&
        (!isFor(result, request.element) || result.revision < getRevision())) {
        result = computeNow(request.element);
    }
    if (!isFor(result, request.element)) {
        if (request.element != image::kBloomGlareInteractive) {
            return {};
        }
        const Pixel size = image::getSampledSize(request.region.size(), request.scale);
        BitmapImpl<Rgb> black(size.x, size.y);
        std::ranges::fill(black.pixels(), Rgb());
        return black;
    }
    if (result.revision < getRevision()) {
        run(kName);
        return {};
    }
    return result.layer->getRgbRegion(image::kBeautyElement, request.region, request.scale);
}

void BloomGlareOperator::update() {
    ElementInfo element;
    {
        const std::lock_guard lock(requestMutex_);
        element = requested_;
    }
    try {
        const std::lock_guard lock(computeMutex_);
        isAbortable_ = true;
        computeFor(element);
    } catch (const std::exception& exception) {
        tellError(exceptionToString(exception));
    }
}

BloomGlareOperator::Result BloomGlareOperator::computeNow(const String& name) {
    const std::lock_guard lock(computeMutex_);
    const Result result = getResult();
    if (isFor(result, name) && result.revision >= getRevision()) {
        return result;  // computed while this thread waited for its turn
    }
    const std::vector<ElementInfo> elements = getElements();
    const auto found = std::ranges::find(elements, name, &ElementInfo::name);
    const SilentScope silent(*this);
    isAbortable_ = false;
    computeFor(found == elements.end() ? ElementInfo{name} : *found);
    return getResult();  // nobody else computes
}

void BloomGlareOperator::computeFor(const ElementInfo& element) {
    const std::int64_t revision = getRevision();
    const Pixel size = getDataWindow().size();
    Optional<BitmapImpl<Rgb>> pixels;
    if (isOn() && isApplicable(element)) {
        const bool isLayer = element.name == image::kBloomGlareInteractive;
        pixels = requestRgb(
            {isLayer ? image::kBeautyElement : element.name, {0, 0, size.x, size.y}, 1.0f, {}});
    }
    if (!pixels) {
        clear();
        return;
    }
    tellStart(kTitle);
    tellProgress(0.0f);
    BitmapImpl<CompressedRgb> light = toBottomUp(*pixels);
    pixels.reset();
    const postcore::BloomGlareData data = getData(element);
    if (compute_(postcore::ImageOperatorsFlag::Parallel, light, data,
                 imageInfo().getCameraData())) {
        keep(element.name, revision, toTopDown(light));
    }
    tellProgress(1.0f);
    tellFinish({});
}

bool BloomGlareOperator::isOn() const {
    const postcore::BloomGlareData data = postcore::getPostProcessData(settings()).bloomGlare;
    return data.enabled != 0 && (data.bloomIntensity > 0.0f || data.glareIntensity > 0.0f);
}

postcore::BloomGlareData BloomGlareOperator::getData(const ElementInfo& element) const {
    const postcore::PostProcessData settingsData = postcore::getPostProcessData(settings());
    postcore::BloomGlareData data = settingsData.bloomGlare;
    if (element.has(image::kNoBloom)) {
        data.bloomIntensity = 0.0f;
    }
    if (element.has(image::kNoGlare)) {
        data.glareIntensity = 0.0f;
    }
    // The threshold is meant as bright as the user sees the picture, whatever the exposure.
    const float grey = std::max(data.threshold, 0.0f);
    const Rgb light = colorMapping().undoExposure(
        postcore::getCommonColorMappingContext(settingsData), {grey, grey, grey, grey});
    data.threshold = std::max((light.r + light.g + light.b) / 3.0f, 0.0f);
    return data;
}

bool BloomGlareOperator::computeByCore(Flags<postcore::ImageOperatorsFlag> flags,
                                       BitmapImpl<CompressedRgb>& bitmap,
                                       const postcore::BloomGlareData& data,
                                       const postcore::CameraData& camera) {
    progress_.setTotalSteps(postcore::getBloomGlareTotalSteps(data, camera));
    progress_.setCurrentStep(0);
    return renderer_.render(flags, bitmap, data, progress_);
}

BloomGlareOperator::Result BloomGlareOperator::getResult() const {
    const std::lock_guard lock(resultMutex_);
    return result_;
}

void BloomGlareOperator::keep(const String& element, std::int64_t revision,
                              const BitmapImpl<Rgb>& pixels) {
    const Bucket window{0, 0, pixels.getWidth(), pixels.getHeight()};
    auto layer = std::make_shared<ChannelImage>(window, window, 1.0f);
    const ElementInfo beauty{image::kBeautyElement, ElementKind::Rgb};
    layer->addElement(beauty);
    layer->fitChannelsToDataWindow();
    layer->setRgb(beauty, pixels);
    const std::lock_guard lock(resultMutex_);
    result_ = {std::move(layer), element, revision};
}

void BloomGlareOperator::clear() {
    {
        const std::lock_guard lock(resultMutex_);
        if (!result_.layer) {
            return;
        }
        // Those who are told of the end find it gone; those who draw meanwhile hold it themselves.
        result_ = {};
    }
    tellStart({});
    tellProgress(0.0f);
    tellProgress(1.0f);
    tellFinish({});
}

}  // namespace tavrin::pipeline
