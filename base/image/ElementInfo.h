#pragma once

#include "foundation/String.h"

#include <cstdint>
#include <vector>

namespace tavrin::image {

/// The layout of a render element named E.
enum class ElementKind : std::uint32_t {
    Rgb = 0,          ///< channels E.R, E.G, E.B
    Rgba = 1,         ///< channels E.R, E.G, E.B, E.A
    Mono = 2,         ///< one channel named exactly E
    Unsupported = 3,  ///< anything else
};

/// What is known of a render element; the bits of ElementInfo::flags.
enum ElementFlag : std::uint32_t {
    kVirtualElement = 1,         ///< computed by the pipeline, never stored in a file
    kAuxiliaryElement = 2,       ///< data for the system's own use, not an image for the user
    kLightSelectElement = 4,     ///< one of the lights that LightMix mixes
    kDenoisableElement = 8,      ///< the image holds the element's variance
    kSelectedForDenoising = 16,  ///< the user wants it denoised
    kHasDenoisedVariant = 32,    ///< a denoised variant is stored or has been computed
    kNoColorMapping = 64,        ///< shown as stored
    kNoBloom = 128,
    kNoGlare = 256,
    kNoSharpenBlur = 512,
};

/// One render element of an image.
struct ElementInfo {
    String name;  ///< internal name: empty for the beauty, "A" for the alpha
    ElementKind kind = ElementKind::Unsupported;
    std::uint32_t flags = 0;  ///< bits of ElementFlag

    bool has(ElementFlag flag) const { return (flags & flag) != 0; }

    friend bool operator==(const ElementInfo&, const ElementInfo&) = default;
};

// Rules over one element.
bool isDisplayable(const ElementInfo& element);
bool isSavableSeparately(const ElementInfo& element);
bool isDenoiseCapable(const ElementInfo& element);
bool isColorElementOtherThanBeauty(const ElementInfo& element);
bool isStoredInTxrByDefault(const ElementInfo& element);

// Rules over internal element names.
String getDenoisedElementName(const String& element);
String getVarianceElementName(const String& element);
bool isDenoisedElementName(const String& element);
bool isVarianceElementName(const String& element);
/// "BEAUTY" for the beauty, "Alpha" for the alpha, else the name itself.
String getDisplayName(const String& element);
/// The inverse of getDisplayName.
String getInternalName(const String& displayName);
/// The display name, followed by " [Denoised]" where a denoised variant exists.
String getListLabel(const ElementInfo& element);

inline const String kBeautyElement;
inline const String kAlphaElement = "A";
inline const String kWeightsElement = "TAVRIN_FB_WEIGHTS";
inline const String kImportanceElement = "TAVRIN_FB_IMPORTANCE";
inline const String kLightMixInteractive = "LightMix Interactive";
inline const String kBloomGlareInteractive = "Bloom and Glare Interactive";

}  // namespace tavrin::image
