#include "foundation/platform/Memory.h"
#include "tests/support/TemporaryFolder.h"

#include "TestExr.h"
#include <gtest/gtest.h>
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace tavrin::image {
namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kIsSanitized = true;
#else
constexpr bool kIsSanitized = false;
#endif

struct Storage {
    const char* name;
    Imf::PixelType type;
    Imf::Compression compression;
    Imf::TileDescription tiles;
};

class ExrMemory : public testing::TestWithParam<Storage> {};

TEST_P(ExrMemory, LoadingTakesLittleMoreThanTheChannels) {
    if (kIsSanitized || platform::getPeakMemory() == 0) {
        GTEST_SKIP() << "What the process takes is not what the image takes, or is not known.";
    }
    const Storage& storage = GetParam();
    // So high that a chunk of 256 lines, which the library needs as a whole, is a small part.
    const Imath::Box2i window{{0, 0}, {1023, 2047}};
    TestExr::ChannelTypes channels = TestExr::rgb(storage.type);
    for (int i = 0; i < 9; ++i) {
        channels.emplace_back("Layer" + std::to_string(i) + ".A", storage.type);
    }
    const tests::TemporaryFolder folder;
    TestExr{.dataWindow = window,
            .displayWindow = window,
            .channels = channels,
            .compression = storage.compression,
            .tiles = storage.tiles,
            .source =
                [](std::size_t channel, std::size_t i) {
                    return static_cast<float>(channel) + static_cast<float>(i % 512) / 64.0f;
                }}
        .write(folder / "large.exr");

    // What writing has left would be taken again without being counted.
    platform::releaseUnusedPixelMemory();
#ifdef __GLIBC__
    malloc_trim(0);
#endif
    platform::resetPeakMemory();
    const auto before = static_cast<double>(platform::getPeakMemory());
    const ChannelImage image = loadExr(folder / "large.exr");
    const auto taken = static_cast<double>(platform::getPeakMemory()) - before;
    const double bytes = 4.0 * 1024 * 2048 * static_cast<double>(image.getChannels().size());
    EXPECT_GT(taken / bytes, 0.9);
    EXPECT_LE(taken / bytes, 1.15);
}

INSTANTIATE_TEST_SUITE_P(
    , ExrMemory,
    testing::Values(Storage{"Zip", Imf::FLOAT, Imf::ZIP_COMPRESSION, {0, 0}},
                    Storage{"ZipHalf", Imf::HALF, Imf::ZIP_COMPRESSION, {0, 0}},
                    Storage{"Dwab", Imf::HALF, Imf::DWAB_COMPRESSION, {0, 0}},
                    Storage{"Tiled", Imf::FLOAT, Imf::ZIP_COMPRESSION, {64, 64}}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace tavrin::image
