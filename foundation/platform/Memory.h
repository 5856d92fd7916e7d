#pragma once

#include <cstddef>
#include <cstdint>

namespace tavrin {
inline namespace foundation {
namespace platform {

/// Bytes that a process can still take without swapping: what the system calls available, or what
/// is left of the limit of its control group where that is less. The maximum value when the system
/// does not tell.
std::uint64_t availableMemory();

/// The most resident memory that the process has had since it started or since resetPeakMemory(),
/// in bytes. 0 when the system does not tell.
std::uint64_t getPeakMemory();
/// Lets the peak start anew at what is resident now, where the system can do that.
void resetPeakMemory();

/// `bytes` of uninitialised memory for pixels, aligned to at least 64 bytes; large blocks are laid
/// out so that the system can back them with large pages. Throws std::bad_alloc. May be called from
/// any thread; the block is given back with freePixelMemory.
void* allocatePixelMemory(std::size_t bytes);
/// May keep the block for the next one of about its size.
void freePixelMemory(void* block) noexcept;
/// Gives the system back what freePixelMemory has kept: worth its time when a large image has been
/// closed. May be called from any thread.
void releaseUnusedPixelMemory();

}  // namespace platform
}  // namespace foundation
}  // namespace tavrin
