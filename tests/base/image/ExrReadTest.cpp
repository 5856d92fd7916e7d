#include "base/image/Exr.h"
#include "base/image/ExrInfo.h"
#include "tests/support/TemporaryFolder.h"

#include "TestExr.h"
#include <ImfIntAttribute.h>
#include <gtest/gtest.h>

#include <bit>
#include <cmath>

namespace tavrin::image {
namespace {

/// From the definition of binary16 (IEEE 754-2008, 3.6); payloads of NaNs keep their place.
std::uint32_t widen(std::uint16_t bits) {
    const std::uint32_t sign = std::uint32_t{bits & 0x8000u} << 16;
    const int exponent = (bits >> 10) & 31;
    const int mantissa = bits & 1023;
    if (exponent == 31) {
        return sign | 0x7F800000u | (std::uint32_t(mantissa) << 13);
    }
    const double value =
        exponent == 0 ? std::ldexp(mantissa, -24) : std::ldexp(1024 + mantissa, exponent - 25);
    return sign | std::bit_cast<std::uint32_t>(static_cast<float>(value));
}

TEST(ExrRead, EveryHalfIsWidenedExactly) {
    std::vector<float> slots(65536);
    for (std::uint32_t i = 0; i < slots.size(); ++i) {
        slots[i] = std::bit_cast<float>(0xABCD0000u | i);
    }
    convertHalfValues(slots.data(), slots.size());
    for (std::uint32_t i = 0; i < slots.size(); ++i) {
        ASSERT_EQ(std::bit_cast<std::uint32_t>(slots[i]), widen(std::uint16_t(i))) << i;
    }
}

TEST(ExrRead, ReadsWhatTheLibraryReads) {
    const struct {
        const char* name;
        Imf::LineOrder lineOrder;
        Imf::TileDescription tiles;
    } layouts[] = {
        {"increasing lines", Imf::INCREASING_Y, {0, 0}},
        {"decreasing lines", Imf::DECREASING_Y, {0, 0}},
        {"tiles", Imf::INCREASING_Y, {16, 9}},
        {"decreasing tiles", Imf::DECREASING_Y, {64, 64}},
        {"random tiles", Imf::RANDOM_Y, {7, 32}},
        {"mipmap", Imf::INCREASING_Y, {16, 16, Imf::MIPMAP_LEVELS, Imf::ROUND_UP}},
        {"ripmap", Imf::RANDOM_Y, {16, 16, Imf::RIPMAP_LEVELS, Imf::ROUND_DOWN}},
    };
    const struct {
        Imath::Box2i data, display;
    } windows[] = {
        {{{0, 0}, {36, 70}}, {{0, 0}, {36, 70}}},
        {{{-11, -300}, {40, -20}}, {{-10, -299}, {20, -21}}},
        {{{5, 7}, {5, 7}}, {{-9, -9}, {50, 50}}},
    };
    TestExr::ChannelTypes channels = TestExr::rgb(Imf::HALF);
    channels.insert(channels.end(), {{"A", Imf::FLOAT}, {"Key.R", Imf::FLOAT}, {"Id", Imf::UINT}});
    const tests::TemporaryFolder folder;
    const Path path = folder / "image.exr";
    std::size_t number = 0;
    for (int compression = 0; compression < Imf::NUM_COMPRESSION_METHODS; ++compression) {
        for (const auto& [name, lineOrder, tiles] : layouts) {
            SCOPED_TRACE(std::to_string(compression) + " " + name);
            const auto& [data, display] = windows[number++ % std::size(windows)];
            TestExr{.dataWindow = data,
                    .displayWindow = display,
                    .channels = channels,
                    .compression = Imf::Compression(compression),
                    .lineOrder = lineOrder,
                    .tiles = tiles}
                .write(path);
            const ChannelImage image = loadExr(path);
            ASSERT_EQ(getPlanes(image), readPlanes(path));
            EXPECT_EQ(image.getAttribute<float>("gamma"), 1.0f);
            EXPECT_TRUE(image.hasChannel<std::uint32_t>("Id"));
        }
    }
}

/// The images that compress best are not taken for files that promise more than they hold.
TEST(ExrRead, LimitsLetConstantImagesPass) {
    const struct {
        Imath::V2i size;
        Imf::TileDescription tiles;
        int channels;
    } shapes[] = {
        {{1500, 1200}, {0, 0}, 3}, {{1, 1}, {0, 0}, 30},          {{9000, 1}, {0, 0}, 30},
        {{1, 3000}, {0, 0}, 30},   {{128, 256}, {64, 256}, 30},   {{25, 30}, {1, 1}, 30},
        {{61, 61}, {2, 3}, 3},     {{300, 200}, {2048, 4096}, 3},
    };
    const tests::TemporaryFolder folder;
    const Path path = folder / "constant.exr";
    for (int compression = 0; compression < Imf::NUM_COMPRESSION_METHODS; ++compression) {
        for (const auto& [size, tiles, count] : shapes) {
            for (const auto type : {Imf::HALF, Imf::FLOAT, Imf::UINT}) {
                TestExr::ChannelTypes channels = TestExr::rgb(type);
                for (int i = 3; i < count; ++i) {
                    channels.emplace_back("Layer" + std::to_string(i) + ".A", type);
                }
                const Imath::Box2i window{{0, 0}, {size.x - 1, size.y - 1}};
                TestExr{.dataWindow = window,
                        .displayWindow = window,
                        .channels = channels,
                        .compression = Imf::Compression(compression),
                        .tiles = tiles,
                        .source = TestExr::constant}
                    .write(path);
                EXPECT_TRUE(readExrInfo(path))
                    << compression << " " << size << " " << tiles.xSize << " " << type;
            }
        }
    }
}

TEST(ExrRead, InfoTellsWhyAFileCannotBeLoaded) {
    const tests::TemporaryFolder folder;
    const Path path = folder / "depth.exr";
    TestExr{.channels = {{"Z", Imf::FLOAT}, {"Id", Imf::UINT}, {"A", Imf::HALF}},
            .compression = Imf::DWAB_COMPRESSION,
            .tiles = {16, 16}}
        .write(path);
    const auto info = readExrInfo(path);
    ASSERT_TRUE(info) << info.error().toUtf8();
    EXPECT_TRUE(info->isTiled);
    EXPECT_EQ(info->compression, "dwab");
    EXPECT_EQ(info->fileSize, readBytes(path).size());
    std::string channels;
    for (const auto& [name, type] : info->channels) {
        channels += name.toUtf8() + ":" + type.toUtf8() + " ";
    }
    EXPECT_EQ(channels, "A:half Id:uint Z:float ");
    EXPECT_EQ(info->elements.size(), 3u);
    EXPECT_EQ(withoutPath(info->loadFailure, path), getRefusal(path));

    // A gamma of another type is replaced, and no reason to refuse a file.
    const auto addGamma = [](Imf::Header& header) { header.insert("gamma", Imf::IntAttribute(2)); };
    TestExr{.change = addGamma}.write(path);
    EXPECT_EQ(readExrInfo(path)->loadFailure, "");
    EXPECT_EQ(loadExr(path).getAttribute<float>("gamma"), 1.0f);
}

}  // namespace
}  // namespace tavrin::image
