#include "base/image/ExrLimits.h"

#include "foundation/Exception.h"
#include "foundation/platform/Memory.h"

#include <ImfChannelList.h>
#include <ImfTileDescription.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>
#include <string>
#include <string_view>

namespace tavrin::image {
namespace {

/// Walks over the raw bytes of a header: name, type, length, value for each attribute, names and
/// types ending in NUL; an empty name ends the header. A list of channels is names with data of
/// fixed length, ended the same way.
class HeaderWalker {
public:
    explicit HeaderWalker(BinaryFileInputStream& stream) : stream_(stream) {}

    void check() {
        std::set<std::string> names;
        for (std::string name = readName(); !name.empty(); name = readName()) {
            if (!names.insert(name).second) {
                throw Exception("File stores duplicate attributes.");
            }
            const std::string type = readName();
            const std::uint64_t length = readInteger();
            const std::uint64_t end = stream_.getPosition() + length;
            if (end > stream_.getSize()) {
                throw Exception("Its header attribute \"" + String::fromUtf8(name) +
                                "\" is longer than the file.");
            }
            if (end > kLargestHeader) {
                throw Exception("Its header has more than 32 MiB.");
            }
            checkLength(name, type, length);
            if (type == "chlist" && !checkChannels(end)) {
                throwWrongLength(name);
            }
            stream_.seek(end);
        }
    }

private:
    // More than previews and the lists of a large scene take; texts in it cost time and memory.
    static constexpr std::uint64_t kLargestHeader = std::uint64_t{32} << 20;
    // What the library accepts for attribute and channel names.
    static constexpr std::size_t kLongestName = 255;
    // Pixel type, linearity with padding, and the two samplings.
    static constexpr std::uint64_t kChannelDataSize = 16;

    // The library reads as many bytes as a type takes, whatever the length says: what follows would
    // be another header for it than the one that is looked through here.
    static void checkLength(const std::string& name, const std::string& type,
                            std::uint64_t length) {
        static const std::map<std::string_view, std::uint64_t> lengths = {
            {"box2f", 16},         {"box2i", 16},    {"chromaticities", 32},
            {"compression", 1},    {"double", 8},    {"envmap", 1},
            {"deepImageState", 1}, {"float", 4},     {"int", 4},
            {"keycode", 28},       {"lineOrder", 1}, {"m33d", 72},
            {"m33f", 36},          {"m44d", 128},    {"m44f", 64},
            {"rational", 8},       {"tiledesc", 9},  {"timecode", 8},
            {"v2d", 16},           {"v2f", 8},       {"v2i", 8},
            {"v3d", 24},           {"v3f", 12},      {"v3i", 12},
        };
        const auto found = lengths.find(type);
        if ((found != lengths.end() && found->second != length) ||
            (type == "floatvector" && length % sizeof(float) != 0)) {
            throwWrongLength(name);
        }
    }

    [[noreturn]] static void throwWrongLength(const std::string& name) {
        throw Exception("Its header attribute \"" + String::fromUtf8(name) +
                        "\" has a length that its type does not have.");
    }

    /// True when the list ends where its attribute does.
    bool checkChannels(std::uint64_t end) {
        std::set<std::string> names;
        for (std::string name = readName(); !name.empty(); name = readName()) {
            if (!names.insert(name).second) {
                throw Exception("File stores duplicate channels.");
            }
            stream_.seek(stream_.getPosition() + kChannelDataSize);
        }
        return stream_.getPosition() == end;
    }

    std::string readName() {
        std::string name;
        for (char letter = readByte(); letter != '\0'; letter = readByte()) {
            name += letter;
            if (name.size() > kLongestName) {
                throw Exception("Its header is damaged: a name does not end.");
            }
        }
        return name;
    }

    char readByte() {
        char byte = 0;
        stream_.read(&byte, 1);
        return byte;
    }

    std::uint64_t readInteger() {
        std::array<unsigned char, 4> bytes{};
        stream_.read(bytes.data(), bytes.size());
        return bytes[0] | (bytes[1] << 8) | (bytes[2] << 16) | (std::uint64_t{bytes[3]} << 24);
    }

