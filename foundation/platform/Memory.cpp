#include "foundation/platform/Memory.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <new>
#include <string>

namespace tavrin {
inline namespace foundation {
namespace platform {
namespace {

constexpr std::size_t kLargePage = std::size_t{2} << 20;
constexpr std::size_t kCacheLine = 64;
constexpr std::uint64_t kUnknown = std::numeric_limits<std::uint64_t>::max();

std::uint64_t readNumber(const char* file) {
    std::ifstream stream(file);
    std::uint64_t number = 0;
    // A group without a limit says "max", which is no number.
    return stream >> number ? number : kUnknown;
}

std::uint64_t systemAvailable() {
    std::ifstream stream("/proc/meminfo");
    std::string key;
    std::uint64_t kibibytes = 0;
    std::string unit;
    while (stream >> key >> kibibytes) {
        std::getline(stream, unit);
        if (key == "MemAvailable:") {
            return kibibytes * 1024;
        }
    }
    return kUnknown;
}

std::uint64_t controlGroupAvailable() {
    const std::uint64_t limit = readNumber("/sys/fs/cgroup/memory.max");
    const std::uint64_t used = readNumber("/sys/fs/cgroup/memory.current");
    if (limit == kUnknown || used == kUnknown) {
        return kUnknown;
    }
    return limit - std::min(limit, used);
}

}  // namespace

std::uint64_t availableMemory() {
    return std::min(systemAvailable(), controlGroupAvailable());
}

void* allocatePixelMemory(std::size_t bytes) {
    const std::size_t alignment = bytes >= 2 * kLargePage ? kLargePage : kCacheLine;
    if (bytes > std::numeric_limits<std::size_t>::max() - alignment) {
        throw std::bad_alloc();
    }
    const std::size_t rounded = (bytes + kCacheLine - 1) / kCacheLine * kCacheLine;
    void* block = std::aligned_alloc(alignment, std::max(rounded, kCacheLine));
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    if (alignment == kLargePage) {
        // Only whole large pages, so that the block's end takes no more memory than it needs.
        // A refusal costs nothing but speed.
        static_cast<void>(madvise(block, bytes / kLargePage * kLargePage, MADV_HUGEPAGE));
    }
    return block;
}

void freePixelMemory(void* block) noexcept {
    std::free(block);
}

}  // namespace platform
}  // namespace foundation
}  // namespace tavrin
