#include "base/image/ChannelImage.h"

#include "base/image/AttributeNames.h"
#include "base/image/ImageIterators.h"
#include "base/image/RegionSampling.h"
#include "base/image/RowLoop.h"
#include "foundation/FatalError.h"

#include <algorithm>
#include <cmath>

namespace tavrin::image {
namespace {

constexpr float kGammaTolerance = 0.0001f;

/// The channels of an element, in the order of its components.
std::vector<String> getChannelNames(const ElementInfo& element) {
    const auto join = [&element](const char16_t* component) {
        return joinChannelName(element.name, component);
    };
    switch (element.kind) {
        case ElementKind::Rgb:
            return {join(u"R"), join(u"G"), join(u"B")};
        case ElementKind::Rgba:
            return {join(u"R"), join(u"G"), join(u"B"), join(u"A")};
        case ElementKind::Mono:
            return {element.name};
        case ElementKind::Unsupported:
            break;
    }
    fatalError("An element of unsupported kind has no channels to address.");
}

void requireKind(const ElementInfo& element, ElementKind kind) {
    if (element.kind != kind) {
        fatalError("The bitmap does not suit the kind of the element.");
    }
}

/// Addresses a single channel row by row.
class MonoRows {
public:
    struct Row {
        const float* values;

        float operator[](std::size_t x) const { return values[x]; }
        void read(std::size_t x, std::span<float> pixels) const {
            std::copy_n(values + x, pixels.size(), pixels.data());
        }
    };

    MonoRows(const ChannelImage& image, const String& channel)
        : values_(image.getChannel<float>(channel).getData()),
          width_(std::size_t(image.getDataWindow().width())) {}

    Row row(int y) const { return {values_ + std::size_t(y) * width_}; }

private:
    const float* values_;
    std::size_t width_;
};

/// Addresses the four channels of an element as colours with alpha in the fourth float.
class RgbWithAlphaRows {
public:
    struct Row {
        RgbaIteratorHelperCommon<const float>::Row pixels;

        Rgb operator[](std::size_t x) const {
            const Rgba pixel = pixels[x];
            return {pixel.r, pixel.g, pixel.b, pixel.a};
        }
        void read(std::size_t x, std::span<Rgb> to) const { pixels.read(x, to); }
    };

    RgbWithAlphaRows(const ChannelImage& image, const String& element) : pixels_(image, element) {}

