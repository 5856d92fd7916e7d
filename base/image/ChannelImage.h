#pragma once

#include "base/image/Attribute.h"
#include "base/image/Channel.h"
#include "base/image/ElementInfo.h"
#include "foundation/Bitmap.h"
#include "foundation/Path.h"
#include "foundation/Result.h"
#include "services/postcore/RenderElementInfo.h"

#include <map>
#include <memory>
#include <vector>

namespace tavrin::image {

/// The one in-memory form of an image: named planes of values (channels) over its data window, and
/// named typed header values (attributes), each with a unique name. A render element is a naming
/// convention over channels. Regions are in coordinates relative to the data window, whose top-left
/// pixel is (0, 0). No lock: one thread may change an image while no other reads it.
class ChannelImage {
public:
    using Attributes = std::map<String, std::unique_ptr<IAttribute>>;
    using Channels = std::map<String, std::unique_ptr<IChannel>>;

    /// Reads a file into an image. Implementations hold no state.
    class ILoader {
    public:
        virtual ~ILoader() = default;
        /// The image, or a message that names the file.
        virtual Result<ChannelImage> load(const Path& path) const = 0;
    };
    /// Writes an image into a file. Implementations hold no state.
    class ISaver {
    public:
        virtual ~ISaver() = default;
        /// Success, or a message that names the file.
        virtual Result<void> save(const ChannelImage& image, const Path& path) const = 0;
    };

    ChannelImage() = default;
    /// An image with exactly the three standard attributes "displayWindow", "dataWindow", "gamma".
    ChannelImage(const Bucket& displayWindow, const Bucket& dataWindow, float gamma);

    bool isEmpty() const { return attributes_.empty() && channels_.empty(); }

    const Attributes& getAttributes() const { return attributes_; }
    template <class T>
    bool hasAttribute(const String& name) const {
        return findAttribute<T>(name) != nullptr;
    }
    /// The caller has checked hasAttribute<T>.
    template <class T>
    const T& getAttribute(const String& name) const {
        return findAttribute<T>(name)->getValue();
    }
    template <class T>
    T& getAttribute(const String& name) {
        return const_cast<T&>(std::as_const(*this).template getAttribute<T>(name));
    }
    /// Inserts, replacing any attribute of the same name.
    void setAttribute(std::unique_ptr<IAttribute> attribute);
    template <class T>
    void setAttribute(const String& name, T value) {
        setAttribute(std::make_unique<Attribute<T>>(name, std::move(value)));
    }

    const Channels& getChannels() const { return channels_; }
    template <class T>
    bool hasChannel(const String& name) const {
        return findChannel<T>(name) != nullptr;
    }
    /// The caller has checked hasChannel<T>.
    template <class T>
    const Channel<T>& getChannel(const String& name) const {
        return *findChannel<T>(name);
    }
    template <class T>
    Channel<T>& getChannel(const String& name) {
        return const_cast<Channel<T>&>(std::as_const(*this).template getChannel<T>(name));
    }
    /// Inserts an empty float channel, replacing any channel of that name.
    void addChannel(const String& name);
    /// Inserts, replacing any channel of the same name.
    void setChannel(std::unique_ptr<IChannel> channel);
    /// No effect where there is none of that name.
    void removeChannel(const String& name) { channels_.erase(name); }
    /// Resizes every channel to the data window's size. Throws std::bad_alloc.
    void fitChannelsToDataWindow();

    /// The windows of an image that has them (see isValid).
    const Bucket& getDisplayWindow() const { return getAttribute<Bucket>("displayWindow"); }
    const Bucket& getDataWindow() const { return getAttribute<Bucket>("dataWindow"); }

