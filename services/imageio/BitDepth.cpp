#include "services/imageio/BitDepth.h"

#include "foundation/FatalError.h"

namespace tavrin::imageio {

String toString(BitDepth depth) {
    switch (depth) {
        case BitDepth::Int8:
            return "8";
        case BitDepth::Int10:
            return "10";
        case BitDepth::Int12:
            return "12";
        case BitDepth::Int16:
            return "16";
        case BitDepth::Half:
            return "16f";
        case BitDepth::Float:
            return "32f";
    }
    fatalError("unknown bit depth");
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
