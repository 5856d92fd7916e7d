#include "base/image/ChannelImage.h"
#include "base/image/ImageIterators.h"

#include "TestExr.h"
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tavrin::image {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
// The last one is so large that several threads share its rows.
const std::vector<Pixel> kSizes = {{3, 1}, {5, 12}, {7, 13}, {600, 200}};

TEST(ChannelImage, IsValidWhenWindowsNestAndChannelsFit) {
    struct Case {
        Bucket display;
        Bucket data;
        bool isValid;
    };
    const std::vector<Case> cases = {
        {{0, 0, 4, 4}, {0, 0, 4, 4}, true},  {{0, 0, 9, 9}, {2, 3, 4, 5}, true},
        {{2, 3, 4, 5}, {0, 0, 9, 9}, true},  {{-5, -5, 5, 5}, {-5, -9, 5, 5}, true},
        {{0, 0, 4, 4}, {1, 0, 5, 4}, false}, {{0, 0, 4, 4}, {1, -1, 3, 5}, false},
        {{0, 0, 4, 4}, {4, 0, 8, 4}, false}, {{0, 0, 0, 4}, {0, 0, 4, 4}, false},
        {{0, 0, 4, 4}, {0, 2, 4, 2}, false}, {{0, 0, 4, 4}, {3, 0, 1, 4}, false},
    };
    for (const auto& [display, data, isValid] : cases) {
        EXPECT_EQ(makeImage(display, data, {"Z"}).isValid(), isValid) << data.x0 << "," << data.y0;
    }
    const Bucket window{0, 0, 3, 2};
    EXPECT_FALSE(makeImage(window, window, {}).isValid());
    EXPECT_FALSE(ChannelImage().isValid());
    EXPECT_TRUE(ChannelImage().isEmpty());
    ChannelImage image = makeImage(window, window, {"R", "G"});
    EXPECT_FALSE(image.isEmpty());
    auto integers = std::make_unique<Channel<std::uint32_t>>("Id");
    integers->resize(2, 3);
    image.setChannel(std::move(integers));
    EXPECT_FALSE(image.isValid()) << "the right number of values in the wrong shape";
    image.fitChannelsToDataWindow();
    EXPECT_TRUE(image.isValid());
    for (const char* name : {"gamma", "dataWindow", "displayWindow"}) {
        ChannelImage other = makeImage(window, window, {"R"});
        other.setAttribute(String(name), 1);
        EXPECT_FALSE(other.isValid()) << name;
    }
    image.setAttribute("dataWindow", Bucket{1, 1, 1, 5});
    image.fitChannelsToDataWindow();
    EXPECT_EQ(image.getChannel<float>("R").getSize(), 0u);
}

TEST(ChannelImage, IsTxrImageByItsMarkerAndStatistics) {
    const auto makeTxr = [] {
        ChannelImage image({0, 0, 1, 1}, {0, 0, 1, 1}, 1.0f);
        for (const char* name : {"tavrin.istavrinexr", "tavrin.stats.passes", "tavrin.stats.time",
                                 "tavrin.stats.rayspersecond"}) {
            image.setAttribute(String(name), 1);
        }
        image.setAttribute("tavrin.stats.rayspersample", 1.5f);
        return image;
    };
    const ChannelImage txr = makeTxr();
    EXPECT_TRUE(txr.isTxrImage());
    for (const auto& [name, attribute] : txr.getAttributes()) {
        ChannelImage image = makeTxr();
        image.setAttribute(name, 1.0);
        const bool isStandard = !name.startsWith("tavrin.");
        EXPECT_EQ(image.isTxrImage(), isStandard) << name.toUtf8();
    }
    ChannelImage unmarked = makeTxr();
    unmarked.setAttribute("tavrin.istavrinexr", 2);
    EXPECT_FALSE(unmarked.isTxrImage());
}

TEST(ChannelImage, FitsWithinLargerWindowsOfTheSameGamma) {
    const Bucket inner{1, 1, 3, 3};
    const Bucket outer{0, 0, 4, 4};
    const auto image = [](const Bucket& display, const Bucket& data, float gamma) {
        return ChannelImage(display, data, gamma);
    };
    EXPECT_TRUE(image(inner, inner, 2.2f).fitsWithin(image(outer, outer, 2.2f)));
    EXPECT_TRUE(image(outer, inner, 2.2f).fitsWithin(image(outer, inner, 2.20009f)));
    EXPECT_TRUE(image(outer, inner, 2.20009f).fitsWithin(image(outer, inner, 2.2f)));
    EXPECT_FALSE(image(outer, inner, 2.2f).fitsWithin(image(outer, inner, 2.20011f)));
    EXPECT_FALSE(image(outer, inner, 2.2f).fitsWithin(image(inner, inner, 2.2f)));
    EXPECT_FALSE(image(inner, outer, 2.2f).fitsWithin(image(inner, inner, 2.2f)));
    EXPECT_FALSE(image(inner, inner, kNan).fitsWithin(image(inner, inner, 1.0f)));
}

TEST(ChannelImage, InsertingReplacesWhateverTheType) {
    ChannelImage image({0, 0, 2, 2}, {0, 0, 2, 2}, 1.0f);
    image.setAttribute("gamma", 2);
    EXPECT_TRUE(image.hasAttribute<int>("gamma"));
    EXPECT_FALSE(image.hasAttribute<float>("gamma"));
    image.setChannel(std::make_unique<Channel<std::uint32_t>>("L.R"));
    const ElementInfo light{"L", ElementKind::Rgba, 0};
    EXPECT_FALSE(image.hasElement(light));
    image.addElement(light);
    EXPECT_TRUE(image.hasElement(light));
    EXPECT_TRUE(image.hasElement({"L.R", ElementKind::Mono, 0}));
    EXPECT_EQ(image.getChannels().size(), 4u);
    image.fitChannelsToDataWindow();
    float* values = image.getChannel<float>("L.R").getData();
    image.addElement(light);
    EXPECT_EQ(image.getChannel<float>("L.R").getData(), values) << "existing channels stay";
    EXPECT_DEATH(image.hasElement({"L", ElementKind::Unsupported, 0}), "unsupported kind");
    EXPECT_DEATH(image.setMono(light, {}), "does not suit the kind");
}

TEST(ChannelImage, BlackensNansOnlyWhereTheyAreNotMeant) {
    for (const Pixel size : kSizes) {
        const Bucket window{0, 0, size.x, size.y};
        ChannelImage image = makeImage(window, window, {"R", "DenoisedSpecular.R", "xDenoised"});
        auto integers = std::make_unique<Channel<std::uint32_t>>("Id");
        integers->resize(window.size());
        std::ranges::fill(integers->getValues(), 0x7FC00001u);
        image.setChannel(std::move(integers));
        for (const char* name : {"R", "DenoisedSpecular.R", "xDenoised"}) {
            const auto values = image.getChannel<float>(name).getValues();
            values.front() = kInfinity;
            values[1] = -kNan;
            values.back() = kNan;
        }
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
std::vector<Rgba> collect(const imageio::IImageIterator& picture) {
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
        const Bucket window{-4, 5, -4 + width, 5 + height};
        ChannelImage image = makeImage(window, window, {"Mask"});
        const ElementInfo color{"", ElementKind::Rgb, 0};
        const ElementInfo light{"Key", ElementKind::Rgba, 0};
        image.addElement(color);
        image.addElement(light);
        image.fitChannelsToDataWindow();
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
        image.setRgb(color, rgb);
        image.setRgba(light, rgba);
        image.setMono({"Mask", ElementKind::Mono, 0}, mono);
        const std::vector<Rgba> withAlpha(rgba.pixels().begin(), rgba.pixels().end());

        const RgbIteratorHelper<const float> rgbChannels(image, "");
        const RgbaIteratorHelper<float> rgbaChannels(image, "Key");
        EXPECT_EQ(collect(rgbChannels), opaque);
        EXPECT_EQ(collect(rgbaChannels), withAlpha);
        EXPECT_EQ(collect(RgbImageIterator<0>(rgb)), opaque);
        EXPECT_EQ(collect(RgbImageIterator<0>(rgb, &mono)), masked);
        EXPECT_EQ(collect(RgbaImageIterator<0>(rgba)), withAlpha);
        EXPECT_FALSE(rgbChannels.hasAlpha() || RgbImageIterator<0>(rgb).hasAlpha());
        EXPECT_TRUE(rgbaChannels.hasAlpha() && RgbImageIterator<0>(rgb, &mono).hasAlpha() &&
                    RgbaImageIterator<0>(rgba).hasAlpha());
        EXPECT_TRUE(std::ranges::equal(image.getChannel<float>("Mask").getValues(), mono.pixels()));
        EXPECT_EQ(rgbChannels.getPixel({1, 0}, mono.at(0, 0)).a, 1.0f);
    }
}

}  // namespace
}  // namespace tavrin::image
