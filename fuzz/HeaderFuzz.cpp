// The metadata in an image's header, without the file format around them. The input is a row of
// attributes and channels: a byte that chooses the name, one that chooses the type, the value.

#include "base/image/AttributeNames.h"
#include "services/postcore/LegacyToneMapping.h"
#include "services/postcore/PropertyDescriptor.h"

#include "fuzz/FuzzSupport.h"
#include "fuzz/ImageChecks.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <vector>

using namespace tavrin;
using image::ChannelImage;

namespace {

const std::vector<String>& getNames() {
    static const std::vector<String> names = [] {
        std::vector<String> list = {
            image::kElementsAttribute,   image::kLightMixElementsAttribute,
            image::kPipelineAttribute,   image::kColorMappingEnabledAttribute,
            image::kCameraTypeAttribute, image::kCameraVrAttribute};
        for (const auto* descriptors : {&postcore::getLegacyTonemappingDescriptors(),
                                        &postcore::PropertyDescriptor::list()}) {
            for (const postcore::PropertyDescriptor& descriptor : *descriptors) {
                list.push_back(postcore::getPropertyExrName(descriptor));
            }
        }
        return list;
    }();
    return names;
}

/// Takes values from the front of the bytes; zeros when there are no more.
class Values {
public:
    explicit Values(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    bool isAtEnd() const { return bytes_.empty(); }

    template <class T>
    T take() {
        T value{};
        const std::size_t size = std::min(sizeof(T), bytes_.size());
        std::memcpy(&value, bytes_.data(), size);
        bytes_ = bytes_.subspan(size);
        return value;
    }

    /// Up to a zero.
    String takeText() {
        const auto end = std::ranges::find(bytes_, 0);
        const auto size = static_cast<std::size_t>(end - bytes_.begin());
        const String text = fuzz::toText(bytes_.data(), size);
        bytes_ = bytes_.subspan(std::min(size + 1, bytes_.size()));
        return text;
    }

private:
    std::span<const std::uint8_t> bytes_;
};

void takeOne(Values& values, ChannelImage& image) {
    const String& name = getNames()[values.take<std::uint8_t>() % getNames().size()];
    switch (values.take<std::uint8_t>()) {
        case 'i':
            return image.setAttribute(name, values.take<int>());
        case 'f':
            return image.setAttribute(name, values.take<float>());
        case 'v':
            return image.setAttribute(name, values.take<Rgb>());
        case 'c':
            return image.addChannel(values.takeText());
        default:
            return image.setAttribute(name, values.takeText());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Values values({data, size});
    ChannelImage image;
    while (!values.isAtEnd()) {
        takeOne(values, image);
    }
    fuzz::checkMetadata(image);
    return 0;
}
