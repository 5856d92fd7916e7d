#include "base/image/AttributeNames.h"
#include "base/image/ChannelImage.h"
#include "foundation/Exception.h"
#include "foundation/StringArray.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>

namespace tavrin::image {
namespace {

using postcore::RenderElementFlag;
using postcore::RenderElementInfo;
using RenderElementInfos = std::vector<RenderElementInfo>;

const std::vector<String> kColorComponents = {"R", "G", "B", "A"};
const std::vector<String> kAuxiliaryColorElements = {"VisibleNormals", "VisibleDiffuse", "Hybrid",
                                                     "HairIds", "OptixNormals"};
constexpr std::uint32_t kNoPostProcessingFlags =
    kNoColorMapping | kNoBloom | kNoGlare | kNoSharpenBlur;

bool contains(const std::vector<String>& names, const String& name) {
    return std::ranges::find(names, name) != names.end();
}

/// The components of one element; `wellFormed` is false when a channel's name is not the one that
/// the element and the component join to (".R", "Mask.").
struct ComponentGroup {
    std::vector<String> components;
    bool wellFormed = true;
};

ElementKind getKind(ComponentGroup group) {
    if (!group.wellFormed) {
        return ElementKind::Unsupported;
    }
    std::ranges::sort(group.components);
    if (group.components == std::vector<String>{"A", "B", "G", "R"}) {
        return ElementKind::Rgba;
    }
    if (group.components == std::vector<String>{"B", "G", "R"}) {
        return ElementKind::Rgb;
    }
    if (group.components == std::vector<String>{""}) {
        return ElementKind::Mono;
    }
    return ElementKind::Unsupported;
}

/// The elements that the names of the float channels form, without flags.
std::vector<ElementInfo> groupChannels(const ChannelImage& image) {
    std::map<String, ComponentGroup> groups;
    for (const auto& [name, channel] : image.getChannels()) {
        if (!image.hasChannel<float>(name)) {
            continue;
        }
        const auto [element, component] = splitChannelName(name);
        ComponentGroup& group = groups[element];
        group.components.push_back(component);
        group.wellFormed = group.wellFormed && joinChannelName(element, component) == name;
    }
    std::vector<ElementInfo> elements;
    for (auto& [name, group] : groups) {
        elements.push_back({name, getKind(std::move(group)), 0});
    }
    if (image.hasChannel<float>(kAlphaElement)) {
        elements.push_back({kAlphaElement, ElementKind::Mono, 0});
    }
    return elements;
}

/// The names of light selects with their places in the order of the metadata.
using LightSelects = std::map<String, std::size_t>;

LightSelects getLightSelects(const RenderElementInfos& infos) {
    LightSelects lights;
    for (const RenderElementInfo& info : infos) {
        if (info.getData().type == postcore::kLightSelectType) {
            lights.emplace(info.getData().names.elementName, lights.size());
        }
    }
    return lights;
}

/// The record of each name that there is one for, as findMatchingElementCoreInfo answers it: a file
/// may have thousands of elements and records.
std::map<String, const RenderElementInfo*> indexByName(const RenderElementInfos& infos) {
    std::map<String, const RenderElementInfo*> index;
    for (const String& name : {kLightMixInteractive, kBloomGlareInteractive}) {
        index[name] = findMatchingElementCoreInfo(infos, {name, ElementKind::Unsupported, 0});
    }
    for (const RenderElementInfo& info : infos) {
        index.emplace(info.getData().names.elementName, &info);
    }
    return index;
}

std::uint32_t getColorElementFlags(const String& name, const std::set<String>& elementNames,
                                   const LightSelects& lightSelects) {
    std::uint32_t flags = 0;
    if (contains(kAuxiliaryColorElements, name) || isDenoisedElementName(name) ||
        isVarianceElementName(name)) {
        flags |= kAuxiliaryElement;
    } else if (elementNames.contains(getVarianceElementName(name))) {
        flags |= kDenoisableElement | kSelectedForDenoising;
        if (elementNames.contains(getDenoisedElementName(name))) {
            flags |= kHasDenoisedVariant;
        }
    }
    if (lightSelects.contains(name)) {
        flags |= kLightSelectElement;
    }
    return flags;
}

std::uint32_t getFlags(const ElementInfo& element, const RenderElementInfo* info,
                       const std::set<String>& elementNames, const LightSelects& lightSelects) {
    std::uint32_t flags = 0;
    const bool isMono = element.kind == ElementKind::Mono;
    if (isMono && (element.name == kWeightsElement || element.name == kImportanceElement)) {
        flags |= kAuxiliaryElement;
    }
    if (element.kind == ElementKind::Rgb || element.kind == ElementKind::Rgba) {
        flags |= getColorElementFlags(element.name, elementNames, lightSelects);
    } else {
        flags |= kNoPostProcessingFlags;
    }
    if (info != nullptr) {
        const Flags<RenderElementFlag> rendererFlags = info->getData().flags;
        if (rendererFlags.has(RenderElementFlag::NoPostProcessing)) {
            flags |= kNoPostProcessingFlags;
        }
        if (!rendererFlags.has(RenderElementFlag::AllowBloom)) {
            flags |= kNoBloom;
        }
        if (!rendererFlags.has(RenderElementFlag::AllowGlare)) {
            flags |= kNoGlare;
        }
    }
    return flags;
}

/// Sets the flags of all elements and puts light selects first, in the order of the metadata.
void updateElementFlags(std::vector<ElementInfo>& elements, const RenderElementInfos& infos) {
    const LightSelects lightSelects = getLightSelects(infos);
    const auto infosByName = indexByName(infos);
    std::set<String> names;
    for (const ElementInfo& element : elements) {
        names.insert(element.name);
    }
    for (ElementInfo& element : elements) {
        const auto info = infosByName.find(element.name);
        element.flags = getFlags(element, info != infosByName.end() ? info->second : nullptr, names,
                                 lightSelects);
    }
    std::ranges::stable_sort(elements, {}, [&lightSelects](const ElementInfo& element) {
        const auto light = lightSelects.find(element.name);
        return light != lightSelects.end() ? light->second : lightSelects.size();
    });
}

/// The items of a list of elements. What is longer than any scene's is not worth the time.
std::vector<String> parseItems(const String& text) {
    constexpr std::size_t kLongestText = std::size_t{8} << 20;
    constexpr std::size_t kMostItems = 65536;
    constexpr const char* kTooLong = "Its list of render elements is too long.";
    if (text.size() > kLongestText) {
        throw Exception(kTooLong);
    }
    Result<std::vector<String>> items = Str::parseExportStringArray(text);
    if (!items) {
        throw Exception(items.error());
    }
    if (items->size() > kMostItems) {
        throw Exception(kTooLong);
    }
    return *std::move(items);
}

}  // namespace

String joinChannelName(const String& element, const String& component) {
    if (element.isEmpty() || component.isEmpty()) {
        return element + component;
    }
    return element + u"." + component;
}

ChannelNameParts splitChannelName(const String& channel) {
    ChannelNameParts parts{channel, {}};
    const std::size_t dot = channel.findLast(".");
    if (dot != String::kNotFound) {
        parts = {channel.substring(0, dot), channel.substring(dot + 1)};
    }
    if (parts.component.isEmpty() && contains(kColorComponents, parts.element)) {
        return {{}, parts.element};
    }
    if ((parts.element == "Sqr" || parts.element == "Denoised") &&
        !contains(kColorComponents, parts.component)) {
        return {channel, {}};
    }
    return parts;
}

std::vector<ElementInfo> ChannelImage::getElements() const {
    std::vector<ElementInfo> elements = groupChannels(*this);
    if (!elements.empty()) {
        updateElementFlags(elements, getRenderElementInfos());
    }
    return elements;
}

RenderElementInfos ChannelImage::getRenderElementInfos() const {
    RenderElementInfos infos;
    if (hasAttribute<String>(kElementsAttribute)) {
        for (const String& item : parseItems(getAttribute<String>(kElementsAttribute))) {
            if (Result<RenderElementInfo> info = RenderElementInfo::deserialize(item)) {
                infos.push_back(*std::move(info));
            }
        }
    } else if (hasAttribute<String>(kLightMixElementsAttribute)) {
        for (const String& name : parseItems(getAttribute<String>(kLightMixElementsAttribute))) {
            infos.emplace_back(RenderElementInfo::Data{
                postcore::kLightSelectType, {name, name}, RenderElementFlag::NoPostProcessing});
        }
    }
    return infos;
}

void ChannelImage::setRenderElementInfos(const RenderElementInfos& infos) {
    std::vector<String> items;
    std::ranges::transform(infos, std::back_inserter(items), &RenderElementInfo::serializeToString);
    setAttribute(kElementsAttribute, Str::getExportStringArray(items));
}

const RenderElementInfo* findMatchingElementCoreInfo(const RenderElementInfos& infos,
                                                     const ElementInfo& element) {
    const auto matches = [&element](const RenderElementInfo& info) {
        if (element.name == kLightMixInteractive) {
            return info.getData().type == postcore::kLightMixInteractiveType;
        }
        if (element.name == kBloomGlareInteractive) {
            return info.getData().type == postcore::kBloomGlareInteractiveType;
        }
        return info.getData().names.elementName == element.name;
    };
    const auto found = std::ranges::find_if(infos, matches);
    return found == infos.end() ? nullptr : &*found;
}

}  // namespace tavrin::image
