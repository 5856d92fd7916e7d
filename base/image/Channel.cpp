#include "base/image/Channel.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

namespace tavrin::image {
namespace {

// Storage is given back when a channel shrinks below this part of its values.
constexpr float kShrinkThreshold = 0.9f;

}  // namespace

template <class T>
Channel<T>::Channel(const Channel& other)
    : name_(other.name_),
      values_(other.count_),
      count_(other.count_),
      width_(other.width_),
      height_(other.height_) {
    if (count_ != 0) {
        std::memcpy(values_.data(), other.values_.data(), count_ * sizeof(T));
    }
}

template <class T>
Channel<T>::Channel(Channel&& other) noexcept
    : name_(other.name_),
      values_(std::move(other.values_)),
      count_(std::exchange(other.count_, 0)),
      width_(std::exchange(other.width_, 0)),
      height_(std::exchange(other.height_, 0)) {}

template <class T>
void Channel<T>::resize(Pixel size) {
    resize(static_cast<std::uint32_t>(std::max(size.x, 0)),
           static_cast<std::uint32_t>(std::max(size.y, 0)));
}

template <class T>
void Channel<T>::resize(std::uint32_t width, std::uint32_t height) {
    if (width == width_ && height == height_) {
        return;
    }
    const std::uint64_t newCount = std::uint64_t{width} * height;
    constexpr std::uint64_t kLimit = std::numeric_limits<std::uint32_t>::max();
    if (newCount > kLimit) {
        throw std::bad_alloc();
    }
    const auto count = static_cast<std::uint32_t>(newCount);
    const std::uint64_t capacity = getCapacity();
    if (count > capacity) {
        const std::uint64_t grown = std::min(capacity + capacity / 2, kLimit);
        reallocate(std::max(count, static_cast<std::uint32_t>(grown)), count_);
    } else if (static_cast<float>(count) < kShrinkThreshold * static_cast<float>(count_) &&
               capacity > count) {
        reallocate(count, count);
    }
    count_ = count;
    width_ = width;
    height_ = height;
}

template <class T>
void Channel<T>::reallocate(std::uint32_t capacity, std::uint32_t kept) {
    PixelArray<T> storage(capacity);
    if (kept != 0) {
        std::memcpy(storage.data(), values_.data(), kept * sizeof(T));
    }
    values_ = std::move(storage);
}

template class Channel<float>;
template class Channel<std::uint32_t>;

}  // namespace tavrin::image
