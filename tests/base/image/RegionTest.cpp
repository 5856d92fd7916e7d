#include "base/image/ChannelImage.h"

#include "TestExr.h"
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>

namespace tavrin::image {
namespace {

/// `scale` image pixels for one, or one image pixel for -`scale`.
struct Zoom {
    int factor;
    bool enlarges;

    float getScale() const { return enlarges ? 1.0f / float(factor) : float(factor); }
    /// In single precision, where 21 * (1 / 7) comes out above 3.
    int getLength(int length) const {
        return enlarges ? length * factor : int(std::ceil(float(length) * (1.0f / float(factor))));
    }
    int getSource(int position) const { return enlarges ? position / factor : position * factor; }
};

RC_GTEST_PROP(Region, SamplesByThePlainFormula, ()) {
    const Bucket window{-7, 11, -7 + *rc::gen::inRange(1, 60), 11 + *rc::gen::inRange(1, 60)};
    const ChannelImage image = makeImage(window, window, {"L.R", "L.G", "L.B", "L.A"});
    const int x0 = *rc::gen::inRange(0, window.width());
    const int y0 = *rc::gen::inRange(0, window.height());
    const Bucket region{x0, y0, *rc::gen::inRange(x0, window.width() + 1),
                        *rc::gen::inRange(y0, window.height() + 1)};
    const Zoom zoom{*rc::gen::inRange(1, 9), *rc::gen::arbitrary<bool>()};

    const auto rgba = image.getRgbaRegion("L", region, zoom.getScale());
    const auto rgb = image.getRgbRegion("L", region, zoom.getScale());
    const auto mono = image.getMonoRegion("L.G", region, zoom.getScale());
    const Pixel size{zoom.getLength(region.width()), zoom.getLength(region.height())};
    RC_ASSERT(rgba.getSize() == size);
    RC_ASSERT(rgb.getSize() == size);
    RC_ASSERT(mono.getSize() == size);
    const auto value = [&](const char* channel, int x, int y) {
        // Where the size came out too large, the last pixel of the region stands again.
        const int sourceX = std::min(region.x0 + zoom.getSource(x), region.x1 - 1);
        const int sourceY = std::min(region.y0 + zoom.getSource(y), region.y1 - 1);
        const int index = sourceY * window.width() + sourceX;
        return image.getChannel<float>(channel).getValues()[std::size_t(index)];
    };
    for (int y = 0; y < size.y; ++y) {
        for (int x = 0; x < size.x; ++x) {
            const Rgba expected{value("L.R", x, y), value("L.G", x, y), value("L.B", x, y),
                                value("L.A", x, y)};
            RC_ASSERT(rgba.at(x, y) == expected);
            RC_ASSERT(rgb.at(x, y) == (Rgb{expected.r, expected.g, expected.b}));
            RC_ASSERT(rgb.at(x, y).a == 1.0f);
            RC_ASSERT(mono.at(x, y) == expected.g);
        }
    }
}

TEST(Region, SizesAreRoundedUp) {
    struct Case {
        Bucket region;
        float scale;
        Pixel size;
    };
    const std::vector<Case> cases = {
        {{0, 0, 10, 7}, 4.0f, {3, 2}},   {{0, 0, 10, 7}, 0.5f, {20, 14}},
        {{0, 0, 10, 7}, 100.0f, {1, 1}}, {{3, 3, 3, 7}, 2.0f, {0, 2}},
        {{0, 0, 9, 9}, 1.5f, {6, 6}},    {{0, 0, 1, 1}, 0.03125f, {32, 32}},
        {{5, 5, 4, 4}, 1.0f, {0, 0}},
    };
    const ChannelImage image = makeImage({0, 0, 10, 7}, {0, 0, 10, 9}, {"Z"});
    for (const auto& [region, scale, size] : cases) {
        EXPECT_EQ(image.getMonoRegion("Z", region, scale).getSize(), size) << scale;
    }
}

}  // namespace
}  // namespace tavrin::image
