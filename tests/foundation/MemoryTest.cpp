#include "foundation/platform/Memory.h"

#include <gtest/gtest.h>

#include <limits>

namespace tavrin {
namespace {

TEST(Memory, AvailableMemoryIsPlausible) {
    const std::uint64_t bytes = platform::availableMemory();
    EXPECT_GT(bytes, std::uint64_t{1} << 20);
    EXPECT_LT(bytes, std::uint64_t{1} << 48);
}

}  // namespace
}  // namespace tavrin
