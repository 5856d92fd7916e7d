#include "TestExr.h"

#include "base/image/Exr.h"

#include <ImfFrameBuffer.h>
#include <ImfInputFile.h>
#include <ImfOutputFile.h>
#include <ImfTiledOutputFile.h>
#include <gtest/gtest.h>
#include <half.h>

#include <bit>
#include <cmath>
#include <cstring>
#include <fstream>
#include <iterator>

namespace tavrin::image {
namespace {

constexpr std::size_t kSlot = 4;

std::size_t countPixels(const Imath::Box2i& window) {
    return std::size_t(window.max.x - window.min.x + 1) *
           std::size_t(window.max.y - window.min.y + 1);
}

/// `value` in the first bytes of a slot.
std::uint32_t encode(Imf::PixelType type, float value) {
    switch (type) {
        case Imf::UINT:
            return static_cast<std::uint32_t>(std::abs(value) * 100000.0f);
        case Imf::HALF:
            return half(value).bits();
        default:
            return std::bit_cast<std::uint32_t>(value);
    }
}

void addSlice(Imf::FrameBuffer& frameBuffer, const std::string& name, Imf::PixelType type,
              std::vector<std::uint32_t>& plane, const Imath::Box2i& window) {
    const auto width = std::size_t(window.max.x - window.min.x + 1);
    frameBuffer.insert(name, Imf::Slice::Make(type, plane.data(), window, kSlot, kSlot * width));
}

void writeTiles(const Path& path, const Imf::Header& header, const Imf::FrameBuffer& frameBuffer) {
    Imf::TiledOutputFile file(path.std().c_str(), header);
    file.setFrameBuffer(frameBuffer);
    const bool isRipmap = header.tileDescription().mode == Imf::RIPMAP_LEVELS;
    // From the last level to the first, which files of random order keep.
    for (int ly = file.numYLevels() - 1; ly >= 0; --ly) {
        for (int lx = file.numXLevels() - 1; lx >= 0; --lx) {
            if (isRipmap || lx == ly) {
                file.writeTiles(0, file.numXTiles(lx) - 1, 0, file.numYTiles(ly) - 1, lx, ly);
            }
        }
    }
}

}  // namespace

float TestExr::noise(std::size_t channel, std::size_t index) {
    // The finalizer of MurmurHash3.
    std::uint64_t bits = (index + 1) * 0x9E3779B97F4A7C15u + channel;
    bits = (bits ^ (bits >> 33)) * 0xFF51AFD7ED558CCDu;
    bits = (bits ^ (bits >> 33)) * 0xC4CEB9FE1A85EC53u;
    const auto mantissa = static_cast<float>((bits >> 40) + 1) * 0x1p-24f;
    return std::ldexp(bits % 2 == 0 ? mantissa : -mantissa, int(bits / 2 % 24) - 12);
}

void TestExr::write(const Path& path) const {
    Imf::Header header(displayWindow, dataWindow, 1.0f, {0.0f, 0.0f}, 1.0f, lineOrder, compression);
    std::vector<std::vector<std::uint32_t>> planes(channels.size());
    Imf::FrameBuffer frameBuffer;
    for (std::size_t c = 0; c < channels.size(); ++c) {
        const auto& [name, type] = channels[c];
        planes[c].resize(countPixels(dataWindow));
        for (std::size_t i = 0; i < planes[c].size(); ++i) {
            planes[c][i] = encode(type, source(c, i));
        }
        header.channels().insert(name, Imf::Channel(type));
        addSlice(frameBuffer, name, type, planes[c], dataWindow);
    }
    change(header);
    if (tiles.xSize != 0) {
        header.setTileDescription(tiles);
        writeTiles(path, header, frameBuffer);
    } else {
        Imf::OutputFile file(path.std().c_str(), header);
        file.setFrameBuffer(frameBuffer);
        file.writePixels(dataWindow.max.y - dataWindow.min.y + 1);
    }
}

Planes readPlanes(const Path& path) {
    Imf::InputFile file(path.std().c_str());
    const Imf::ChannelList& channels = file.header().channels();
    const Imath::Box2i window = file.header().dataWindow();
    Planes planes;
    Imf::FrameBuffer frameBuffer;
    for (auto item = channels.begin(); item != channels.end(); ++item) {
        auto& plane = planes[item.name()];
        plane.resize(countPixels(window));
        const auto type = item.channel().type == Imf::UINT ? Imf::UINT : Imf::FLOAT;
        addSlice(frameBuffer, item.name(), type, plane, window);
    }
    file.setFrameBuffer(frameBuffer);
    file.readPixels(window.min.y, window.max.y);
    return planes;
}

Planes getPlanes(const ChannelImage& image) {
    Planes planes;
    for (const auto& [name, channel] : image.getChannels()) {
        auto& plane = planes[name.toUtf8()];
        plane.resize(channel->getSize());
        const void* values = image.hasChannel<float>(name)
                                 ? static_cast<const void*>(image.getChannel<float>(name).getData())
                                 : image.getChannel<std::uint32_t>(name).getData();
        std::memcpy(plane.data(), values, plane.size() * kSlot);
    }
    return planes;
}

ChannelImage makeImage(const Bucket& displayWindow, const Bucket& dataWindow,
                       const std::vector<String>& channels) {
    ChannelImage image(displayWindow, dataWindow, 2.2f);
    for (const String& name : channels) {
        image.addChannel(name);
    }
    image.fitChannelsToDataWindow();
    for (std::size_t c = 0; c < channels.size(); ++c) {
        const auto values = image.getChannel<float>(channels[c]).getValues();
        for (std::size_t i = 0; i < values.size(); ++i) {
            values[i] = TestExr::noise(c, i);
        }
    }
    return image;
}

Channel<std::uint32_t>& addIntegers(ChannelImage& image) {
    image.setChannel(std::make_unique<Channel<std::uint32_t>>("Id"));
    return image.getChannel<std::uint32_t>("Id");
}

ChannelImage loadExr(const Path& path) {
    Result<ChannelImage> image = ExrLoader().load(path);
    EXPECT_TRUE(image.has_value()) << image.error().toUtf8();
    return image ? *std::move(image) : ChannelImage();
}

std::string readBytes(const Path& path) {
    std::ifstream stream(path.std(), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void writeBytes(const Path& path, const std::string& bytes) {
    std::ofstream(path.std(), std::ios::binary) << bytes;
}

std::string getRefusal(const Path& path) {
    const Result<ChannelImage> image = ExrLoader().load(path);
    EXPECT_TRUE(!image || image->isValid());
    return image ? "" : withoutPath(image.error(), path);
}

std::string withoutPath(const String& message, const Path& path) {
    return message.replaced(path.native(), "FILE").toUtf8();
}

}  // namespace tavrin::image