    /// True when the element's channels exist as float channels. Unsupported kinds are a
    /// programming error, here and in addElement and the write operations.
    bool hasElement(const ElementInfo& element) const;
    /// Adds each channel of the element that is not yet a float channel, empty.
    void addElement(const ElementInfo& element);
    /// The render elements with their kinds and flags, light selects first. Throws an Exception
    /// when the metadata text is broken.
    std::vector<ElementInfo> getElements() const;
    /// The renderer's metadata of the elements, from "tavrin.elements" or, in older files, from
    /// "tavrin.lightmix.elements". Throws an Exception when the text is broken.
    std::vector<postcore::RenderElementInfo> getRenderElementInfos() const;
    /// Stores the metadata as "tavrin.elements".
    void setRenderElementInfos(const std::vector<postcore::RenderElementInfo>& infos);

    /// The standard attributes exist, the windows are not empty and one contains the other, and
    /// there is a channel.
    bool hasValidHeader() const;
    /// The header is valid, and every channel has the data window's size.
    bool isValid() const;
    /// The attributes that mark a TXR image and its render statistics exist with their types.
    bool isTxrImage() const;
    /// Both windows lie within those of `other` and the gammas agree to 0.0001; both are valid.
    bool fitsWithin(const ChannelImage& other) const;

    /// Pixels of an element over a region, one for every scale × scale image pixels: point samples
    /// for a scale above 1, repeated pixels below 1 (then a reciprocal of a whole number). The
    /// fourth float is 1.0 for Rgb and the element's alpha for Rgba. Throws std::bad_alloc.
    BitmapImpl<Rgb> getRgbRegion(const String& element, const Bucket& region, float scale) const;
    BitmapImpl<Rgba> getRgbaRegion(const String& element, const Bucket& region, float scale) const;
    BitmapImpl<float> getMonoRegion(const String& channel, const Bucket& region, float scale) const;
    /// getRgbaRegion as colours of the pipeline, which carry alpha in the fourth float.
    BitmapImpl<Rgb> getRgbRegionWithAlpha(const String& element, const Bucket& region,
                                          float scale) const;

    /// Writes a bitmap of the data window's size into the channels of an element, which exist and
    /// have been fitted to the data window.
    void setRgb(const ElementInfo& element, const BitmapImpl<Rgb>& bitmap);
    void setRgba(const ElementInfo& element, const BitmapImpl<Rgba>& bitmap);
    /// setRgba for colours of the pipeline, which carry alpha in the fourth float.
    void setRgbWithAlpha(const ElementInfo& element, const BitmapImpl<Rgb>& bitmap);
    void setMono(const ElementInfo& element, const BitmapImpl<float>& bitmap);

private:
    template <class T>
    const Attribute<T>* findAttribute(const String& name) const {
        const auto found = attributes_.find(name);
        return found == attributes_.end() ? nullptr
                                          : dynamic_cast<const Attribute<T>*>(found->second.get());
    }
    template <class T>
    const Channel<T>* findChannel(const String& name) const {
        const auto found = channels_.find(name);
        return found == channels_.end() ? nullptr
                                        : dynamic_cast<const Channel<T>*>(found->second.get());
    }

    Attributes attributes_;
    Channels channels_;
};

/// E + "." + component when both are non-empty, otherwise whichever is non-empty.
String joinChannelName(const String& element, const String& component);

struct ChannelNameParts {
    String element;
    String component;
};
/// The element and the component of a channel's name; "R" is component R of the beauty.
ChannelNameParts splitChannelName(const String& channel);

/// Every NaN of a float channel becomes +0, except in channels whose name starts with "Denoised".
void blackenNans(ChannelImage& image);

/// Turns rows upside down while converting between the padded and the packed layout (the fourth
/// float is dropped, or written as 0). The destination has the source's size.
void flipVertical(const BitmapImpl<Rgb>& source, BitmapImpl<CompressedRgb>& destination);
void flipVertical(const BitmapImpl<CompressedRgb>& source, BitmapImpl<Rgb>& destination);

/// The first record that describes the element, or null.
const postcore::RenderElementInfo* findMatchingElementCoreInfo(
    const std::vector<postcore::RenderElementInfo>& infos, const ElementInfo& element);

}  // namespace tavrin::image
