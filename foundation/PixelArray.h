#pragma once

#include "foundation/platform/Memory.h"

#include <cstddef>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace tavrin {
inline namespace foundation {

/// A fixed number of plain values in one aligned block. The values are not initialised: pixel data
/// are written once by whoever fills them. Copying copies the values.
template <class T>
class PixelArray {
    static_assert(std::is_trivially_copyable_v<T>);

public:
    PixelArray() = default;
    /// Throws std::bad_alloc.
    explicit PixelArray(std::size_t count) : count_(count) {
        if (count > std::numeric_limits<std::size_t>::max() / sizeof(T)) {
            throw std::bad_alloc();
        }
        if (count != 0) {
            values_.reset(static_cast<T*>(platform::allocatePixelMemory(count * sizeof(T))));
        }
    }
    PixelArray(const PixelArray& other) : PixelArray(other.count_) {
        if (count_ != 0) {
            std::memcpy(static_cast<void*>(data()), other.data(), count_ * sizeof(T));
        }
    }
    PixelArray(PixelArray&& other) noexcept
        : values_(std::move(other.values_)), count_(std::exchange(other.count_, 0)) {}
    PixelArray& operator=(PixelArray other) noexcept {
        std::swap(values_, other.values_);
        std::swap(count_, other.count_);
        return *this;
    }
    ~PixelArray() = default;

    std::size_t size() const { return count_; }
    T* data() { return values_.get(); }
    const T* data() const { return values_.get(); }
    T& operator[](std::size_t index) { return values_.get()[index]; }
    const T& operator[](std::size_t index) const { return values_.get()[index]; }

private:
    struct Release {
        void operator()(T* block) const noexcept { platform::freePixelMemory(block); }
    };

    std::unique_ptr<T, Release> values_;
    std::size_t count_ = 0;
};

}  // namespace foundation
}  // namespace tavrin
