#include "foundation/platform/Memory.h"

#include <gtest/gtest.h>

#include <cstring>

namespace tavrin {
namespace {

TEST(Memory, AvailableMemoryIsPlausible) {
    EXPECT_GT(platform::availableMemory(), std::uint64_t{1} << 20);
    EXPECT_LT(platform::availableMemory(), std::uint64_t{1} << 48);
}

#ifndef __SANITIZE_ADDRESS__  // which keeps what is given back
TEST(Memory, ThePeakStaysWhenMemoryIsGivenBackUntilItIsReset) {
    constexpr std::size_t kBytes = std::size_t{64} << 20;
    platform::resetPeakMemory();
    const std::uint64_t before = platform::getPeakMemory();
    if (before == 0) {
        GTEST_SKIP() << "The system does not tell.";
    }
    void* block = platform::allocatePixelMemory(kBytes);
    std::memset(block, 1, kBytes);
    platform::freePixelMemory(block);
    platform::releaseUnusedPixelMemory();
    EXPECT_GE(platform::getPeakMemory(), before + kBytes * 9 / 10);
    platform::resetPeakMemory();
    EXPECT_LT(platform::getPeakMemory(), before + kBytes / 2);
}
#endif

}  // namespace
}  // namespace tavrin
