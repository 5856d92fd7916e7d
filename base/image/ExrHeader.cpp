#include "base/image/ExrHeader.h"

#include "base/image/ExrAttributes.h"
#include "base/image/ExrLimits.h"
#include "foundation/Exception.h"

#include <ImfChannelList.h>
#include <ImfGenericInputFile.h>
#include <ImfVersion.h>

namespace tavrin::image {
namespace {

constexpr float kDefaultGamma = 1.0f;
const ElementInfo kBeauty = {kBeautyElement, ElementKind::Rgb, 0};

/// Gives access to the library's own check of the first eight bytes, with its messages.
class VersionReader final : public Imf::GenericInputFile {
public:
    static int read(Imf::IStream& stream) {
        int version = 0;
        VersionReader().readMagicNumberAndVersionField(stream, version);
        return version;
    }
};

using ChannelFactory = std::unique_ptr<IChannel> (*)(const String& name);

template <class T>
std::unique_ptr<IChannel> makeChannel(const String& name) {
    return std::make_unique<Channel<T>>(name);
}

const std::map<Imf::PixelType, ChannelFactory>& getChannelFactories() {
    static const std::map<Imf::PixelType, ChannelFactory> factories = {
        {Imf::UINT, makeChannel<std::uint32_t>},
        {Imf::FLOAT, makeChannel<float>},
        {Imf::HALF, makeChannel<float>},
    };
    return factories;
}

void addChannels(const Imf::Header& header, ChannelImage& image) {
    const Imf::ChannelList& channels = header.channels();
    for (auto item = channels.begin(); item != channels.end(); ++item) {
        const String name = String::fromUtf8(item.name());
        if (image.getChannels().contains(name)) {
            throw Exception("File stores duplicate channels.");
        }
        image.setChannel(getChannelFactories().at(item.channel().type)(name));
    }
}

}  // namespace

ExrHeader readExrHeader(ExrIStreamAdapter& adapter, BinaryFileInputStream& stream) {
    const int version = VersionReader::read(adapter);
    if (Imf::isMultiPart(version)) {
        throw Exception("It is a multi-part file; only files with a single part can be opened.");
    }
    if (Imf::isNonImage(version)) {
        throw Exception(
            "It stores deep data, several values for each pixel; only flat images can be opened.");
    }
    const std::uint64_t headerStart = stream.getPosition();
    checkExrStructure(stream);
    stream.seek(headerStart);

    ExrHeader file{{}, Imf::isTiled(version), {}};
    int headerVersion = version;
    file.header.readFrom(adapter, headerVersion);
    const Imath::Box2i& window = file.header.dataWindow();
    if (window.max.x < window.min.x || window.max.y < window.min.y) {
        throw Exception("File stores no pixel data.\n\nIts data window is defined empty.");
    }
    file.header.sanityCheck(file.isTiled);
    checkExrPixelLimits(file.header, file.isTiled, stream.getSize());

    readExrAttributes(file.header, file.image);
    addChannels(file.header, file.image);
    if (!file.image.hasAttribute<float>("gamma")) {
        file.image.setAttribute("gamma", kDefaultGamma);
    }
    return file;
}

void checkExrImage(const ChannelImage& image) {
    if (!image.hasValidHeader()) {
        throw Exception(
            "File stores an invalid image.\n\nIt either does not have all required and properly "
            "defined attributes (data and display windows, gamma), or its pixel data are "
            "incomplete.");
    }
    if (!image.hasElement(kBeauty)) {
        throw Exception(
            "File stores an image without a valid beauty element.\n\nIt is either incomplete, or "
            "not stored with a floating-point precision.");
    }
}

}  // namespace tavrin::image
