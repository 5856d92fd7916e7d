#pragma once

#include "foundation/Optional.h"
#include "foundation/String.h"

#include <array>

namespace tavrin::imageio {

/// How one sample of a picture is stored: an unsigned integer of so many bits that spans 0 to 1, or
/// a floating-point number.
enum class BitDepth { Int8, Int10, Int12, Int16, Half, Float };

inline constexpr std::array kBitDepths = {BitDepth::Int8,  BitDepth::Int10, BitDepth::Int12,
                                          BitDepth::Int16, BitDepth::Half,  BitDepth::Float};

constexpr bool isFloatingPoint(BitDepth depth) {
    return depth == BitDepth::Half || depth == BitDepth::Float;
}

/// Bits per sample: 8 to 32.
constexpr int getBitCount(BitDepth depth) {
    switch (depth) {
        case BitDepth::Int8:
            return 8;
        case BitDepth::Int10:
            return 10;
        case BitDepth::Int12:
            return 12;
        case BitDepth::Int16:
        case BitDepth::Half:
            return 16;
        case BitDepth::Float:
            break;
    }
    return 32;
}

/// "8", "10", "12", "16", "16f" or "32f".
String toString(BitDepth depth);
Optional<BitDepth> parseBitDepth(const String& text);

}  // namespace tavrin::imageio
