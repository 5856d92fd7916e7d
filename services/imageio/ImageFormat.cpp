#include "services/imageio/ImageFormat.h"

#include "foundation/FatalError.h"
#include "foundation/Text.h"

#include <algorithm>
#include <limits>

namespace tavrin::imageio {
namespace {

constexpr std::uint64_t kNoByteLimit = std::numeric_limits<std::uint64_t>::max();
/// Formats whose headers count bytes with 32 bits; the rest is left for the headers themselves.
constexpr std::uint64_t k32BitFile = 0xFFFFFFFFu - 65536u;
/// What the library writes of formats whose own limits lie beyond any picture.
constexpr int kTwentyBits = 1 << 20;
constexpr int kNoSideLimit = std::numeric_limits<int>::max();

std::vector<ImageFormatInfo> makeImageFormats() {
    using enum BitDepth;
    return {
        {.format = ImageFormat::Png,
         .name = "png",
         .displayName = "PNG image",
         .extensions = {"png"},
         .carriesAlpha = true,
         .isLinear = false,
         .minimumSide = 1,
         .maximumSide = 1'000'000,
         .maximumBytes = kNoByteLimit,
         .bitDepths = {Int8, Int16},
         .quality = {},
         .compressions = {"normal", "fast", "best", "none"}},
        {.format = ImageFormat::Jpeg,
         .name = "jpeg",
         .displayName = "JPEG image",
         .extensions = {"jpg", "jpeg"},
         .carriesAlpha = false,
         .isLinear = false,
         .minimumSide = 1,
         .maximumSide = 65500,
         .maximumBytes = kNoByteLimit,
         .bitDepths = {Int8},
         .quality = 95,
         .compressions = {}},
        {.format = ImageFormat::Tiff,
         .name = "tiff",
         .displayName = "TIFF image",
         .extensions = {"tif", "tiff"},
         .carriesAlpha = true,
         .isLinear = false,
         .minimumSide = 1,
         .maximumSide = kTwentyBits,
         .maximumBytes = kNoByteLimit,
         .bitDepths = {Int16, Int8, Float},
         .quality = {},
         .compressions = {"zip", "lzw", "packbits", "none"}},
        {.format = ImageFormat::Targa,
         .name = "tga",
         .displayName = "Targa image",
         .extensions = {"tga"},
         .carriesAlpha = true,
         .isLinear = false,
         .minimumSide = 1,
         .maximumSide = 65535,
         .maximumBytes = k32BitFile,
         .bitDepths = {Int8},
         .quality = {},
         .compressions = {"rle", "none"}},
        {.format = ImageFormat::Bmp,
         .name = "bmp",
         .displayName = "BMP image",
         .extensions = {"bmp"},
         .carriesAlpha = false,
         .isLinear = false,
         .minimumSide = 1,
         .maximumSide = kNoSideLimit,
         .maximumBytes = k32BitFile,
         .bitDepths = {Int8},
         .quality = {},
         .compressions = {}},
        {.format = ImageFormat::WebP,
         .name = "webp",
         .displayName = "WebP image",
         .extensions = {"webp"},
         .carriesAlpha = true,
         .isLinear = false,
         .minimumSide = 1,
         .maximumSide = 16383,
         .maximumBytes = kNoByteLimit,
         .bitDepths = {Int8},
         .quality = 95,
         .compressions = {}},
        {.format = ImageFormat::RadianceHdr,
         .name = "hdr",
         .displayName = "Radiance HDR image",
         .extensions = {"hdr"},
         .carriesAlpha = false,
         .isLinear = true,
         .minimumSide = 1,
         .maximumSide = kNoSideLimit,
         .maximumBytes = kNoByteLimit,
         .bitDepths = {Float},
         .quality = {},
         .compressions = {}},
        {.format = ImageFormat::OpenExr,
         .name = "exr",
         .displayName = "OpenEXR image",
         .extensions = {"exr"},
         .carriesAlpha = true,
         .isLinear = true,
         .minimumSide = 1,
         .maximumSide = kNoSideLimit,
         .maximumBytes = kNoByteLimit,
         .bitDepths = {Half, Float},
         .quality = {},
         .compressions = {"zip", "zips", "piz", "dwaa", "dwab", "pxr24", "b44", "b44a", "rle",
                          "none"}},
        {.format = ImageFormat::Dpx,
         .name = "dpx",
         .displayName = "DPX image",
         .extensions = {"dpx"},
         .carriesAlpha = true,
         .isLinear = false,
         .minimumSide = 1,
         .maximumSide = kNoSideLimit,
         .maximumBytes = k32BitFile,
         .bitDepths = {Int10, Int8, Int12, Int16},
         .quality = {},
         .compressions = {}},
        {.format = ImageFormat::Jpeg2000,
         .name = "jpeg2000",
         .displayName = "JPEG 2000 image",
         .extensions = {"jp2"},
         .carriesAlpha = false,
         .isLinear = false,
         // The library always makes five reductions to half the size.
         .minimumSide = 32,
         .maximumSide = kTwentyBits,
         .maximumBytes = k32BitFile,
         .bitDepths = {Int8, Int16},
         .quality = {},
         .compressions = {}},
    };
}

}  // namespace

const std::vector<ImageFormatInfo>& getImageFormats() {
    static const std::vector<ImageFormatInfo> formats = makeImageFormats();
    return formats;
}

const ImageFormatInfo& getImageFormatInfo(ImageFormat format) {
    for (const ImageFormatInfo& info : getImageFormats()) {
        if (info.format == format) {
            return info;
        }
    }
    fatalError("unknown image format");
}

Optional<ImageFormat> detectImageFormat(const Path& path) {
    const String extension = Str::toLowerCase(path.extension());
    for (const ImageFormatInfo& info : getImageFormats()) {
        if (std::ranges::find(info.extensions, extension) != info.extensions.end()) {
            return info.format;
        }
    }
    return {};
}

Optional<ImageFormat> findImageFormat(const String& name) {
    for (const ImageFormatInfo& info : getImageFormats()) {
        if (info.name == name) {
            return info.format;
        }
    }
    return {};
}

String getImageFileFilter() {
    String filter;
    for (const ImageFormatInfo& info : getImageFormats()) {
        String patterns;
        for (const String& extension : info.extensions) {
            patterns += (patterns.isEmpty() ? "*." : ";*.") + extension;
        }
        filter +=
            (filter.isEmpty() ? "" : "|") + info.displayName + " (" + patterns + ")|" + patterns;
    }
    return filter;
}

}  // namespace tavrin::imageio
