#pragma once

#include "base/image/Attribute.h"
#include "foundation/PixelArray.h"

#include <cstdint>
#include <memory>
#include <span>
#include <type_traits>

namespace tavrin::image {

/// A named plane of values over the data window of a ChannelImage.
class IChannel : public ItemInterfaceCommon<IChannel> {
public:
    virtual std::uint32_t getWidth() const = 0;
    virtual std::uint32_t getHeight() const = 0;
    /// The number of stored values, width × height.
    virtual std::uint32_t getSize() const = 0;
    /// Values that were there before stay where they are in the array; new ones are not
    /// initialised. Throws std::bad_alloc, also for more than 2^32 − 1 values.
    virtual void resize(Pixel size) = 0;
    virtual void resize(std::uint32_t width, std::uint32_t height) = 0;
};

/// T is float or std::uint32_t. Values are row-major: index y × width + x.
template <class T>
class Channel final : public IChannel {
    static_assert(std::is_same_v<T, float> || std::is_same_v<T, std::uint32_t>);

public:
    explicit Channel(String name) : name_(std::move(name)) {}
    Channel(const Channel& other);
    /// Leaves `other` 0 × 0, with its name.
    Channel(Channel&& other) noexcept;
    Channel& operator=(const Channel&) = delete;

    std::unique_ptr<IChannel> clone() const override { return std::make_unique<Channel>(*this); }
    std::unique_ptr<IChannel> moveClone() override {
        return std::make_unique<Channel>(std::move(*this));
    }
    const String& getName() const override { return name_; }
    std::uint32_t getWidth() const override { return width_; }
    std::uint32_t getHeight() const override { return height_; }
    std::uint32_t getSize() const override { return count_; }
    void resize(Pixel size) override;
    void resize(std::uint32_t width, std::uint32_t height) override;

    T* getData() { return values_.data(); }
    const T* getData() const { return values_.data(); }
    std::span<T> getValues() { return {values_.data(), count_}; }
    std::span<const T> getValues() const { return {values_.data(), count_}; }
    /// The number of values that the storage holds without growing.
    std::uint32_t getCapacity() const { return static_cast<std::uint32_t>(values_.size()); }

private:
    void reallocate(std::uint32_t capacity, std::uint32_t kept);

    String name_;
    PixelArray<T> values_;
    std::uint32_t count_ = 0;
    std::uint32_t width_ = 0;
    std::uint32_t height_ = 0;
};

extern template class Channel<float>;
extern template class Channel<std::uint32_t>;

}  // namespace tavrin::image
