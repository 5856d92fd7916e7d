#pragma once

#include <compare>
#include <cstddef>
#include <string>
#include <variant>

/// What the program and the module that holds OpenColorIO say to each other. Both come from one
/// build, so that C++ types may pass between them; exceptions may not. Texts are UTF-8, paths the
/// system's own bytes.
namespace tavrin::colorkit {

/// A colour transform made ready to use. Immutable: any thread may apply it.
class IColorTransform {
public:
    virtual ~IColorTransform() = default;

    /// Maps pixels of four floats in place; what becomes of each fourth float is not said.
    virtual void apply(float* pixels, std::size_t count) const noexcept = 0;
};

/// A file of a look-up table in any format that OpenColorIO reads, three-dimensional ones with
/// tetrahedral interpolation.
struct LutFile {
    std::string path;

    friend auto operator<=>(const LutFile&, const LutFile&) = default;
};

/// The output transform of ACES 1.0 for a video display of 100 nits: from linear Rec. 709 to the
/// display's light, from 0 to 1, with the same primaries.
struct AcesOutput {
    friend auto operator<=>(const AcesOutput&, const AcesOutput&) = default;
};

/// A view of a display, as a configuration of OpenColorIO defines it.
struct DisplayView {
    std::string configuration;
    /// The colour space that comes in; empty: the configuration's linear Rec. 709, or else its
    /// role "scene_linear".
    std::string source;
    std::string display;  ///< empty: the configuration's default
    std::string view;     ///< empty: the display's default
    std::string look;     ///< empty: those of the view

    friend auto operator<=>(const DisplayView&, const DisplayView&) = default;
};

using ColorTransformRequest = std::variant<LutFile, AcesOutput, DisplayView>;

/// Makes the transform, which the caller then owns. Null when that cannot be done; `reason` then
/// holds the library's words. One thread at a time.
using CreateColorTransform = const IColorTransform* (*)(const ColorTransformRequest& request,
                                                        std::string& reason) noexcept;

/// The name under which the module exports it. The number counts changes of this header, so that a
/// module of another version is refused.
inline constexpr const char* kCreateColorTransformSymbol = "tavrinCreateColorTransform1";

}  // namespace tavrin::colorkit
