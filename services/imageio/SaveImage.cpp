#include "services/imageio/SaveImage.h"

#include "foundation/BinaryFileOutputStream.h"
#include "foundation/Exception.h"
#include "foundation/Scheduler.h"
#include "services/imageio/PictureWriter.h"
#include "services/imageio/SampleEncoder.h"

#include <exception>
#include <string>

namespace tavrin::imageio {
namespace {

String toText(std::int64_t number) {
    return String::fromUtf8(std::to_string(number));
}

/// `reason` is the rest of a sentence, without its full stop.
String tellFailure(const Path& path, const String& reason) {
    return "File \"" + path.native() + "\" cannot be written: " + reason + ".";
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
Result<void> checkSize(Pixel size, const ImageFormatInfo& info, std::uint64_t rowBytes) {
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
    if (rowBytes > info.maximumBytes / static_cast<std::uint64_t>(size.y)) {
        return Failure("the picture has " + sizeText + ", but a " + info.displayName +
                       " holds at most 4 GiB");
    }
    return {};
}

/// The program's side of writing one picture: hands out rows and takes the bytes of the file.
class PictureFile {
public:
    PictureFile(const Path& path, const SampleEncoder& encoder, int height,
                const TaskProgress& progress)
        : path_(path), stream_(path), encoder_(encoder), height_(height), progress_(progress) {}

    /// Lets the writer do the work; afterwards the file is in its place. Throws an Exception.
    void write(WritePicture writer, WritePictureRequest request) {
        request.host = this;
        request.provideRows = [](void* host, int begin, int end, void* samples) noexcept {
            return static_cast<PictureFile*>(host)->attempt(
                [=](PictureFile& file) { file.provideRows(begin, end, samples); });
        };
        request.storeBytes = [](void* host, std::uint64_t position, const void* bytes,
                                std::size_t count) noexcept {
            return static_cast<PictureFile*>(host)->attempt(
                [=](PictureFile& file) { file.storeBytes(position, bytes, count); });
        };
        request.receiveReason = [](void* host, const char* reason) noexcept {
            static_cast<PictureFile*>(host)->attempt(
                [=](PictureFile& file) { file.fail(String::fromUtf8(reason)); });
        };
        const bool isWritten = writer(request);
        if (failure_) {
            std::rethrow_exception(failure_);
        }
        if (!isWritten) {
            fail("the picture library gave no reason");
        }
        stream_.commit();
        progress_.report(1.0f);
    }

private:
    [[noreturn]] void fail(const String& reason) const {
        throw Exception(tellFailure(path_, reason));
    }

    /// Takes a step, unless an earlier one failed, and keeps its exception: none may pass through
    /// the writer's library.
    template <class Step>
    bool attempt(const Step& step) noexcept {
        if (!failure_) {
            try {
                step(*this);
            } catch (...) {
                failure_ = std::current_exception();
            }
        }
        return !failure_;
    }

    void provideRows(int begin, int end, void* samples) {
        if (progress_.isCancelled()) {
            fail("saving was cancelled");
        }
        progress_.report(static_cast<float>(begin) / static_cast<float>(height_));
        const std::size_t rowBytes = encoder_.getRowBytes();
        Scheduler::defaultInstance().parallelFor(
            begin, end, TaskPriority::Normal, [&](std::int64_t y) {
                encoder_.encodeRow(static_cast<int>(y),
                                   static_cast<std::byte*>(samples) +
                                       static_cast<std::size_t>(y - begin) * rowBytes);
            });
    }

    void storeBytes(std::uint64_t position, const void* bytes, std::size_t count) {
        if (position != position_) {
            stream_.seek(position);
        }
        stream_.write(bytes, count);
        position_ = position + count;
    }

    Path path_;
    BinaryFileOutputStream stream_;
    const SampleEncoder& encoder_;
    int height_;
    const TaskProgress& progress_;
    std::uint64_t position_ = 0;
    std::exception_ptr failure_;
};

}  // namespace

Result<void> saveImage(const Path& path, const IImageIterator& picture, bool isData,
                       Optional<ImageFormat> format, const ImageSaveSettings& settings,
                       const TaskProgress& progress) {
    const auto fail = [&](const String& reason) { return Failure(tellFailure(path, reason)); };
    const Result<ImageFormat> chosen = chooseFormat(path, format);
    if (!chosen) {
        return fail(chosen.error());
    }
    if (const Result<void> checked = checkImageSaveSettings(settings, *chosen); !checked) {
        return fail(checked.error());
    }
    const ImageFormatInfo& info = getImageFormatInfo(*chosen);
    const BitDepth bitDepth = settings.bitDepth.value_or(info.bitDepths.front());
    const Pixel size = picture.getSize();
    const SampleEncoder encoder(picture, info, bitDepth, !isData);
    if (const Result<void> checked = checkSize(size, info, encoder.getRowBytes()); !checked) {
        return fail(checked.error());
    }
    const std::string compression =
        settings.compression
            .value_or(info.compressions.empty() ? String() : info.compressions.front())
            .toUtf8();
    WritePictureRequest request{};
    request.format = *chosen;
    request.width = size.x;
    request.height = size.y;
    request.channels = encoder.getChannelCount();
    request.bitDepth = bitDepth;
    request.isSrgb = !isData && !info.isLinear;
    request.quality = settings.quality.value_or(info.quality.value_or(0));
    request.compression = compression.c_str();
    request.threads = Scheduler::getThreadCount();
    try {
        PictureFile(path, encoder, size.y, progress).write(getPictureWriter(), request);
    } catch (const Exception& exception) {
        return Failure(exception.message());
    } catch (const std::exception& exception) {
        return fail(exceptionToString(exception));
    }
    return {};
}

}  // namespace tavrin::imageio