    Row row(int y) const { return {pixels_.row(y)}; }

private:
    RgbaIteratorHelperCommon<const float> pixels_;
};

template <class Target, class P>
void writeRows(const Target& target, const BitmapImpl<P>& bitmap) {
    forEachRow(bitmap.getSize(), [&](int y) {
        const auto to = target.row(y);
        const auto from = bitmap.row(y);
        for (std::size_t x = 0; x < from.size(); ++x) {
            to.set(x, from[x]);
        }
    });
}

template <class From, class To, class Convert>
void flipRows(const BitmapImpl<From>& source, BitmapImpl<To>& destination, Convert convert) {
    const int height = source.getHeight();
    forEachRow(source.getSize(), [&](int y) {
        std::ranges::transform(source.row(height - 1 - y), destination.row(y).begin(), convert);
    });
}

}  // namespace

ChannelImage::ChannelImage(const Bucket& displayWindow, const Bucket& dataWindow, float gamma) {
    setAttribute("displayWindow", displayWindow);
    setAttribute("dataWindow", dataWindow);
    setAttribute("gamma", gamma);
}

void ChannelImage::setAttribute(std::unique_ptr<IAttribute> attribute) {
    String name = attribute->getName();
    attributes_.insert_or_assign(std::move(name), std::move(attribute));
}

void ChannelImage::addChannel(const String& name) {
    setChannel(std::make_unique<Channel<float>>(name));
}

void ChannelImage::setChannel(std::unique_ptr<IChannel> channel) {
    String name = channel->getName();
    channels_.insert_or_assign(std::move(name), std::move(channel));
}

void ChannelImage::fitChannelsToDataWindow() {
    const Bucket& window = getDataWindow();
    const Pixel size = window.isEmpty() ? Pixel{} : window.size();
    for (const auto& [name, channel] : channels_) {
        channel->resize(size);
    }
}

bool ChannelImage::hasElement(const ElementInfo& element) const {
    for (const String& name : getChannelNames(element)) {
        if (!hasChannel<float>(name)) {
            return false;
        }
    }
    return true;
}

void ChannelImage::addElement(const ElementInfo& element) {
    for (const String& name : getChannelNames(element)) {
        if (!hasChannel<float>(name)) {
            addChannel(name);
        }
    }
}

bool ChannelImage::hasValidHeader() const {
    if (!hasAttribute<Bucket>("displayWindow") || !hasAttribute<Bucket>("dataWindow") ||
        !hasAttribute<float>("gamma")) {
        return false;
    }
    const Bucket& display = getDisplayWindow();
    const Bucket& data = getDataWindow();
    return !display.isEmpty() && !data.isEmpty() &&
           (display.contains(data) || data.contains(display)) && !channels_.empty();
}

bool ChannelImage::isValid() const {
    if (!hasValidHeader()) {
        return false;
    }
    const Bucket& data = getDataWindow();
    return std::ranges::all_of(channels_, [&data](const auto& item) {
        return item.second->getWidth() == static_cast<std::uint32_t>(data.width()) &&
               item.second->getHeight() == static_cast<std::uint32_t>(data.height());
    });
}

bool ChannelImage::isTxrImage() const {
    return hasAttribute<int>(kTxrMarkerAttribute) && getAttribute<int>(kTxrMarkerAttribute) == 1 &&
           std::ranges::all_of(kSummedStatistics,
                               [this](const String& name) { return hasAttribute<int>(name); }) &&
           hasAttribute<float>(kRaysPerSampleStatistic);
}

bool ChannelImage::fitsWithin(const ChannelImage& other) const {
    return other.getDisplayWindow().contains(getDisplayWindow()) &&
           other.getDataWindow().contains(getDataWindow()) &&
           std::abs(getAttribute<float>("gamma") - other.getAttribute<float>("gamma")) <=
               kGammaTolerance;
}

BitmapImpl<Rgb> ChannelImage::getRgbRegion(const String& element, const Bucket& region,
                                           float scale) const {
    return sampleRegion<Rgb>(RgbIteratorHelperCommon<const float>(*this, element), region, scale);
}

BitmapImpl<Rgba> ChannelImage::getRgbaRegion(const String& element, const Bucket& region,
                                             float scale) const {
    return sampleRegion<Rgba>(RgbaIteratorHelperCommon<const float>(*this, element), region, scale);
}

BitmapImpl<float> ChannelImage::getMonoRegion(const String& channel, const Bucket& region,
                                              float scale) const {
    return sampleRegion<float>(MonoRows(*this, channel), region, scale);
}

BitmapImpl<Rgb> ChannelImage::getRgbRegionWithAlpha(const String& element, const Bucket& region,
                                                    float scale) const {
    return sampleRegion<Rgb>(RgbWithAlphaRows(*this, element), region, scale);
}

void ChannelImage::setRgb(const ElementInfo& element, const BitmapImpl<Rgb>& bitmap) {
    requireKind(element, ElementKind::Rgb);
    writeRows(RgbIteratorHelperCommon<float>(*this, element.name), bitmap);
}

void ChannelImage::setRgba(const ElementInfo& element, const BitmapImpl<Rgba>& bitmap) {
    requireKind(element, ElementKind::Rgba);
    writeRows(RgbaIteratorHelperCommon<float>(*this, element.name), bitmap);
}

void ChannelImage::setRgbWithAlpha(const ElementInfo& element, const BitmapImpl<Rgb>& bitmap) {
    requireKind(element, ElementKind::Rgba);
    const RgbaIteratorHelperCommon<float> target(*this, element.name);
    forEachRow(bitmap.getSize(), [&](int y) {
        const auto to = target.row(y);
        const auto from = bitmap.row(y);
        for (std::size_t x = 0; x < from.size(); ++x) {
            to.set(x, {from[x].r, from[x].g, from[x].b, from[x].a});
        }
    });
}

void ChannelImage::setMono(const ElementInfo& element, const BitmapImpl<float>& bitmap) {
    requireKind(element, ElementKind::Mono);
    std::ranges::copy(bitmap.pixels(), getChannel<float>(element.name).getData());
}

void blackenNans(ChannelImage& image) {
    for (const auto& [name, item] : image.getChannels()) {
        auto* channel = dynamic_cast<Channel<float>*>(item.get());
        if (channel == nullptr || isDenoisedElementName(name)) {
            continue;
        }
        const Pixel size = {int(channel->getWidth()), int(channel->getHeight())};
        const auto width = std::size_t(size.x);
        forEachRow(size, [channel, width](int y) {
            for (float& value : channel->getValues().subspan(std::size_t(y) * width, width)) {
                value = std::isnan(value) ? 0.0f : value;
            }
        });
    }
}

void flipVertical(const BitmapImpl<Rgb>& source, BitmapImpl<CompressedRgb>& destination) {
    flipRows(source, destination, [](const Rgb& color) {
        return CompressedRgb{color.r, color.g, color.b};
    });
}

void flipVertical(const BitmapImpl<CompressedRgb>& source, BitmapImpl<Rgb>& destination) {
    flipRows(source, destination, [](const CompressedRgb& color) {
        return Rgb{color.r, color.g, color.b, 0.0f};
    });
}

}  // namespace tavrin::image
