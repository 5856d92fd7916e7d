#include "base/pipeline/TxrSaving.h"

#include "base/image/AttributeNames.h"
#include "base/image/Exr.h"
#include "base/image/ImageSettings.h"
#include "base/pipeline/SavingTexts.h"
#include "base/settings/PropertyHelp.h"
#include "foundation/Exception.h"
#include "foundation/FatalError.h"
#include "services/postcore/LegacyToneMapping.h"

#include <algorithm>
#include <set>
#include <vector>

namespace tavrin::pipeline {
namespace {

using image::ChannelImage;
using image::ElementInfo;
using image::ElementKind;
using postcore::RenderElementInfo;
using RenderElementInfos = std::vector<RenderElementInfo>;

/// No attribute where nothing is said.
void setElementInfos(const RenderElementInfos& infos, ChannelImage& image) {
    if (!infos.empty()) {
        image.setRenderElementInfos(infos);
    }
}

String keepName(const ElementInfo& element) {
    return element.name;
}

/// What the saved image says anew, or no longer: it has been edited since it was rendered, and its
/// tone mapping stands for the parameters of older programs.
bool isReplacedBySaving(const String& attribute) {
    static const std::vector<String> kReplaced = [] {
        std::vector<String> names = {image::kTxrMarkerAttribute, image::kRaysPerSampleStatistic,
                                     image::kElementsAttribute, image::kLightMixElementsAttribute};
        names.insert(names.end(), image::kSummedStatistics.begin(), image::kSummedStatistics.end());
        for (const auto& descriptor : postcore::getLegacyTonemappingDescriptors()) {
            names.push_back(postcore::getPropertyExrName(descriptor));
        }
        return names;
    }();
    return std::ranges::find(kReplaced, attribute) != kReplaced.end();
}

/// What an image holds beside its elements: the renderer's own remarks in the header, whole
/// numbers for each pixel, and channels that form no element we know.
void copyRest(const ChannelImage& source, ChannelImage& target) {
    for (const auto& [name, attribute] : source.getAttributes()) {
        if (!target.getAttributes().contains(name) && !isReplacedBySaving(name)) {
            target.setAttribute(attribute->clone());
        }
    }
    std::set<String> unsupported;
    for (const ElementInfo& element : source.getElements()) {
        if (element.kind == ElementKind::Unsupported) {
            unsupported.insert(element.name);
        }
    }
    for (const auto& [name, channel] : source.getChannels()) {
        if (!source.hasChannel<float>(name) ||
            unsupported.contains(image::splitChannelName(name).element)) {
            target.setChannel(channel->clone());
        }
    }
}

}  // namespace

TxrSaving::TxrSaving()
    : saver_([](const ChannelImage& image, const Path& path) {
          return image::ExrSaver().save(image, path);
      }) {}

void TxrSaving::save(const Path& path, const Function<void()>& check,
                     const Export& exportElements) {
    computeWithProgress(kSavingTitle, [&] {
        if (path.fileName().isEmpty()) {
            throw Exception("Well-formed output image path is expected.");
        }
        check();
        const std::int64_t revision = getRevision();
        ChannelImage target(getDisplayWindow(), getDataWindow(), 1.0f);
        exportElements(target);
        if (getRevision() != revision) {
            throw Exception("The image has changed while it was being saved.");
        }
        image::writeSettings(target, settings::allPropertyIds(), settings(), colorMapping());
        throwOnFailure(saver_(target, path));
        return makeSuccessMessage(path);
    });
}

void TxrSaving::exportElements(int inputIndex, const ElementFilter& filter, const Renaming& rename,
                               ChannelImage& target) const {
    RenderElementInfos infos = target.getRenderElementInfos();
    for (const ElementInfo& element : input(inputIndex).getElements()) {
        if (element.kind == ElementKind::Unsupported || !filter(element)) {
            continue;
        }
        const ElementInfo exported{rename(element), element.kind, element.flags};
        exportPixels(inputIndex, element, exported, target);
        if (auto info = imageInfo().getElementInfo(element.name)) {
            if (exported.name != element.name) {
                auto data = info->getData();
                data.names = {exported.name, exported.name};
                info = RenderElementInfo(std::move(data));
            }
            infos.push_back(*std::move(info));
        }
    }
    setElementInfos(infos, target);
}

void TxrSaving::exportPixels(int inputIndex, const ElementInfo& element,
                             const ElementInfo& exported, ChannelImage& target) const {
    target.addElement(exported);
    target.fitChannelsToDataWindow();
    const Pixel size = target.getDataWindow().size();
    const Request request{element.name, {0, 0, size.x, size.y}, 1.0f, Control::Wait};
    const auto set = [&](const auto& pixels, const auto& setPixels) {
        // An image that has been replaced meanwhile may be of another size.
        if (!pixels || pixels->getSize() != size) {
            throw Exception(makeRetrieveFailure(element));
        }
        setPixels(*pixels);
    };
    switch (element.kind) {
        case ElementKind::Mono:
            return set(pullMono(request, inputIndex),
                       [&](const auto& pixels) { target.setMono(exported, pixels); });
        case ElementKind::Rgb:
            return set(pullRgb(request, inputIndex),
                       [&](const auto& pixels) { target.setRgb(exported, pixels); });
        case ElementKind::Rgba:
            return set(pullRgb(request, inputIndex),
                       [&](const auto& pixels) { target.setRgbWithAlpha(exported, pixels); });
        case ElementKind::Unsupported:
            break;
    }
    fatalError("An element of an unsupported kind cannot be exported.");
}

void TxrSaving::exportWholeImage(ChannelImage& target) const {
    exportElements(0, image::isStoredInTxrByDefault, keepName, target);
    exportElements(
        1,
        [&target](const ElementInfo& element) {
            return element.has(image::kHasDenoisedVariant) && target.hasElement(element);
        },
        [](const ElementInfo& element) { return image::getDenoisedElementName(element.name); },
        target);
    RenderElementInfos infos = target.getRenderElementInfos();
    for (const String& name : {image::kLightMixInteractive, image::kBloomGlareInteractive}) {
        if (auto info = imageInfo().getElementInfo(name)) {
            infos.push_back(*std::move(info));
        }
    }
    setElementInfos(infos, target);
    if (const auto loaded = imageInfo().getImage()) {
        copyRest(*loaded, target);
    }
}

void TxrSaving::copyCamera(ChannelImage& target) const {
    const auto loaded = imageInfo().getImage();
    for (const String& name : {image::kCameraTypeAttribute, image::kCameraVrAttribute}) {
        if (loaded && loaded->hasAttribute<int>(name)) {
            target.setAttribute(name, loaded->getAttribute<int>(name));
        }
    }
}

}  // namespace tavrin::pipeline
