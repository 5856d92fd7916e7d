#pragma once

#include "services/postcore/Property.h"
#include "tests/support/ArbitraryText.h"

#include <rapidcheck.h>

#include <bit>
#include <cstdint>
#include <vector>

namespace tavrin::tests {

/// Any float: infinities, NaNs and denormal numbers too.
inline float anyFloat() {
    return std::bit_cast<float>(*rc::gen::arbitrary<std::uint32_t>());
}

template <class Make>
auto anyArray(const Make& make) {
    std::vector<decltype(make())> values;
    for (int i = *rc::gen::inRange(0, 5); i > 0; --i) {
        values.push_back(make());
    }
    return values;
}

/// A value of any type but Undefined.
inline postcore::Property anyProperty() {
    const auto anyInt = [] { return *rc::gen::arbitrary<int>(); };
    const auto anyBool = [] { return *rc::gen::arbitrary<bool>(); };
    const auto anyText = [] { return toText(*codeUnits()); };
    const auto anyVec2 = [] { return Vec2{anyFloat(), anyFloat()}; };
    const auto anyVec3 = [] { return Vec3{anyFloat(), anyFloat(), anyFloat()}; };
    switch (*rc::gen::inRange(0, 11)) {
        case 0:
            return anyInt();
        case 1:
            return anyFloat();
        case 2:
            return anyBool();
        case 3:
            return anyVec3();
        case 4:
            return anyText();
        case 5:
            return anyArray(anyVec3);
        case 6:
            return anyArray(anyFloat);
        case 7:
            return anyArray(anyVec2);
        case 8:
            return anyArray(anyInt);
        case 9:
            return anyArray(anyBool);
        default:
            return anyArray(anyText);
    }
}

}  // namespace tavrin::tests
