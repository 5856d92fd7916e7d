#include "base/image/ChannelImage.h"
#include "base/image/ImageIterators.h"

#include "TestExr.h"
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

namespace tavrin::image {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
// The last one is so large that several threads share its rows.
const std::vector<Pixel> kSizes = {{3, 1}, {7, 13}, {600, 200}};

TEST(ChannelImage, IsValidWhenWindowsNestAndChannelsFit) {
    const struct {
        Bucket display, data;
        bool isValid;
    } cases[] = {
        {{0, 0, 9, 9}, {2, 3, 4, 5}, true},     {{2, 3, 4, 5}, {0, 0, 9, 9}, true},
        {{-5, -5, 5, 5}, {-5, -9, 5, 5}, true}, {{0, 0, 4, 4}, {1, 0, 5, 4}, false},
        {{0, 0, 4, 4}, {1, -1, 3, 5}, false},   {{0, 0, 4, 4}, {4, 0, 8, 4}, false},
        {{0, 0, 0, 4}, {0, 0, 4, 4}, false},    {{0, 0, 4, 4}, {0, 2, 4, 2}, false},
    };
    for (const auto& [display, data, isValid] : cases) {
        EXPECT_EQ(makeImage(display, data, {"Z"}).isValid(), isValid) << data.x0 << "," << data.y0;
    }
    const Bucket window{0, 0, 3, 2};
    EXPECT_FALSE(makeImage(window, window, {}).isValid());
    EXPECT_FALSE(ChannelImage().isValid());
    ChannelImage image = makeImage(window, window, {"R"});
    addIntegers(image).resize(2, 3);
    EXPECT_FALSE(image.isValid()) << "the right number of values in the wrong shape";
    image.fitChannelsToDataWindow();
    EXPECT_TRUE(image.isValid());
    for (const char* name : {"gamma", "dataWindow", "displayWindow"}) {
        ChannelImage other = makeImage(window, window, {"R"});
        other.setAttribute(String(name), 1);
        EXPECT_FALSE(other.isValid()) << name;
    }
}

TEST(ChannelImage, IsTxrImageByItsMarkerAndStatistics) {
    ChannelImage txr({0, 0, 1, 1}, {0, 0, 1, 1}, 1.0f);
    for (const char* name : {"tavrin.istavrinexr", "tavrin.stats.passes", "tavrin.stats.time",
                             "tavrin.stats.rayspersecond"}) {
        txr.setAttribute(String(name), 1);
    }
    EXPECT_FALSE(txr.isTxrImage());
    txr.setAttribute("tavrin.stats.rayspersample", 1.5f);
    EXPECT_TRUE(txr.isTxrImage());
    txr.setAttribute("tavrin.istavrinexr", 2);
    EXPECT_FALSE(txr.isTxrImage());
}

TEST(ChannelImage, FitsWithinLargerWindowsOfTheSameGamma) {
    const Bucket inner{1, 1, 3, 3};
    const Bucket outer{0, 0, 4, 4};
    const ChannelImage image(outer, inner, 2.2f);
    EXPECT_TRUE(ChannelImage(inner, inner, 2.20009f).fitsWithin(image));
    EXPECT_TRUE(ChannelImage(outer, inner, 2.19991f).fitsWithin(image));
    EXPECT_FALSE(ChannelImage(inner, inner, 2.20011f).fitsWithin(image));
    EXPECT_FALSE(ChannelImage(inner, outer, 2.2f).fitsWithin(image));
    EXPECT_FALSE(image.fitsWithin(ChannelImage(inner, inner, 2.2f)));
    EXPECT_FALSE(ChannelImage(inner, inner, kNan).fitsWithin(image));
}

TEST(ChannelImage, BlackensNansOnlyWhereTheyAreNotMeant) {
    for (const Pixel size : kSizes) {
        const Bucket window{0, 0, size.x, size.y};
        ChannelImage image = makeImage(window, window, {"R", "DenoisedSpecular.R", "xDenoised"});
        for (const char* name : {"R", "DenoisedSpecular.R", "xDenoised"}) {
            const auto values = image.getChannel<float>(name).getValues();
            values.front() = std::numeric_limits<float>::infinity();
            values[1] = -kNan;
            values.back() = kNan;
        }
        auto& integers = addIntegers(image);
        integers.resize(window.size());
        std::ranges::fill(integers.getValues(), 0x7FC00001u);
        Planes expected = getPlanes(image);
        for (const char* name : {"R", "xDenoised"}) {
            expected[name][1] = expected[name].back() = 0;
        }
        blackenNans(image);
        EXPECT_TRUE(getPlanes(image) == expected) << size.y;
    }
}

TEST(ChannelImage, FlipsRowsBetweenBothLayouts) {
    for (const auto& [width, height] : kSizes) {
        BitmapImpl<Rgb> padded(width, height);
        for (std::size_t i = 0; i < padded.pixels().size(); ++i) {
            const auto value = static_cast<float>(i);
            padded.pixels()[i] = {value, value + 0.25f, -value, 7.0f};
        }
        BitmapImpl<CompressedRgb> packed(width, height);
        flipVertical(padded, packed);
        BitmapImpl<Rgb> again(width, height);
        flipVertical(packed, again);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const Rgb& pixel = padded.at(x, y);
                EXPECT_EQ(packed.at(x, height - 1 - y), (CompressedRgb{pixel.r, pixel.g, pixel.b}));
                EXPECT_EQ(again.at(x, y), pixel);
                EXPECT_EQ(again.at(x, y).a, 0.0f);
            }
        }
    }
}

