#pragma once

#include "base/image/ChannelImage.h"

#include <ImfChannelList.h>
#include <ImfHeader.h>
#include <ImfTileDescription.h>

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace tavrin::image {

/// A file that the OpenEXR library itself writes, with pixels that differ between channels.
struct TestExr {
    using ChannelTypes = std::vector<std::pair<std::string, Imf::PixelType>>;
    using Source = std::function<float(std::size_t channel, std::size_t index)>;

    /// The same numbers in every run, of both signs and magnitudes from 2^-12 to 2^12.
    static float noise(std::size_t channel, std::size_t index);
    static float constant(std::size_t, std::size_t) { return 0.5f; }
    static ChannelTypes rgb(Imf::PixelType type) { return {{"R", type}, {"G", type}, {"B", type}}; }

    Imath::Box2i dataWindow{{0, 0}, {36, 70}};
    Imath::Box2i displayWindow{{0, 0}, {36, 70}};
    ChannelTypes channels = rgb(Imf::HALF);
    Imf::Compression compression = Imf::ZIP_COMPRESSION;
    Imf::LineOrder lineOrder = Imf::INCREASING_Y;
    Imf::TileDescription tiles = {0, 0};  ///< of size 0 for scan lines
    Source source = noise;
    std::function<void(Imf::Header&)> change = [](Imf::Header&) {};

    void write(const Path& path) const;
};

/// The bits of the values of each channel, floats for HALF.
using Planes = std::map<std::string, std::vector<std::uint32_t>>;
/// As the library's plain reader gives them.
Planes readPlanes(const Path& path);
Planes getPlanes(const ChannelImage& image);

/// An image with noise in float channels of the given names.
ChannelImage makeImage(const Bucket& displayWindow, const Bucket& dataWindow,
                       const std::vector<String>& channels);
/// Adds the empty channel "Id" of integers.
Channel<std::uint32_t>& addIntegers(ChannelImage& image);

/// Fails the test when the file is refused.
ChannelImage loadExr(const Path& path);
std::string readBytes(const Path& path);
void writeBytes(const Path& path, const std::string& bytes);

/// A message about a file with FILE for its path.
std::string withoutPath(const String& message, const Path& path);
/// The message about a file that is refused; empty when it can be loaded.
std::string getRefusal(const Path& path);

}  // namespace tavrin::image
