#include "services/imageio/openimageio/SrgbProfile.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <utility>

namespace tavrin::imageio {
namespace {

constexpr std::size_t kHeaderBytes = 128;
constexpr std::size_t kTagBytes = 12;
constexpr std::uint32_t kVersion4 = 0x04200000;

void append(std::string& bytes, std::uint32_t value, int count = 4) {
    for (int i = count - 1; i >= 0; --i) {
        bytes.push_back(static_cast<char>(value >> (8 * i)));
    }
}

/// A number with 16 bits after the point.
void appendFixed(std::string& bytes, double value) {
    append(bytes,
           static_cast<std::uint32_t>(static_cast<std::int32_t>(std::lround(value * 65536))));
}

std::string makeNumbers(std::string_view type, std::initializer_list<double> values) {
    std::string bytes;
    bytes.append(type);
    append(bytes, 0);
    for (const double value : values) {
        appendFixed(bytes, value);
    }
    return bytes;
}

/// ASCII text in one language.
std::string makeText(std::string_view text) {
    std::string bytes;
    bytes.append("mluc");
    append(bytes, 0);
    append(bytes, 1);
    append(bytes, 12);
    bytes.append("enUS");
    append(bytes, static_cast<std::uint32_t>(2 * text.size()));
    append(bytes, 28);
    for (const char letter : text) {
        append(bytes, static_cast<unsigned char>(letter), 2);
    }
    bytes.resize((bytes.size() + 3) / 4 * 4);
    return bytes;
}

/// The curve of IEC 61966-2-1 (1999) as the parametric function of type 3.
std::string makeCurve() {
    std::string bytes;
    bytes.append("para");
    append(bytes, 0);
    append(bytes, 3, 2);
    append(bytes, 0, 2);
    for (const double value : {2.4, 1 / 1.055, 0.055 / 1.055, 1 / 12.92, 0.04045}) {
        appendFixed(bytes, value);
    }
    return bytes;
}

std::string makeHeader(std::size_t profileBytes) {
    std::string bytes;
    append(bytes, static_cast<std::uint32_t>(profileBytes));
    append(bytes, 0);
    append(bytes, kVersion4);
    bytes.append("mntrRGB XYZ ");
    for (const std::uint32_t part : {2000, 1, 1, 0, 0, 0}) {
        append(bytes, part, 2);
    }
    bytes.append("acsp");
    bytes.resize(68);
    for (const double d50 : {0.9642, 1.0, 0.8249}) {
        appendFixed(bytes, d50);
    }
    bytes.resize(kHeaderBytes);
    return bytes;
}

}  // namespace

std::string makeSrgbProfile() {
    // Primaries and white adapted from D65 to D50 with the Bradford matrix, as the format wants it.
    const std::array<std::pair<std::string_view, std::string>, 10> tags = {{
        {"desc", makeText("sRGB")},
        {"cprt", makeText("No copyright, use freely")},
        {"wtpt", makeNumbers("XYZ ", {0.9642, 1.0, 0.8249})},
        {"chad", makeNumbers("sf32", {1.04788, 0.02292, -0.05022, 0.02959, 0.99048, -0.01707,
                                      -0.00925, 0.01508, 0.75168})},
        {"rXYZ", makeNumbers("XYZ ", {0.43607, 0.22249, 0.01392})},
        {"gXYZ", makeNumbers("XYZ ", {0.38515, 0.71687, 0.09708})},
        {"bXYZ", makeNumbers("XYZ ", {0.14307, 0.06061, 0.71410})},
        {"rTRC", makeCurve()},
        {"gTRC", makeCurve()},
        {"bTRC", makeCurve()},
    }};
    std::string table;
    std::string data;
    append(table, static_cast<std::uint32_t>(tags.size()));
    const std::size_t dataStart = kHeaderBytes + 4 + kTagBytes * tags.size();
    for (const auto& [signature, content] : tags) {
        table.append(signature);
        append(table, static_cast<std::uint32_t>(dataStart + data.size()));
        append(table, static_cast<std::uint32_t>(content.size()));
        data.append(content);
    }
    return makeHeader(dataStart + data.size()) + table + data;
}

}  // namespace tavrin::imageio
