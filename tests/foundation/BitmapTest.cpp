#include "foundation/Bitmap.h"
#include "foundation/Color.h"

#include <gtest/gtest.h>

#include <climits>
#include <numeric>

namespace tavrin {
namespace {

BitmapImpl<float> ramp(int width, int height) {
    BitmapImpl<float> bitmap(width, height);
    std::iota(bitmap.pixels().begin(), bitmap.pixels().end(), 0.0f);
    return bitmap;
}

TEST(Bitmap, CopyHasItsOwnPixelsRowByRow) {
    const auto original = ramp(4, 3);
    auto copy = original;
    copy.at(1, 1) = -1.0f;
    EXPECT_EQ(original.at(1, 1), 5.0f);
    EXPECT_EQ(copy.row(2)[3], 11.0f);
    copy = ramp(1, 2);
    EXPECT_EQ(copy.getSize(), (Pixel{1, 2}));
    EXPECT_EQ(copy.at(0, 1), 1.0f);
}

TEST(Bitmap, MoveTakesThePixelsAndLeavesAnEmptyBitmap) {
    auto original = ramp(4, 3);
    const float* pixels = original.pixels().data();
    BitmapImpl<float> moved;
    moved = std::move(original);
    EXPECT_EQ(moved.pixels().data(), pixels);
    EXPECT_EQ(moved.getSize(), (Pixel{4, 3}));
    EXPECT_EQ(original.getSize(), Pixel());
    EXPECT_TRUE(original.pixels().empty());
}

TEST(Bitmap, SizesWithoutPixelsAreEmptyAndThoseBeyondTheMemoryThrow) {
    for (const auto& [width, height] : {Pixel{0, 5}, Pixel{-3, 5}, Pixel{-3, -5}}) {
        EXPECT_EQ(BitmapImpl<Rgba>(width, height).getPixelCount(), 0);
    }
    EXPECT_THROW(BitmapImpl<Rgba>(INT_MAX, INT_MAX), std::bad_alloc);
    EXPECT_THROW(PixelArray<float>(SIZE_MAX / sizeof(float) + 2), std::bad_alloc);
}

TEST(PixelArray, BlocksAreAlignedAndWritable) {
    for (const std::size_t count : {1, 63, 65, 4'194'304, 4'194'305}) {
        PixelArray<char> array(count);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(array.data()) % 64, 0u) << count;
        std::memset(array.data(), 7, count);
        const PixelArray<char> copy(array);
        EXPECT_EQ(copy[count - 1], 7);
    }
}

}  // namespace
}  // namespace tavrin
