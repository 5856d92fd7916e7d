#pragma once

#include "foundation/String.h"

#include <rapidcheck.h>

#include <cstdint>
#include <string>
#include <vector>

namespace tavrin::tests {

/// Generates texts of any UTF-16 code units, rich in those that need care: lone and paired
/// surrogates, quotes, backslashes, separators and white space.
inline rc::Gen<std::vector<std::uint16_t>> codeUnits() {
    return rc::gen::container<std::vector<std::uint16_t>>(rc::gen::weightedOneOf<std::uint16_t>(
        {{3, rc::gen::arbitrary<std::uint16_t>()},
         {3, rc::gen::element<std::uint16_t>(u'"', u'\\', u',', u' ', u'\n', u'\0', u'a')},
         {2, rc::gen::inRange<std::uint16_t>(0xD800, 0xDC00)},
         {2, rc::gen::inRange<std::uint16_t>(0xDC00, 0xE000)}}));
}

inline String toText(const std::vector<std::uint16_t>& units) {
    return std::u16string(units.begin(), units.end());
}

}  // namespace tavrin::tests
