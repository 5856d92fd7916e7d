#pragma once

#include "foundation/Optional.h"
#include "foundation/Path.h"
#include "services/imageio/BitDepth.h"

#include <cstdint>
#include <vector>

namespace tavrin::imageio {

/// The common picture formats that can be written.
enum class ImageFormat { Png, Jpeg, Tiff, Targa, Bmp, WebP, RadianceHdr, OpenExr, Dpx, Jpeg2000 };

/// What a format is called, what its files can hold, and what the user may choose about it.
struct ImageFormatInfo {
    ImageFormat format;
    /// The name on the command line, lower case: "png".
    String name;
    /// The name in dialogs: "PNG image".
    String displayName;
    /// Lower case, without the dot; the first is the usual one.
    std::vector<String> extensions;
    /// Whether alpha is written beside the colours.
    bool carriesAlpha;
    /// Files of this format hold linear light by convention.
    bool isLinear;
    /// The limits of width and height, in pixels.
    int minimumSide;
    int maximumSide;
    /// The greatest size of a picture's samples, in bytes.
    std::uint64_t maximumBytes;
    /// The bit depths that can be written; the first is the default.
    std::vector<BitDepth> bitDepths;
    /// The default of a quality between 1 and 100, for formats that have one.
    Optional<int> quality;
    /// The ways of compressing; the first is the default. Empty when there is no choice.
    std::vector<String> compressions;

    bool holdsFloats() const { return isFloatingPoint(bitDepths.back()); }
};

/// Every format, in the order in which a user should see them.
const std::vector<ImageFormatInfo>& getImageFormats();
const ImageFormatInfo& getImageFormatInfo(ImageFormat format);

/// The format whose extension the file name has, in any letter case.
Optional<ImageFormat> detectImageFormat(const Path& path);
/// The format with this name ("png").
Optional<ImageFormat> findImageFormat(const String& name);

/// The choices of a save dialog, one per format in the order of getImageFormats():
/// "PNG image (*.png)|*.png|JPEG image (*.jpg;*.jpeg)|*.jpg;*.jpeg|...".
String getImageFileFilter();

}  // namespace tavrin::imageio
