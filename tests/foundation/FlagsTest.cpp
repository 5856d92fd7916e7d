#include "foundation/Flags.h"

#include <gtest/gtest.h>

namespace tavrin {
namespace {

enum class Bits : std::uint32_t { A = 1, B = 2, Both = 3, High = 0x80000000u };

TEST(Flags, HoldTheirBits) {
    Flags<Bits> flags{Bits::A, Bits::High};
    EXPECT_EQ(flags.bits(), 0x80000001u);
    EXPECT_FALSE(flags.has(Bits::Both));
    flags.set(Bits::B);
    EXPECT_TRUE(flags.has(Bits::Both));
    flags.set(Bits::A, false);
    EXPECT_EQ(flags, Flags<Bits>(Bits::B) | Flags<Bits>(Bits::High));
}

TEST(Flags, KeepBitsWithoutAName) {
    auto flags = Flags<Bits>::fromBits(0x40000001u);
    flags.set(Bits::A, false);
    EXPECT_EQ(flags.bits(), 0x40000000u);
}

}  // namespace
}  // namespace tavrin
