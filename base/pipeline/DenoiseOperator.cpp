#include "base/pipeline/DenoiseOperator.h"

#include "foundation/Exception.h"
#include "services/postcore/PropertyIds.h"

#include <algorithm>
#include <string>

namespace tavrin::pipeline {
namespace {

using image::ChannelImage;
using image::ElementInfo;
using image::ElementKind;
using postcore::DenoisingMode;
using postcore::DenoisingModeFlag;
using postcore::FeatureType;

const String kName = "Pipeline_DenoiseOperator";
const String kTitle = "Denoising progress";
const String kFailure = "Denoising has failed. ";

/// Passes a denoiser's reports on.
class ErrorLogger final : public postcore::ILogger {
public:
    ErrorLogger(Function<void(const String&)> onError, Function<void(const String&)> onWarning)
        : onError_(std::move(onError)), onWarning_(std::move(onWarning)) {}

    void error(const String& text) override { onError_(text); }
    void warning(const String& text) override { onWarning_(text); }

private:
    Function<void(const String&)> onError_;
    Function<void(const String&)> onWarning_;
};

[[noreturn]] void failAsMissing(const String& element) {
    throw Exception("The image is missing \"" + element + "\" render element.");
}

bool isColor(const ElementInfo& element) {
    return element.kind == ElementKind::Rgb || element.kind == ElementKind::Rgba;
}

bool contains(const std::vector<ElementInfo>& elements, const String& name) {
    return std::ranges::find(elements, name, &ElementInfo::name) != elements.end();
}

/// Whether the image has the feature, with its variance where the mode needs that.
bool hasFeature(const std::vector<ElementInfo>& elements, FeatureType feature, DenoisingMode mode) {
    const String name = postcore::getFeatureElementName(feature);
    return contains(elements, name) &&
           (!getDenoisingModeFlags(mode).has(DenoisingModeFlag::NeedsVariances) ||
            contains(elements, image::getVarianceElementName(name)));
}

bool hasFeatures(const std::vector<ElementInfo>& elements, const std::vector<FeatureType>& features,
                 DenoisingMode mode) {
    return std::ranges::all_of(
        features, [&](FeatureType feature) { return hasFeature(elements, feature, mode); });
}

/// The features to guide the mode by: those that it needs, whether the image has them or not, and
/// the others that the image has.
std::vector<FeatureType> chooseFeatures(const std::vector<ElementInfo>& elements,
                                        DenoisingMode mode) {
    std::vector<FeatureType> features = postcore::getDenoisingFeatures(mode);
    if (!hasFeatures(elements, features, mode)) {
        std::erase(features, FeatureType::HairIds);
    }
    for (const FeatureType feature : postcore::getOptionalDenoisingFeatures(mode)) {
        if (contains(elements, postcore::getFeatureElementName(feature))) {
            features.push_back(feature);
        }
    }
    return features;
}

}  // namespace

void DenoiseOperator::denoise() {
    AsyncMixin::run(kName);
}

std::vector<ElementInfo> DenoiseOperator::getDenoiseCapableElements(
    const ElementFilter& filter) const {
    std::vector<ElementInfo> elements = input().getElements();
    std::erase_if(elements, [&](const ElementInfo& element) {
        return !image::isDenoiseCapable(element) || !filter(element);
    });
    return elements;
}

std::vector<ElementInfo> DenoiseOperator::getNotDenoiseCapableElements(
    const ElementFilter& filter) const {
    std::vector<ElementInfo> elements = input().getElements();
    std::erase_if(elements, [&](const ElementInfo& element) {
        return !isColor(element) || element.has(image::kAuxiliaryElement) ||
               element.has(image::kDenoisableElement) || !filter(element);
    });
    return elements;
}

std::vector<DenoisingMode> DenoiseOperator::getAvailableDenoisingModes() const {
    std::vector<DenoisingMode> modes = {DenoisingMode::HighQuality, DenoisingMode::FirefliesOnly,
                                        DenoisingMode::NvidiaGpuAi, DenoisingMode::IntelAi};
    const std::vector<ElementInfo> elements = input().getElements();
    std::erase_if(modes, [&](DenoisingMode mode) {
        std::vector<FeatureType> features = postcore::getDenoisingFeatures(mode);
        std::erase(features, FeatureType::HairIds);
        return !hasFeatures(elements, features, mode);
    });
    return modes;
}

std::vector<ElementInfo> DenoiseOperator::getElements() const {
    std::vector<ElementInfo> elements = getDenoiseCapableElements([](const ElementInfo& element) {
        return element.has(image::kSelectedForDenoising) || element.has(image::kHasDenoisedVariant);
    });
    for (ElementInfo& element : elements) {
        if (find(element.name)) {
            element.flags |= image::kHasDenoisedVariant;
        }
    }
    return elements;
}

Optional<BitmapImpl<Rgb>> DenoiseOperator::computeRgbRegion(const Request& request) {
    if (image::isDenoisedElementName(request.element)) {
        return {};
    }
    const auto denoised = find(request.element);
    if (!denoised) {
        Request stored = request;
        stored.element = image::getDenoisedElementName(request.element);
        return requestRgb(stored);
    }
    const auto& [element, region, scale, flags] = request;
    const Pixel size = denoised->getDataWindow().size();
    if (!Bucket{0, 0, size.x, size.y}.contains(region)) {
        return {};
    }
    return denoised->hasElement({element, ElementKind::Rgba, 0})
               ? denoised->getRgbRegionWithAlpha(element, region, scale)
               : denoised->getRgbRegion(element, region, scale);
}

void DenoiseOperator::update() {
    try {
        clear();
        tellStart(kTitle);
        tellProgress(0.0f);
        run(makeJob());
    } catch (const std::exception& exception) {
        tellError(kFailure + exceptionToString(exception));
    }
}

DenoiseOperator::Job DenoiseOperator::makeJob() const {
    Job job;
    job.mode = DenoisingMode(settings().get(postcore::kDenoiseModeId).get<int>());
    if (!getDenoisingModeFlags(job.mode).has(DenoisingModeFlag::Usable)) {
        throw Exception("Denoising is not enabled. You have to select the denoise mode first.");
    }
    job.revision = getRevision();
    job.elements = getDenoiseCapableElements(
        [](const ElementInfo& element) { return element.has(image::kSelectedForDenoising); });
    if (job.elements.empty()) {
        throw Exception(
            "There are not selected any denoisable render elements to be denoised. You need to "
            "select some first.");
    }
    return job;
}

void DenoiseOperator::run(const Job& job) {
    checkPassCounts(job.mode);
    ErrorLogger logger([this](const String& text) { tellError(text); },
                       [this](const String& text) { tellWarning(text); });
    const auto backend =
        postcore::OidnBackend(settings().get(postcore::kDenoiseBackendId).get<int>());
    const auto denoiser = createDenoiser_(job.mode, Scheduler::highPriorityInstance(), logger,
                                          pullData(job.mode), backend);
    if (!denoiser) {
        return;
    }
    for (std::size_t i = 0; i < job.elements.size(); ++i) {
        denoiseElement(job, i, *denoiser);
    }
    tellProgress(1.0f);
    tellFinish({});
}

void DenoiseOperator::checkPassCounts(DenoisingMode mode) const {
    const Pixel size = getDataWindow().size();
    const auto passes = requestMono({image::kWeightsElement, {0, 0, size.x, size.y}, 1.0f, {}});
    if (!passes) {
        failAsMissing(image::kWeightsElement);
    }
    const int required = postcore::getRequiredPassCount(mode);
    const auto isEnough = [required](float count) { return count >= float(required); };
    if (std::ranges::none_of(passes->pixels(), isEnough)) {
        throw Exception("No part of the image has been rendered with at least " +
                        String::fromUtf8(std::to_string(required)) +
                        (required == 1 ? " pass" : " passes"));
    }
}

postcore::DenoisingData DenoiseOperator::pullData(DenoisingMode mode) const {
    postcore::DenoisingData data;
    data.sensitivity = settings().get(postcore::kDenoiseSensitivityId).get<float>();
    data.fireflySensitivity = settings().get(postcore::kDenoiseFireflySensitivityId).get<float>();
    const std::vector<ElementInfo> elements = input().getElements();
    for (const FeatureType feature : chooseFeatures(elements, mode)) {
        const String name = postcore::getFeatureElementName(feature);
        const String variance = image::getVarianceElementName(name);
        data.features.push_back({feature, pull(name), {}});
        if (contains(elements, variance)) {
            data.features.back().variance = pull(variance);
        }
    }
    return data;
}

BitmapImpl<Rgb> DenoiseOperator::pull(const String& element) const {
    const Pixel size = getDataWindow().size();
    auto pixels = requestRgb({element, {0, 0, size.x, size.y}, 1.0f, {}});
    if (!pixels) {
        failAsMissing(element);
    }
    return *std::move(pixels);
}

void DenoiseOperator::denoiseElement(const Job& job, std::size_t index,
                                     postcore::IDenoiser& denoiser) {
    if (!isWanted(job)) {
        return;
    }
    const ElementInfo& element = job.elements[index];
    const BitmapImpl<Rgb> color = pull(element.name);
    const BitmapImpl<Rgb> variance = pull(image::getVarianceElementName(element.name));
    const auto pixels = denoiser.denoise(color, variance, [&](float fraction) {
        tellProgress((float(index) + fraction) / float(job.elements.size()));
        return isWanted(job);
    });
    if (pixels) {
        keep(job, element, *pixels);
    }
}

void DenoiseOperator::keep(const Job& job, const ElementInfo& element,
                           const BitmapImpl<Rgb>& pixels) {
    auto image = std::make_shared<ChannelImage>(getDisplayWindow(), getDataWindow(), 1.0f);
    image->addElement(element);
    image->fitChannelsToDataWindow();
    if (element.kind == ElementKind::Rgba) {
        image->setRgbWithAlpha(element, pixels);
    } else {
        image->setRgb(element, pixels);
    }
    const std::lock_guard lock(resultMutex_);
    result_[element.name] = std::move(image);
    resultRevision_ = job.revision;
}

bool DenoiseOperator::isWanted(const Job& job) const {
    // Pixels of another image, or another selection, would not be what was asked for.
    return !isStopping() && getRevision() == job.revision;
}

SharedPtr<const ChannelImage> DenoiseOperator::find(const String& element) const {
    const std::lock_guard lock(resultMutex_);
    dropStaleResult();
    const auto found = result_.find(element);
    return found == result_.end() ? nullptr : found->second;
}

void DenoiseOperator::clear() {
    const std::lock_guard lock(resultMutex_);
    result_.clear();
    resultRevision_ = kNoRevision;
}

void DenoiseOperator::dropStaleResult() const {
    if (!result_.empty() && getRevision() > resultRevision_) {
        result_.clear();
        resultRevision_ = kNoRevision;
    }
}

}  // namespace tavrin::pipeline
