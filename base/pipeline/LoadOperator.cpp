#include "base/pipeline/LoadOperator.h"

#include "base/image/Exr.h"
#include "base/image/ImageSettings.h"
#include "base/settings/PropertyHelp.h"
#include "foundation/Exception.h"
#include "foundation/platform/Memory.h"

#include <algorithm>
#include <chrono>
#include <set>

namespace tavrin::pipeline {
namespace {

using image::ChannelImage;
using image::ElementInfo;
using image::ElementKind;

const String kName = "Pipeline_LoadOperator";
const String kTitle = "Loading progress";
const String kSuffix = "_Post.";
const String kDefaultExtension = "txr";

/// A stamp for what is new after `previous`, also when the clock has not moved since.
std::int64_t makeRevision(std::int64_t previous) {
    using namespace std::chrono;
    const auto now = duration_cast<seconds>(system_clock::now().time_since_epoch()).count();
    return previous == IOperator::kNoRevision ? now : std::max<std::int64_t>(now, previous + 1);
}

void checkNoneIsVirtual(const std::vector<ElementInfo>& elements) {
    for (const ElementInfo& element : elements) {
        if (element.name == image::kLightMixInteractive ||
            element.name == image::kBloomGlareInteractive) {
            throw Exception("Render element \"" + element.name +
                            "\" is expected to be virtual and computed in real time. It shall not "
                            "be physically stored.");
        }
    }
}

/// A region may have been chosen for the image before.
bool isWithin(const ChannelImage& image, const Bucket& region) {
    const Pixel size = image.getDataWindow().size();
    return Bucket{0, 0, size.x, size.y}.contains(region);
}

String suggestSavePath(const Path& path) {
    const String text = path.native();
    const std::size_t dot = text.findLast(".");
    const bool hasDot = dot != String::kNotFound;
    const String stem = hasDot ? text.substring(0, dot) : text;
    const String extension = hasDot ? text.substring(dot + 1) : String();
    if (stem.isEmpty()) {
        return {};
    }
    return stem + kSuffix + (extension.isEmpty() ? kDefaultExtension : extension);
}

}  // namespace

LoadOperator::LoadOperator()
    : loader_([](const Path& path) { return image::ExrLoader().load(path); }) {}

LoadOperator::~LoadOperator() {
    shutDown();
    // The colour mapping lives on and must not tell its errors here any more.
    auto context = colorMapping().getContext();
    context.errorCallback = {};
    colorMapping().setContext(std::move(context));
}

void LoadOperator::load(std::vector<image::Weight> weights, std::vector<Path> paths) {
    {
        const std::lock_guard lock(requestMutex_);
        requested_ = {std::move(weights), std::move(paths)};
    }
    run(kName);
}

void LoadOperator::updateSettings(const std::vector<int>& ids) {
    // Not under the lock of the result: an observer of the settings may be waiting for that one on
    // another thread, while it keeps this thread from writing settings.
    const std::lock_guard lock(settingsMutex_);
    const ChannelImage none;
    const SharedPtr<const ChannelImage> image = getImage();
    image::readSettings(image ? *image : none, ids, settings(), colorMapping(),
                        [this](const String& text) { tellWarning(text); });
}

void LoadOperator::setElementsFlag(image::ElementFlag flag, const std::vector<String>& names) {
    const std::set<String> named(names.begin(), names.end());
    const std::lock_guard lock(resultMutex_);
    for (ElementInfo& element : loaded_.elements) {
        element.flags = named.contains(element.name) ? element.flags | flag : element.flags & ~flag;
    }
    if (loaded_.image) {
        loaded_.revision = makeRevision(loaded_.revision);
    }
}

SharedPtr<const ChannelImage> LoadOperator::getImage() const {
    const std::lock_guard lock(resultMutex_);
    return loaded_.image;
}

std::vector<Path> LoadOperator::getLoadedPaths() const {
    const std::lock_guard lock(resultMutex_);
    return loaded_.job.paths;
}

std::vector<image::Weight> LoadOperator::getLoadedWeights() const {
    const std::lock_guard lock(resultMutex_);
    return loaded_.job.weights;
}

String LoadOperator::getSuggestedSavePath() const {
    const std::lock_guard lock(resultMutex_);
    return loaded_.suggestedSavePath;
}

std::int64_t LoadOperator::getRevision() const {
    const std::lock_guard lock(resultMutex_);
    return loaded_.revision;
}

std::vector<ElementInfo> LoadOperator::getElements() const {
    const std::lock_guard lock(resultMutex_);
    return loaded_.elements;
}

Bucket LoadOperator::getDisplayWindow() const {
    const SharedPtr<const ChannelImage> image = getImage();
    return image ? image->getDisplayWindow() : Bucket();
}

Bucket LoadOperator::getDataWindow() const {
    const SharedPtr<const ChannelImage> image = getImage();
    return image ? image->getDataWindow() : Bucket();
}

Optional<postcore::RenderElementInfo> LoadOperator::getElementInfo(const String& element) const {
    const std::lock_guard lock(resultMutex_);
    const auto* info = image::findMatchingElementCoreInfo(loaded_.elementInfos,
                                                          {element, ElementKind::Unsupported, 0});
    return info != nullptr ? Optional<postcore::RenderElementInfo>(*info) : std::nullopt;
}

postcore::CameraData LoadOperator::getCameraData() const {
    const SharedPtr<const ChannelImage> image = getImage();
    return image ? image::readCameraData(*image) : postcore::CameraData();
}

Optional<BitmapImpl<Rgb>> LoadOperator::computeRgbRegion(const Request& request) {
    const SharedPtr<const ChannelImage> image = getImage();
    if (!image || !isWithin(*image, request.region)) {
        return {};
    }
    const auto& [element, region, scale, flags] = request;
    if (image->hasElement({element, ElementKind::Rgba, 0})) {
        return image->getRgbRegionWithAlpha(element, region, scale);
    }
    if (image->hasElement({element, ElementKind::Rgb, 0})) {
        return image->getRgbRegion(element, region, scale);
    }
    return {};
}

Optional<BitmapImpl<float>> LoadOperator::computeMonoRegion(const Request& request) {
    const SharedPtr<const ChannelImage> image = getImage();
    if (!image || !isWithin(*image, request.region) || !image->hasChannel<float>(request.element)) {
        return {};
    }
    return image->getMonoRegion(request.element, request.region, request.scale);
}

void LoadOperator::update() {
    computeWithProgress(kTitle, [this] {
        Job job;
        {
            const std::lock_guard lock(requestMutex_);
            job = requested_;
        }
        install(perform(std::move(job)));
        updateSettings(settings::allPropertyIds());
        return String();
    });
    // Of the image before and of the images that have been merged. Nobody needs to wait for it.
    platform::releaseUnusedPixelMemory();
}

LoadOperator::Loaded LoadOperator::perform(Job job) const {
    if (job.paths.empty()) {
        throw Exception("At least one input image path is expected.");
    }
    job.weights = normalizeWeights(std::move(job.weights), job.paths.size());
    Loaded loaded;
    ChannelImage image;
    if (job.paths.size() == 1) {
        job.weights.clear();
        loaded.suggestedSavePath = suggestSavePath(job.paths.front());
        image = loadImage(loader_, job.paths.front());
    } else {
        image = loadMerged(loader_, job.paths, job.weights,
                           {[this](float fraction) { tellProgress(fraction); },
                            [this](const String& text) { tellWarning(text); }});
    }
    blackenNans(image);
    loaded.elements = image.getElements();
    checkNoneIsVirtual(loaded.elements);
    loaded.elementInfos = image.getRenderElementInfos();
    loaded.image = std::make_shared<const ChannelImage>(std::move(image));
    loaded.job = std::move(job);
    return loaded;
}

void LoadOperator::install(Loaded loaded) {
    const std::lock_guard lock(resultMutex_);
    loaded.revision = makeRevision(loaded_.revision);
    // What was there ends with the argument, after the lock.
    std::swap(loaded_, loaded);
}

}  // namespace tavrin::pipeline