/// Pixel by pixel through the interface that picture writers use.
std::vector<Rgba> collect(const imageio::IImageIterator& picture, bool hasAlpha) {
    EXPECT_EQ(picture.hasAlpha(), hasAlpha);
    std::vector<Rgba> pixels;
    for (int y = 0; y < picture.getSize().y; ++y) {
        for (int x = 0; x < picture.getSize().x; ++x) {
            float alpha = kNan;
            const Rgb color = picture.getPixel({x, y}, alpha);
            pixels.push_back({color.r, color.g, color.b, alpha});
        }
    }
    return pixels;
}

TEST(ChannelImage, WrittenBitmapsComeBackThroughEveryIterator) {
    for (const auto& [width, height] : kSizes) {
        BitmapImpl<Rgb> rgb(width, height);
        BitmapImpl<Rgba> rgba(width, height);
        BitmapImpl<float> mono(width, height);
        std::vector<Rgba> opaque;
        std::vector<Rgba> masked;
        for (std::size_t i = 0; i < mono.pixels().size(); ++i) {
            const auto value = static_cast<float>(i);
            rgb.pixels()[i] = {value, -value, value * 0.5f, 9.0f};
            rgba.pixels()[i] = {value + 0.1f, value + 0.2f, value + 0.3f, value + 0.4f};
            mono.pixels()[i] = 3.0f - value;
            opaque.push_back({value, -value, value * 0.5f, 1.0f});
            masked.push_back({value, -value, value * 0.5f, 3.0f - value});
        }
        const Bucket window{-4, 5, -4 + width, 5 + height};
        ChannelImage image =
            makeImage(window, window, {"Mask", "R", "G", "B", "Key.R", "Key.G", "Key.B", "Key.A"});
        image.setRgb({"", ElementKind::Rgb, 0}, rgb);
        image.setRgba({"Key", ElementKind::Rgba, 0}, rgba);
        image.setMono({"Mask", ElementKind::Mono, 0}, mono);
        const std::vector<Rgba> withAlpha(rgba.pixels().begin(), rgba.pixels().end());
        EXPECT_EQ(collect(RgbIteratorHelper<const float>(image, ""), false), opaque);
        EXPECT_EQ(collect(RgbaIteratorHelper<float>(image, "Key"), false), withAlpha);
        EXPECT_EQ(collect(RgbImageIterator<0>(rgb), false), opaque);
        EXPECT_EQ(collect(RgbImageIterator<0>(rgb, &mono), true), masked);
        EXPECT_EQ(collect(RgbaImageIterator<0>(rgba), true), withAlpha);
        EXPECT_TRUE(std::ranges::equal(image.getChannel<float>("Mask").getValues(), mono.pixels()));
    }
}

/// `factor` image pixels for one, or one image pixel for `factor`.
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

RC_GTEST_PROP(ChannelImage, SamplesRegionsByThePlainFormula, ()) {
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
    RC_ASSERT(rgba.getSize() == size && rgb.getSize() == size && mono.getSize() == size);
    for (int y = 0; y < size.y; ++y) {
        for (int x = 0; x < size.x; ++x) {
            // Where the size came out too large, the last pixel of the region stands again.
            const int sourceX = std::min(region.x0 + zoom.getSource(x), region.x1 - 1);
            const int sourceY = std::min(region.y0 + zoom.getSource(y), region.y1 - 1);
            const auto value = [&](const char* channel) {
                return image.getChannel<float>(channel)
                    .getValues()[std::size_t(sourceY * window.width() + sourceX)];
            };
            const Rgba expected{value("L.R"), value("L.G"), value("L.B"), value("L.A")};
            RC_ASSERT(rgba.at(x, y) == expected);
            RC_ASSERT(rgb.at(x, y) == (Rgb{expected.r, expected.g, expected.b}));
            RC_ASSERT(rgb.at(x, y).a == 1.0f);
            RC_ASSERT(mono.at(x, y) == expected.g);
        }
    }
}

}  // namespace
}  // namespace tavrin::image
