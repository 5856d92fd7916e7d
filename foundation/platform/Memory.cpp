#include "foundation/platform/Memory.h"

#include <sys/mman.h>
#include <tbb/scalable_allocator.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <limits>
#include <new>
#include <sstream>
#include <string>
#include <string_view>

namespace tavrin {
inline namespace foundation {
namespace platform {
namespace {

constexpr std::size_t kLargePage = std::size_t{2} << 20;
constexpr std::size_t kCacheLine = 64;
constexpr std::uint64_t kUnknown = std::numeric_limits<std::uint64_t>::max();

std::uint64_t readNumber(const std::filesystem::path& file) {
    std::ifstream stream(file);
    std::uint64_t number = 0;
    // A group without a limit says "max", which is no number.
    return stream >> number ? number : kUnknown;
}

/// The sum of the entries of a file of lines "key number [unit]"; missing ones count as 0, and
/// lines of other kinds are passed over.
std::uint64_t sumEntries(const std::filesystem::path& file,
                         std::initializer_list<std::string_view> keys) {
    std::ifstream stream(file);
    std::uint64_t sum = 0;
    for (std::string line; std::getline(stream, line);) {
        std::istringstream words(line);
        std::string key;
        std::uint64_t number = 0;
        if (words >> key >> number && std::find(keys.begin(), keys.end(), key) != keys.end()) {
            sum += number;
        }
    }
    return sum;
}

std::uint64_t systemAvailable() {
    const std::uint64_t kibibytes = sumEntries("/proc/meminfo", {"MemAvailable:"});
    return kibibytes == 0 ? kUnknown : kibibytes * 1024;
}

std::uint64_t groupAvailable(const std::filesystem::path& group) {
    const std::uint64_t limit = readNumber(group / "memory.max");
    const std::uint64_t used = readNumber(group / "memory.current");
    if (limit == kUnknown || used == kUnknown) {
        return kUnknown;
    }
    // Cached file contents count as used, but are given up for a process that needs memory.
    const std::uint64_t cached =
        std::min(used, sumEntries(group / "memory.stat", {"active_file", "inactive_file"}));
    return limit - std::min(limit, used - cached);
}

/// The least of the process's control group and the groups around it.
std::uint64_t controlGroupAvailable() {
    static constexpr std::string_view kUnified = "0::/";
    std::ifstream stream("/proc/self/cgroup");
    std::string line;
    while (std::getline(stream, line) && !line.starts_with(kUnified)) {
    }
    const std::filesystem::path root = "/sys/fs/cgroup";
    std::uint64_t available = groupAvailable(root);
    if (line.starts_with(kUnified)) {
        std::filesystem::path group = root;
        for (const auto& name : std::filesystem::path(line.substr(kUnified.size()))) {
            group /= name;
            available = std::min(available, groupAvailable(group));
        }
    }
    return available;
}

#ifdef TAVRIN_SANITIZED
// The sanitizers watch over the memory of the standard library only.
void* allocateAligned(std::size_t bytes) {
    void* block = nullptr;
    return posix_memalign(&block, kCacheLine, bytes) == 0 ? block : nullptr;
}

void freeAligned(void* block) noexcept {
    std::free(block);
}

void releaseUnused() {}
#else
// Keeps blocks that have been given back for the next ones of about their size: a bitmap is made
// for every repaint, and fresh pages from the system would take several times as long as its
// pixels.
void* allocateAligned(std::size_t bytes) {
    return scalable_aligned_malloc(bytes, kCacheLine);
}

void freeAligned(void* block) noexcept {
    scalable_aligned_free(block);
}

void releaseUnused() {
    scalable_allocation_command(TBBMALLOC_CLEAN_ALL_BUFFERS, nullptr);
}
#endif

}  // namespace

std::uint64_t availableMemory() {
    return std::min(systemAvailable(), controlGroupAvailable());
}

std::uint64_t getPeakMemory() {
    return sumEntries("/proc/self/status", {"VmHWM:"}) * 1024;
}

void resetPeakMemory() {
    // The kernel's documented way (proc(5), clear_refs).
    std::ofstream("/proc/self/clear_refs") << 5;
}

void* allocatePixelMemory(std::size_t bytes) {
    void* block = allocateAligned(bytes);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    if (bytes >= 2 * kLargePage) {
        // Only the whole large pages inside, so that the block takes no more memory than it needs.
        // A refusal costs nothing but speed.
        const std::size_t beyond = reinterpret_cast<std::uintptr_t>(block) % kLargePage;
        const std::size_t skipped = beyond == 0 ? 0 : kLargePage - beyond;
        static_cast<void>(madvise(static_cast<std::byte*>(block) + skipped,
                                  (bytes - skipped) / kLargePage * kLargePage, MADV_HUGEPAGE));
    }
    return block;
}

void freePixelMemory(void* block) noexcept {
    freeAligned(block);
}

void releaseUnusedPixelMemory() {
    releaseUnused();
}

}  // namespace platform
}  // namespace foundation
}  // namespace tavrin
