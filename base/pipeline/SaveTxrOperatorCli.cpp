#include "base/pipeline/SaveTxrOperatorCli.h"

#include "base/pipeline/SeparateFiles.h"
#include "foundation/Exception.h"

#include <algorithm>
#include <utility>

namespace tavrin::pipeline {
namespace {

using image::ChannelImage;
using image::ElementInfo;

const String kAllElements = "*";

/// The elements that merging and denoising need, whatever the beauty is.
const std::vector<String>& getCompanions() {
    static const std::vector<String> kNames = [] {
        std::vector<String> names = {image::kWeightsElement};
        for (const char* feature : {"VisibleNormals", "VisibleDiffuse", "Hybrid", "HairIds"}) {
            names.push_back(feature);
            names.push_back(image::getVarianceElementName(feature));
        }
        return names;
    }();
    return kNames;
}

}  // namespace

void SaveTxrOperatorCli::save(const String& selector, const Path& path) {
    {
        const std::lock_guard lock(mutex_);
        selector_ = selector;
        path_ = path;
    }
    run("Pipeline_SaveTxrOperator");
}

std::vector<ElementInfo> SaveTxrOperatorCli::getSavableElements(const ElementFilter& filter) const {
    return pipeline::getSavableElements(input(), filter);
}

void SaveTxrOperatorCli::update() {
    String selector;
    Path path;
    {
        const std::lock_guard lock(mutex_);
        selector = selector_;
        path = path_;
    }
    TxrSaving::save(
        path, [&] { checkSelector(selector); },
        [&](ChannelImage& target) {
            if (selector == kAllElements) {
                exportWholeImage(target);
            } else {
                exportAsBeauty(image::getInternalName(selector), target);
            }
        });
}

void SaveTxrOperatorCli::checkSelector(const String& selector) const {
    if (!getSavableElements(ElementSelector(selector).toFilter()).empty()) {
        return;
    }
    if (selector == kAllElements) {
        throw Exception("There are no render elements that can be saved to Tavrin EXR.");
    }
    throw Exception("Render element \"" + image::getInternalName(selector) +
                    "\" cannot be saved to Tavrin EXR.\nThe element either does not exist, or "
                    "saving such element alone is not supported.");
}

void SaveTxrOperatorCli::exportAsBeauty(const String& name, ChannelImage& target) const {
    exportElements(
        0,
        [](const ElementInfo& element) {
            return std::ranges::find(getCompanions(), element.name) != getCompanions().end();
        },
        &ElementInfo::name, target);
    exportElements(
        0,
        [&name](const ElementInfo& element) {
            return element.name == name || element.name == image::getVarianceElementName(name);
        },
        [](const ElementInfo& element) {
            return image::isVarianceElementName(element.name)
                       ? image::getVarianceElementName(image::kBeautyElement)
                       : image::kBeautyElement;
        },
        target);
    exportElements(
        1,
        [&name](const ElementInfo& element) {
            return element.name == name && element.has(image::kHasDenoisedVariant);
        },
        [](const ElementInfo&) { return image::getDenoisedElementName(image::kBeautyElement); },
        target);
    copyCamera(target);
}

}  // namespace tavrin::pipeline
