#include "base/image/ExrInfo.h"

#include "base/image/Exr.h"
#include "base/image/ExrHeader.h"
#include "foundation/Exception.h"

#include <ImfChannelList.h>
#include <ImfCompression.h>

#include <array>

namespace tavrin::image {
namespace {

String getPixelTypeName(Imf::PixelType type) {
    switch (type) {
        case Imf::UINT:
            return "uint";
        case Imf::HALF:
            return "half";
        default:
            return "float";
    }
}

String getCompressionName(Imf::Compression compression) {
    // In the order of the library's enumeration.
    static constexpr std::array kNames = {"none",  "rle", "zips", "zip",  "piz",
                                          "pxr24", "b44", "b44a", "dwaa", "dwab"};
    static_assert(kNames.size() == Imf::NUM_COMPRESSION_METHODS);
    return kNames.at(compression);
}

ExrInfo readInfo(const Path& path) {
    BinaryFileInputStream stream(path);
    const std::string fileName = path.native().toUtf8();
    ExrIStreamAdapter adapter(fileName.c_str(), stream);
    ExrHeader file = readExrHeader(adapter, stream);

    ExrInfo info;
    info.fileSize = stream.getSize();
    info.isTiled = file.isTiled;
    info.compression = getCompressionName(file.header.compression());
    const Imf::ChannelList& channels = file.header.channels();
    for (auto item = channels.begin(); item != channels.end(); ++item) {
        info.channels.push_back(
            {String::fromUtf8(item.name()), getPixelTypeName(item.channel().type)});
    }
    for (auto item = file.header.begin(); item != file.header.end(); ++item) {
        info.attributes.push_back(
            {String::fromUtf8(item.name()), String::fromUtf8(item.attribute().typeName())});
    }
    info.image = std::move(file.image);
    try {
        info.elements = info.image.getElements();
        checkExrImage(info.image);
    } catch (const Exception& exception) {
        info.loadFailure = makeFileMessage(exception.message(), path);
    }
    return info;
}

}  // namespace

Result<ExrInfo> readExrInfo(const Path& path) {
    try {
        return readInfo(path);
    } catch (const std::exception& exception) {
        return Failure(makeFileMessage(exceptionToString(exception), path));
    }
}

}  // namespace tavrin::image
