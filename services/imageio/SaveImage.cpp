#include "services/imageio/SaveImage.h"

#include "foundation/Exception.h"
#include "foundation/Scheduler.h"
#include "services/imageio/PictureFile.h"
#include "services/imageio/PictureWriter.h"
#include "services/imageio/SampleEncoder.h"

#include <exception>
#include <string>

namespace tavrin::imageio {
namespace {

String toText(std::int64_t number) {
    return String::fromUtf8(std::to_string(number));
}

/// The format to write, or the reason why there is none.
Result<ImageFormat> chooseFormat(const Path& path, Optional<ImageFormat> format) {
    if (!format) {
        format = detectImageFormat(path);
    }
    if (format) {
        return *format;
    }
    const String extension = path.extension();
    return Failure(extension.isEmpty()
                       ? "its name has no extension that tells the picture format"
                       : "\"" + extension + "\" is not the extension of a known picture format");
}

/// Success, or the reason why a picture of this size cannot be written.
Result<void> checkSize(Pixel size, const ImageFormatInfo& info, const SampleEncoder& encoder) {
    if (size.x <= 0 || size.y <= 0) {
        return Failure("the picture is empty");
    }
    const String sizeText = toText(size.x) + " x " + toText(size.y) + " pixels";
    if (size.x > info.maximumSide || size.y > info.maximumSide) {
        return Failure("the picture has " + sizeText + ", but a " + info.displayName +
                       " has at most " + toText(info.maximumSide) + " on a side");
    }
    if (size.x < info.minimumSide || size.y < info.minimumSide) {
        return Failure("the picture has " + sizeText + ", but a " + info.displayName +
                       " has at least " + toText(info.minimumSide) + " on a side");
    }
    if (encoder.getRowBytes() > info.maximumBytes / static_cast<std::uint64_t>(size.y)) {
        return Failure("the picture has " + sizeText + ", but a " + info.displayName +
                       " holds at most 4 GiB");
    }
    return {};
}

/// Everything about the file but the program's side, which PictureFile adds. `compression` is used
/// until the picture has been written.
WritePictureRequest makeRequest(const ImageFormatInfo& info, const ImageSaveSettings& settings,
                                Pixel size, bool isData, const SampleEncoder& encoder,
                                const std::string& compression) {
    WritePictureRequest request{};
    request.format = info.format;
    request.width = size.x;
    request.height = size.y;
    request.channels = encoder.getChannelCount();
    request.bitDepth = encoder.getBitDepth();
    request.isSrgb = !isData && !info.isLinear;
    request.quality = settings.quality.value_or(info.quality.value_or(0));
    request.compression = compression.c_str();
    request.threads = Scheduler::getThreadCount();
    return request;
}

}  // namespace

Result<void> saveImage(const Path& path, const IImageIterator& picture, bool isData,
                       Optional<ImageFormat> format, const ImageSaveSettings& settings,
                       const TaskProgress& progress) {
    const auto fail = [&](const String& reason) { return Failure(tellWriteFailure(path, reason)); };
    const Result<ImageFormat> chosen = chooseFormat(path, format);
    if (!chosen) {
        return fail(chosen.error());
    }
    if (const Result<void> checked = checkImageSaveSettings(settings, *chosen); !checked) {
        return fail(checked.error());
    }
    const ImageFormatInfo& info = getImageFormatInfo(*chosen);
    const SampleEncoder encoder(picture, info, settings.bitDepth.value_or(info.bitDepths.front()),
                                !isData);
    const Pixel size = picture.getSize();
    if (const Result<void> checked = checkSize(size, info, encoder); !checked) {
        return fail(checked.error());
    }
    const Result<WritePicture> writer = getPictureWriter();
    if (!writer) {
        return fail(writer.error());
    }
    const String compression = settings.compression.value_or(
        info.compressions.empty() ? String() : info.compressions.front());
    const std::string compressionUtf8 = compression.toUtf8();
    try {
        PictureFile(path, encoder, progress)
            .write(*writer, makeRequest(info, settings, size, isData, encoder, compressionUtf8));
    } catch (const Exception& exception) {
        return Failure(exception.message());
    } catch (const std::exception& exception) {
        return fail(exceptionToString(exception));
    }
    return {};
}

}  // namespace tavrin::imageio
