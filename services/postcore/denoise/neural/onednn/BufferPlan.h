#pragma once

#include <cstddef>
#include <limits>
#include <vector>

namespace tavrin::postcore {

/// Shares one block of memory between buffers that are not in use at the same time.
class BufferPlan {
public:
    /// A buffer of so many bytes that is in use from step `first` to step `last`.
    struct Buffer {
        std::size_t bytes = 0;
        int first = std::numeric_limits<int>::max();
        int last = -1;
        std::size_t offset = 0;  ///< set by arrange(), a multiple of kAlignment
    };

    static constexpr std::size_t kAlignment = 64;

    /// Answers the number of the new buffer, which is not yet in use.
    int add(std::size_t bytes);
    /// The buffer is in use in this step, and in those between it and others.
    void use(int buffer, int step);
    /// Gives each buffer its place; answers the bytes of the whole block.
    std::size_t arrange();

    const Buffer& get(int buffer) const { return buffers_[static_cast<std::size_t>(buffer)]; }

private:
    std::vector<Buffer> buffers_;
};

}  // namespace tavrin::postcore