    BinaryFileInputStream& stream_;
};

/// What a compression method can do at best, and how it cuts an image into chunks.
struct CompressionLimit {
    double ratio;       ///< raw bytes for each stored byte, at most
    int linesPerChunk;  ///< of scan-line files
};

// Deflate stores at best 258 bytes in two bits (RFC 1951).
constexpr double kDeflateRatio = 1032.0;
// Runs of 128 bytes are stored in two bytes. DWA deflates such runs again; flat blocks of 64
// floats, 256 bytes, become two values of two bytes that are deflated, which comes to the same
// ratio.
constexpr double kRunLengthRatio = 64.0;

CompressionLimit getCompressionLimit(Imf::Compression compression) {
    switch (compression) {
        case Imf::NO_COMPRESSION:
            return {1.0, 1};
        case Imf::RLE_COMPRESSION:
            return {kRunLengthRatio, 1};
        case Imf::ZIPS_COMPRESSION:
            return {kDeflateRatio, 1};
        case Imf::ZIP_COMPRESSION:
            return {kDeflateRatio, 16};
        case Imf::PIZ_COMPRESSION:
            // Huffman codes of one bit with run lengths up to 255: 256 two-byte values in ten bits.
            return {410.0, 32};
        case Imf::PXR24_COMPRESSION:
            // Floats lose one byte of four before deflate.
            return {kDeflateRatio * 4.0 / 3.0, 16};
        case Imf::B44_COMPRESSION:
        case Imf::B44A_COMPRESSION:
            // A flat block of 16 half values takes three bytes; other types are stored as they are.
            return {32.0 / 3.0, 32};
        case Imf::DWAA_COMPRESSION:
            return {kDeflateRatio * kRunLengthRatio, 32};
        case Imf::DWAB_COMPRESSION:
            return {kDeflateRatio * kRunLengthRatio, 256};
        default:
            throw Exception("Its compression method is unknown.");
    }
}

// Of a float or an unsigned integer, in bytes.
constexpr double kValueSize = 4.0;

/// Sizes in bytes.
struct PixelSizes {
    double stored = 0.0;    ///< of one pixel in the file
    double inMemory = 0.0;  ///< of one pixel in channels
};

PixelSizes getPixelSizes(const Imf::Header& header) {
    PixelSizes sizes;
    const Imf::ChannelList& channels = header.channels();
    for (auto channel = channels.begin(); channel != channels.end(); ++channel) {
        const bool isHalf = channel.channel().type == Imf::HALF;
        const double sampling = double(channel.channel().xSampling) * channel.channel().ySampling;
        sizes.stored += (isHalf ? 0.5 : 1.0) * kValueSize / std::max(sampling, 1.0);
        sizes.inMemory += kValueSize;
    }
    return sizes;
}

double getLength(int first, int last) {
    return double(last) - double(first) + 1.0;
}

/// What of a header decides how much its pixels take. Lengths are floating-point numbers, since a
/// header may promise more than integers hold.
struct PixelPromise {
    double width;
    double height;
    double chunkWidth;
    double chunkHeight;
    PixelSizes sizes;

    PixelPromise(const Imf::Header& header, bool isTiled)
        : width(getLength(header.dataWindow().min.x, header.dataWindow().max.x)),
          height(getLength(header.dataWindow().min.y, header.dataWindow().max.y)),
          chunkWidth(isTiled ? double(header.tileDescription().xSize) : width),
          chunkHeight(isTiled ? double(header.tileDescription().ySize)
                              : getCompressionLimit(header.compression()).linesPerChunk),
          sizes(getPixelSizes(header)) {}

    double getChunkCount() const {
        return std::ceil(width / chunkWidth) * std::ceil(height / chunkHeight);
    }
    double getStoredSize() const { return width * height * sizes.stored; }
    double getMemorySize() const { return width * height * sizes.inMemory; }
};

String toText(double number) {
    return String::fromUtf8(std::to_string(static_cast<long long>(number)));
}

}  // namespace

void checkExrStructure(BinaryFileInputStream& stream) {
    HeaderWalker(stream).check();
}

void checkExrPixelLimits(const Imf::Header& header, bool isTiled, std::uint64_t fileSize) {
    const PixelPromise promise(header, isTiled);
    const CompressionLimit limit = getCompressionLimit(header.compression());
    // An entry in the table of chunks, and the chunk's own position and length.
    constexpr double kBytesPerChunk = 16.0;
    const double leastFileSize =
        promise.getChunkCount() * kBytesPerChunk + promise.getStoredSize() / limit.ratio;
    const String text = "Its header promises " + toText(promise.width) + " x " +
                        toText(promise.height) + " pixels in " +
                        toText(promise.sizes.inMemory / kValueSize) + " channels, ";
    if (leastFileSize > double(fileSize)) {
        throw Exception(text + "more than a file of " + toText(double(fileSize)) +
                        " bytes can hold.");
    }
    const double needed = promise.getMemorySize();
    const auto available = double(platform::availableMemory());
    constexpr double kMostValuesPerChannel = 4294967295.0;
    if (promise.width * promise.height > kMostValuesPerChannel) {
        throw Exception(text + "more than an image can have.");
    }
    // The library takes memory for whole tiles, also where the image is smaller.
    constexpr double kAlwaysAllowedTile = 256.0 * 1048576.0;
    const double tile = promise.chunkWidth * promise.chunkHeight * promise.sizes.stored;
    if (isTiled && tile > std::max(needed, kAlwaysAllowedTile)) {
        throw Exception("Its tiles of " + toText(promise.chunkWidth) + " x " +
                        toText(promise.chunkHeight) + " pixels are far larger than the image.");
    }
    if (needed > available) {
        constexpr double kMebibyte = 1048576.0;
        throw Exception(text + "which need " + toText(needed / kMebibyte) +
                        " MiB of memory; only " + toText(available / kMebibyte) +
                        " MiB are available.");
    }
}

int limitExrThreadCount(const Imf::Header& header, bool isTiled, int available) {
    const PixelPromise promise(header, isTiled);
    // The library keeps two chunks for each thread, each with the compressed and the raw bytes and
    // the compressor's own copy.
    constexpr double kBuffersPerThread = 2.0 * 3.0;
    constexpr double kPartOfImage = 0.12;
    constexpr double kAlwaysAllowed = 12.0 * 1048576.0;
    const double perThread =
        promise.chunkWidth * promise.chunkHeight * promise.sizes.stored * kBuffersPerThread;
    const double budget = std::max(promise.getMemorySize() * kPartOfImage, kAlwaysAllowed);
    return static_cast<int>(
        std::min(std::floor(budget / std::max(perThread, 1.0)), double(available)));
}

}  // namespace tavrin::image
