#include "services/imageio/BitDepth.h"

#include <string>

namespace tavrin::imageio {

String toString(BitDepth depth) {
    return String::fromUtf8(std::to_string(getBitCount(depth))) +
           (isFloatingPoint(depth) ? "f" : "");
}

Optional<BitDepth> parseBitDepth(const String& text) {
    for (const BitDepth depth : kBitDepths) {
        if (toString(depth) == text) {
            return depth;
        }
    }
    return {};
}

}  // namespace tavrin::imageio
