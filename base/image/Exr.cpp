#include "base/image/Exr.h"

#include "base/image/ExrAttributes.h"
#include "base/image/ExrHeader.h"
#include "base/image/ExrLimits.h"
#include "base/image/ExrStreams.h"
#include "base/image/RowLoop.h"
#include "foundation/Exception.h"
#include "foundation/FatalError.h"

#include <ImfChannelList.h>
#include <ImfFrameBuffer.h>
#include <ImfInputFile.h>
#include <ImfName.h>
#include <ImfOutputFile.h>
#include <ImfPartType.h>
#include <ImfThreading.h>
#include <ImfTiledInputFile.h>

#include <bit>
#include <mutex>

namespace tavrin::image {
namespace {

constexpr std::size_t kValueSize = 4;

/// Gives the OpenEXR library's pool as many threads as our own loops may use.
int adoptThreadCount() {
    static std::mutex mutex;
    const std::lock_guard lock(mutex);
    const int count = Scheduler::getThreadCount();
    if (Imf::globalThreadCount() != count) {
        Imf::setGlobalThreadCount(count);
    }
    return count;
}

/// The library addresses pixels by their absolute coordinates: the base lies as far before the
/// values as the data window's corner lies from the origin. Computed on integers, since the base
/// itself points outside the array.
char* getSliceBase(const void* values, const Imath::Box2i& dataWindow) {
    const auto width = std::int64_t{dataWindow.max.x} - dataWindow.min.x + 1;
    const std::int64_t corner = dataWindow.min.y * width + dataWindow.min.x;
    const auto address = std::bit_cast<std::uintptr_t>(values);
    return std::bit_cast<char*>(address - static_cast<std::uintptr_t>(corner) * kValueSize);
}

Imf::Slice makeSlice(Imf::PixelType type, const void* values, const Imath::Box2i& dataWindow) {
    const auto width = std::size_t(std::int64_t{dataWindow.max.x} - dataWindow.min.x + 1);
    return {type, getSliceBase(values, dataWindow), kValueSize, kValueSize * width, 1, 1, 0.0};
}

/// The values of a channel of either type.
const void* getValues(const IChannel& channel) {
    if (const auto* floats = dynamic_cast<const Channel<float>*>(&channel)) {
        return floats->getData();
    }
    if (const auto* integers = dynamic_cast<const Channel<std::uint32_t>*>(&channel)) {
        return integers->getData();
    }
    fatalError("A channel of an unknown class cannot be read or written.");
}

Imf::FrameBuffer makeFrameBuffer(const Imf::Header& header, const ChannelImage& image) {
    Imf::FrameBuffer frameBuffer;
    const Imf::ChannelList& channels = header.channels();
    for (auto item = channels.begin(); item != channels.end(); ++item) {
        const IChannel& channel = *image.getChannels().at(String::fromUtf8(item.name()));
        frameBuffer.insert(item.name(),
                           makeSlice(item.channel().type, getValues(channel), header.dataWindow()));
    }
    return frameBuffer;
}

void readPixels(ExrIStreamAdapter& adapter, const Imf::FrameBuffer& frameBuffer, bool isTiled,
                int threadCount) {
    adapter.seekg(0);
    if (isTiled) {
        Imf::TiledInputFile file(adapter, threadCount);
        file.setFrameBuffer(frameBuffer);
        file.readTiles(0, file.numXTiles() - 1, 0, file.numYTiles() - 1);
    } else {
        Imf::InputFile file(adapter, threadCount);
        const Imath::Box2i window = file.header().dataWindow();
        file.setFrameBuffer(frameBuffer);
        file.readPixels(window.min.y, window.max.y);
    }
}

/// Widens the channels that the file stores as HALF, whose values stand in the low two bytes.
void convertHalfChannels(const Imf::Header& header, ChannelImage& image) {
    const Imf::ChannelList& channels = header.channels();
    for (auto item = channels.begin(); item != channels.end(); ++item) {
        if (item.channel().type != Imf::HALF) {
            continue;
        }
        auto& channel = image.getChannel<float>(String::fromUtf8(item.name()));
        const std::size_t width = channel.getWidth();
        forEachRow(image.getDataWindow().size(), [&channel, width](int y) {
            convertHalfValues(channel.getData() + std::size_t(y) * width, width);
        });
    }
}

ChannelImage loadImage(const Path& path) {
    BinaryFileInputStream stream(path);
    const std::string fileName = path.native().toUtf8();
    ExrIStreamAdapter adapter(fileName.c_str(), stream);
    ExrHeader file = readExrHeader(adapter, stream);
    checkExrImage(file.image);
    file.image.fitChannelsToDataWindow();
    readPixels(adapter, makeFrameBuffer(file.header, file.image), file.isTiled,
               limitExrThreadCount(file.header, file.isTiled, adoptThreadCount()));
    convertHalfChannels(file.header, file.image);
    return std::move(file.image);
}

Imf::Header makeHeader(const ChannelImage& image) {
    Imf::Header header(toBox(image.getDisplayWindow()), toBox(image.getDataWindow()), 1.0f,
                       Imath::V2f(0.0f, 0.0f), 1.0f, Imf::INCREASING_Y, Imf::ZIP_COMPRESSION);
    if (image.hasAttribute<String>("type")) {
        // As read, it may tell of tiles, which are not written.
        header.setType(Imf::SCANLINEIMAGE);
    }
    return header;
}

/// A channel's name as it stands in a file.
Imf::Name toFileName(const String& name) {
    if (name.isEmpty()) {
        throw Exception("File channels must have non-empty names.");
    }
    const Imf::Name fileName(name.toUtf8().c_str());
    if (String::fromUtf8(fileName.text()) != name) {
        throw Exception("The channel name \"" + name +
                        "\" is too long or has characters that a file cannot hold.");
    }
    return fileName;
}

void saveImage(const ChannelImage& image, const Path& path) {
    Imf::Header header = makeHeader(image);
    writeExrAttributes(image, header);
    for (const auto& [name, channel] : image.getChannels()) {
        const Imf::PixelType type = image.hasChannel<float>(name) ? Imf::FLOAT : Imf::UINT;
        header.channels().insert(toFileName(name).text(), Imf::Channel(type));
    }
    BinaryFileOutputStream stream(path);
    const std::string fileName = path.native().toUtf8();
    ExrOStreamAdapter adapter(fileName.c_str(), stream);
    {
        Imf::OutputFile file(adapter, header, adoptThreadCount());
        file.setFrameBuffer(makeFrameBuffer(header, image));
        file.writePixels(image.getDataWindow().height());
    }
    adapter.checkFailure();
    stream.commit();
}

}  // namespace

Result<ChannelImage> ExrLoader::load(const Path& path) const {
    try {
        return loadImage(path);
    } catch (const std::exception& exception) {
        return Failure(makeFileMessage(exceptionToString(exception), path));
    }
}

Result<void> ExrSaver::save(const ChannelImage& image, const Path& path) const {
    try {
        saveImage(image, path);
        return {};
    } catch (const std::exception& exception) {
        return Failure(makeFileMessage(exceptionToString(exception), path));
    }
}

void convertHalfValues(float* values, std::size_t count) {
    // Without branches and tables, so that the compiler makes vector instructions of it.
    constexpr std::uint32_t kInfinity = 0x7C00;
    constexpr std::uint32_t kSmallestNormal = 0x0400;
    // 2^-24, the unit of subnormal halves.
    constexpr float kSubnormalUnit = 0x1p-24f;
    // From the exponent's bias of a half, 15, to that of a float, 127.
    constexpr std::uint32_t kRebias = (127 - 15) << 23;
    for (std::size_t i = 0; i < count; ++i) {
        const auto half = std::bit_cast<std::uint32_t>(values[i]);
        const std::uint32_t sign = (half & 0x8000) << 16;
        const std::uint32_t magnitude = half & 0x7FFF;
        // All bits where the condition holds.
        const std::uint32_t isSubnormal = 0u - std::uint32_t(magnitude < kSmallestNormal);
        const std::uint32_t isNotFinite = 0u - std::uint32_t(magnitude >= kInfinity);
        const auto subnormal = std::bit_cast<std::uint32_t>(
            static_cast<float>(static_cast<std::int32_t>(magnitude)) * kSubnormalUnit);
        // Infinity and NaN have the largest exponent in both types.
        const std::uint32_t normal = (magnitude << 13) + kRebias + (isNotFinite & kRebias);
        const std::uint32_t bits = (subnormal & isSubnormal) | (normal & ~isSubnormal);
        values[i] = std::bit_cast<float>(bits | sign);
    }
}

String makeFileMessage(const String& text, const Path& path) {
    String message = text.isEmpty() ? "Unknown error has occurred." : text;
    if (!path.isEmpty()) {
        const String native = path.native();
        message = message.replaced(path.generic(), native);
        message = message.replaced("'" + native + "'", "\"" + native + "\"");
        if (!message.contains(native)) {
            message = "Cannot operate with image file \"" + native + "\". " + message;
        }
    }
    message = message.replaced("File is not an image file.", "File is not a supported image file.");
    message = message.trimmed();
    return message.endsWith(".") ? message : message + ".";
}

}  // namespace tavrin::image
