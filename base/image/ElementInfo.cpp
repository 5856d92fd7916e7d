#include "base/image/ElementInfo.h"

namespace tavrin::image {
namespace {

const String kDenoisedPrefix = "Denoised";
const String kVariancePrefix = "Sqr";
// What stands for the beauty's empty name behind the variance prefix.
const String kBeautyVarianceName = "Beauty";
const String kBeautyDisplayName = "BEAUTY";
const String kAlphaDisplayName = "Alpha";

}  // namespace

bool isDisplayable(const ElementInfo& element) {
    return (element.kind == ElementKind::Rgb || element.kind == ElementKind::Rgba) &&
           !element.has(kAuxiliaryElement);
}

bool isSavableSeparately(const ElementInfo& element) {
    return isDisplayable(element);
}

bool isDenoiseCapable(const ElementInfo& element) {
    return isDisplayable(element) && element.has(kDenoisableElement);
}

bool isColorElementOtherThanBeauty(const ElementInfo& element) {
    return isDisplayable(element) && element.name != kBeautyElement;
}

bool isStoredInTxrByDefault(const ElementInfo& element) {
    return !isDenoisedElementName(element.name) && !element.has(kVirtualElement) &&
           element.name != kAlphaElement;
}

String getDenoisedElementName(const String& element) {
    return kDenoisedPrefix + element;
}

String getVarianceElementName(const String& element) {
    return kVariancePrefix + (element == kBeautyElement ? kBeautyVarianceName : element);
}

bool isDenoisedElementName(const String& element) {
    return element.startsWith(kDenoisedPrefix);
}

bool isVarianceElementName(const String& element) {
    return element.startsWith(kVariancePrefix);
}

String getDisplayName(const String& element) {
    if (element == kBeautyElement) {
        return kBeautyDisplayName;
    }
    return element == kAlphaElement ? kAlphaDisplayName : element;
}

String getInternalName(const String& displayName) {
    if (displayName == kBeautyDisplayName) {
        return kBeautyElement;
    }
    return displayName == kAlphaDisplayName ? kAlphaElement : displayName;
}

String getListLabel(const ElementInfo& element) {
    const String name = getDisplayName(element.name);
    return element.has(kHasDenoisedVariant) ? name + " [Denoised]" : name;
}

}  // namespace tavrin::image
