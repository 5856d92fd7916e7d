#pragma once

#include <cstdint>
#include <initializer_list>
#include <type_traits>

namespace tavrin {
inline namespace foundation {

/// A set of bits named by the enumeration E, whose values are the bits. Bits without a name (from a
/// newer writer) are kept.
template <class E>
requires std::is_enum_v<E>
class Flags {
public:
    constexpr Flags() = default;
    constexpr Flags(E flag) : bits_(static_cast<std::uint32_t>(flag)) {}
    constexpr Flags(std::initializer_list<E> flags) {
        for (const E flag : flags) {
            set(flag);
        }
    }
    static constexpr Flags fromBits(std::uint32_t bits) {
        Flags flags;
        flags.bits_ = bits;
        return flags;
    }

    constexpr bool has(E flag) const {
        const auto bit = static_cast<std::uint32_t>(flag);
        return (bits_ & bit) == bit;
    }
    constexpr void set(E flag, bool on = true) {
        const auto bit = static_cast<std::uint32_t>(flag);
        bits_ = on ? bits_ | bit : bits_ & ~bit;
    }
    constexpr std::uint32_t bits() const { return bits_; }

    friend constexpr bool operator==(Flags, Flags) = default;
    friend constexpr Flags operator|(Flags left, Flags right) {
        return fromBits(left.bits_ | right.bits_);
    }

private:
    std::uint32_t bits_ = 0;
};

}  // namespace foundation
}  // namespace tavrin
