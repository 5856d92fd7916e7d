#pragma once

#include "foundation/Flags.h"
#include "foundation/Json.h"
#include "foundation/Result.h"
#include "foundation/String.h"

#include <cstdint>

namespace tavrin::postcore {

/// The kind of a render element, by the renderer's number. Numbers without a name are kept.
struct ElementTypeWrapper {
    std::uint32_t value = 0;

    friend bool operator==(ElementTypeWrapper, ElementTypeWrapper) = default;
};

inline constexpr ElementTypeWrapper kLightSelectType{1006};
inline constexpr ElementTypeWrapper kBloomGlareInteractiveType{2003};
inline constexpr ElementTypeWrapper kLightMixInteractiveType{2004};

/// What may be done with an element after rendering.
enum class RenderElementFlag : std::uint32_t {
    NoPostProcessing = 1,  ///< no colour mapping, bloom, glare, sharpening or blurring
    AllowBloom = 16,
    AllowGlare = 32,
};

/// The renderer's description of one render element, as it stands in an image's header. The text
/// form is one JSON object:
///
///     {"type": 1006, "names": ["Key light", "Key"], "flags": 48}
///
/// "type" is the element type, "names" the name in the renderer's own interface and the name used
/// in channel names, "flags" the sum of RenderElementFlag values. Other members (of newer writers,
/// or of renderers that store their own parameters) are kept and written again.
class RenderElementInfo {
public:
    struct Names {
        String rendererName;  ///< as the renderer's own interface shows it
        String elementName;   ///< as used in channel names; what elements are matched by

        friend bool operator==(const Names&, const Names&) = default;
    };
    struct Data {
        ElementTypeWrapper type;
        Names names;
        Flags<RenderElementFlag> flags;

        friend bool operator==(const Data&, const Data&) = default;
    };

    explicit RenderElementInfo(Data data) : data_(std::move(data)) {}

    const Data& getData() const { return data_; }

    String serializeToString() const;
    /// The description, or what is wrong with the text.
    static Result<RenderElementInfo> deserialize(const String& text);

    friend bool operator==(const RenderElementInfo&, const RenderElementInfo&) = default;

private:
    Data data_;
    Json others_ = Json::object();  ///< members that this version does not know
};

}  // namespace tavrin::postcore
