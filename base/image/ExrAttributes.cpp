#include "base/image/ExrAttributes.h"

#include "foundation/Exception.h"

#include <ImfBoxAttribute.h>
#include <ImfDoubleAttribute.h>
#include <ImfFloatAttribute.h>
#include <ImfIntAttribute.h>
#include <ImfStringAttribute.h>
#include <ImfVecAttribute.h>

#include <algorithm>
#include <limits>
#include <string_view>

namespace tavrin::image {
namespace {

// Tells of the chunks of the file that was read.
constexpr std::string_view kChunkCount = "chunkCount";

template <class T>
T fromExr(const T& value) {
    return value;
}

String fromExr(const std::string& value) {
    return String::fromUtf8(value);
}

Pixel fromExr(const Imath::V2i& value) {
    return {value.x, value.y};
}

Bucket fromExr(const Imath::Box2i& value) {
    return toBucket(value);
}

Rgb fromExr(const Imath::V3f& value) {
    return {value.x, value.y, value.z};
}

template <class T>
T toExr(const T& value) {
    return value;
}

std::string toExr(const String& value) {
    return value.toUtf8();
}

Imath::V2i toExr(const Pixel& value) {
    return {value.x, value.y};
}

Imath::Box2i toExr(const Bucket& value) {
    return toBox(value);
}

Imath::V3f toExr(const Rgb& value) {
    return {value.r, value.g, value.b};
}

using AttributeReader = std::unique_ptr<IAttribute> (*)(const String& name,
                                                        const Imf::Attribute& attribute);

template <class T>
std::unique_ptr<IAttribute> readAttribute(const String& name, const Imf::Attribute& attribute) {
    const auto* typed = dynamic_cast<const Imf::TypedAttribute<T>*>(&attribute);
    if (typed == nullptr) {
        throw Exception("Unexpected attribute type.");
    }
    auto value = fromExr(typed->value());
    return std::make_unique<Attribute<decltype(value)>>(name, std::move(value));
}

/// By the type names of the file format.
const std::map<std::string_view, AttributeReader>& getAttributeReaders() {
    static const std::map<std::string_view, AttributeReader> readers = {
        {"int", readAttribute<int>},        {"float", readAttribute<float>},
        {"double", readAttribute<double>},  {"string", readAttribute<std::string>},
        {"v2i", readAttribute<Imath::V2i>}, {"box2i", readAttribute<Imath::Box2i>},
        {"v3f", readAttribute<Imath::V3f>},
    };
    return readers;
}

std::string toAscii(const String& text) {
    std::string ascii;
    for (const char byte : text.toUtf8()) {
        // The first byte of a character, the others of which are from 0x80 to 0xBF.
        if ((byte & 0xC0) != 0x80) {
            ascii += (byte & 0x80) == 0 ? byte : '_';
        }
    }
    return ascii;
}

}  // namespace

void readExrAttributes(const Imf::Header& header, ChannelImage& image) {
    for (auto item = header.begin(); item != header.end(); ++item) {
        const auto reader = getAttributeReaders().find(item.attribute().typeName());
        if (reader == getAttributeReaders().end()) {
            continue;
        }
        const String name = String::fromUtf8(item.name());
        if (image.getAttributes().contains(name)) {
            throw Exception("File stores duplicate attributes.");
        }
        image.setAttribute(reader->second(name, item.attribute()));
    }
}

void writeExrAttributes(const ChannelImage& image, Imf::Header& header) {
    for (const auto& [name, attribute] : image.getAttributes()) {
        const std::string ascii = toAscii(name);
        if (header.find(ascii) != header.end() || ascii == kChunkCount) {
            continue;
        }
        visitAttribute(*attribute, [&]<class T>(const Attribute<T>& typed) {
            if constexpr (!std::is_same_v<T, bool>) {
                const auto value = toExr(typed.getValue());
                header.insert(ascii, Imf::TypedAttribute<std::decay_t<decltype(value)>>(value));
            }
        });
    }
}

Bucket toBucket(const Imath::Box2i& box) {
    // In 64 bits and clamped, as a box from a file may end at the largest integer.
    const auto exclusive = [](int last) {
        return static_cast<int>(
            std::min<std::int64_t>(std::int64_t{last} + 1, std::numeric_limits<int>::max()));
    };
    return {box.min.x, box.min.y, exclusive(box.max.x), exclusive(box.max.y)};
}

Imath::Box2i toBox(const Bucket& bucket) {
    const auto inclusive = [](int end) {
        return static_cast<int>(
            std::max<std::int64_t>(std::int64_t{end} - 1, std::numeric_limits<int>::min()));
    };
    return {Imath::V2i(bucket.x0, bucket.y0),
            Imath::V2i(inclusive(bucket.x1), inclusive(bucket.y1))};
}

}  // namespace tavrin::image
