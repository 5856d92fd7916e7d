#include "services/imageio/openimageio/HostFile.h"
#include "services/imageio/openimageio/RowBlock.h"
#include "services/imageio/openimageio/SrgbProfile.h"
#include "services/imageio/openimageio/WritePicture.h"

#include <OpenImageIO/imageio.h>

#include <exception>
#include <memory>
#include <mutex>
#include <string>

#ifdef _WIN32
#define TAVRIN_MODULE_EXPORT __declspec(dllexport)
#else
#define TAVRIN_MODULE_EXPORT __attribute__((visibility("default")))
#endif

namespace tavrin::imageio {
namespace {

/// The usual level 6 takes three to four times as long to make a render less than a tenth smaller.
constexpr int kZipLevel = 4;

/// What the library calls a format, and a file name from which its writer knows the variant.
struct WriterName {
    const char* writer;
    const char* fileName;
};

WriterName getWriterName(ImageFormat format) {
    switch (format) {
        case ImageFormat::Png:
            return {"png", "picture.png"};
        case ImageFormat::Jpeg:
            return {"jpeg", "picture.jpg"};
        case ImageFormat::Tiff:
            return {"tiff", "picture.tif"};
        case ImageFormat::Targa:
            return {"targa", "picture.tga"};
        case ImageFormat::Bmp:
            return {"bmp", "picture.bmp"};
        case ImageFormat::WebP:
            return {"webp", "picture.webp"};
        case ImageFormat::RadianceHdr:
            return {"hdr", "picture.hdr"};
        case ImageFormat::OpenExr:
            return {"openexr", "picture.exr"};
        case ImageFormat::Dpx:
            return {"dpx", "picture.dpx"};
        case ImageFormat::Jpeg2000:
            return {"jpeg2000", "picture.jp2"};
    }
    return {"", ""};
}

int getPngCompressionLevel(const std::string& compression) {
    if (compression == "none") {
        return 0;
    }
    if (compression == "fast") {
        return 1;
    }
    return compression == "best" ? 9 : kZipLevel;
}

bool storesUnassociatedAlpha(ImageFormat format) {
    return format == ImageFormat::Png || format == ImageFormat::Targa ||
           format == ImageFormat::WebP;
}

OIIO::ImageSpec makeSpec(const WritePictureRequest& request) {
    OIIO::ImageSpec spec(
        request.width, request.height, request.channels,
        request.bitDepth == BitDepth::Half ? OIIO::TypeDesc::HALF : getRowType(request.bitDepth));
    // The colours are written as they are; otherwise some writers would divide them by alpha. The
    // other formats expect colours that alpha has been multiplied into, and get what they expect.
    if (storesUnassociatedAlpha(request.format)) {
        spec.attribute("oiio:UnassociatedAlpha", 1);
    }
    // A Targa file would add a version, that of the library.
    if (request.format != ImageFormat::Targa) {
        spec.attribute("Software", "Tavrin Image Editor");
    }
    if (request.isSrgb) {
        spec.attribute("oiio:ColorSpace", "sRGB");
    }
    const std::string compression = request.compression;
    const std::string quality = std::to_string(request.quality);
    switch (request.format) {
        case ImageFormat::Png:
            spec.attribute("png:compressionLevel", getPngCompressionLevel(compression));
            break;
        case ImageFormat::Jpeg:
            spec.attribute("compression", "jpeg:" + quality);
            // Coarser colours would show at the edges of saturated objects.
            spec.attribute("jpeg:subsampling", "4:4:4");
            break;
        case ImageFormat::WebP:
            spec.attribute("compression", "webp:" + quality);
            break;
        case ImageFormat::Tiff:
            spec.attribute("compression", compression);
            spec.attribute("tiff:zipquality", kZipLevel);
            // The library can only append these by reading the file again, which it cannot here.
            spec.attribute("tiff:write_exif", 0);
            if (request.isSrgb) {
                const std::string profile = makeSrgbProfile();
                spec.attribute(
                    "ICCProfile",
                    OIIO::TypeDesc(OIIO::TypeDesc::UINT8, static_cast<int>(profile.size())),
                    profile.data());
            }
            break;
        case ImageFormat::Dpx:
            spec.attribute("oiio:BitsPerSample", getBitCount(request.bitDepth));
            break;
        default:
            if (!compression.empty()) {
                spec.attribute("compression", compression);
            }
            break;
    }
    return spec;
}

void followThreadLimit(int threads) {
    static std::mutex mutex;
    static int current = 0;
    const std::lock_guard lock(mutex);
    if (threads != current) {
        OIIO::attribute("threads", threads);
        OIIO::attribute("exr_threads", threads);
        current = threads;
    }
}

bool write(const WritePictureRequest& request) {
    followThreadLimit(request.threads);
    // No writer is bothered with a picture that does not even begin.
    RowBlock rows(request);
    if (!rows.fill(0)) {
        return false;
    }
    const WriterName name = getWriterName(request.format);
    HostFile file(name.fileName, request);
    const std::unique_ptr<OIIO::ImageOutput> output = OIIO::ImageOutput::create(name.writer);
    if (!output) {
        request.receiveReason(request.host, OIIO::geterror().c_str());
        return false;
    }
    output->set_ioproxy(&file);
    const bool isWritten = output->open(name.fileName, makeSpec(request)) && rows.writeOn(*output);
    // Some writers do all their work here and tell a failure only by a message.
    const bool isClosed = output->close();
    if (output->has_error()) {
        request.receiveReason(request.host, output->geterror().c_str());
        return false;
    }
    return isWritten && isClosed;
}

}  // namespace

extern "C" TAVRIN_MODULE_EXPORT bool tavrinWritePicture1(
    const WritePictureRequest& request) noexcept {
    try {
        return write(request);
    } catch (const std::exception& exception) {
        request.receiveReason(request.host, exception.what());
        return false;
    }
}

}  // namespace tavrin::imageio
