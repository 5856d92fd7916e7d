#include "services/postcore/PostProcessData.h"
#include "services/postcore/bloomglare/BloomGlare.h"
#include "services/postcore/bloomglare/BloomGlareRenderer.h"
#include "services/postcore/bloomglare/BloomPsf.h"
#include "services/postcore/bloomglare/Fft.h"
#include "services/postcore/bloomglare/FftConvolution.h"
#include "services/postcore/bloomglare/Highlights.h"
#include "services/postcore/bloomglare/LegacyPsf.h"
#include "tests/support/MapSettings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <functional>
#include <iterator>
#include <limits>
#include <numbers>
#include <random>
#include <span>
#include <thread>
#include <utility>
#include <vector>

namespace tavrin::postcore {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kLargest = std::numeric_limits<float>::max();
constexpr std::array kComponents = {&CompressedRgb::r, &CompressedRgb::g, &CompressedRgb::b};

using Image = BitmapImpl<CompressedRgb>;

Image makeImage(int width, int height, CompressedRgb color = {}) {
    Image image(width, height);
    std::ranges::fill(image.pixels(), color);
    return image;
}

BloomGlareData makeData(float bloom, float glare, bool isLegacy = false) {
    BloomGlareData data;
    data.enabled = 1;
    data.legacy = isLegacy ? 1 : 0;
    data.bloomIntensity = bloom;
    data.glareIntensity = glare;
    data.threshold = 0.0f;
    return data;
}

Image render(const Image& image, const BloomGlareData& data, BloomGlareRenderer& renderer) {
    Image layer = image;
    BloomGlareProgress progress;
    EXPECT_TRUE(renderer.render(ImageOperatorsFlag::Parallel, layer, data, progress));
    return layer;
}

Image render(const Image& image, const BloomGlareData& data,
             Flags<ImageOperatorsFlag> flags = ImageOperatorsFlag::Parallel) {
    Image layer = image;
    BloomGlareProgress progress;
    EXPECT_TRUE(computeBloomAndGlare(flags, layer, data, {}, progress));
    return layer;
}

double sumUp(const Image& image, float CompressedRgb::*component) {
    double sum = 0.0;
    for (const CompressedRgb& pixel : image.pixels()) {
        sum += static_cast<double>(pixel.*component);
    }
    return sum;
}

TEST(Fft, SizesAreTheNextSmoothOnes) {
    EXPECT_EQ(getFftSize(-5), 2);
    EXPECT_EQ(getFftSize(11), 12);
    EXPECT_EQ(getFftSize(2049), 2058);
    EXPECT_ANY_THROW(getFftSize(std::numeric_limits<int>::max()));
}

TEST(FftConvolution, AgreesWithTheSum) {
    std::mt19937 random(2);
    const auto pick = [&random](int from, int to) {
        return std::uniform_int_distribution<int>(from, to)(random);
    };
    std::uniform_real_distribution<float> number(0.0f, 1.0f);
    for (int i = 0; i < 60; ++i) {
        const Pixel frame{pick(1, 40), pick(1, 40)};
        const int x0 = pick(0, frame.x - 1);
        const int y0 = pick(0, frame.y - 1);
        const Bucket bounds = i % 3 == 0
                                  ? Bucket{0, 0, frame.x, frame.y}
                                  : Bucket{x0, y0, pick(x0 + 1, frame.x), pick(y0 + 1, frame.y)};
        const int radius = pick(0, 60);  // often more than the frame
        const int size = 2 * radius + 1;
        std::vector<float> kernels[2];
        for (auto& kernel : kernels) {
            std::generate_n(std::back_inserter(kernel), size * size,
                            [&] { return number(random); });
        }
        BitmapImpl<float> source(frame.x, frame.y);
        std::ranges::fill(source.pixels(), 0.0f);
        std::vector<bool> isDark;
        for (int y = 0; y < frame.y; ++y) {
            isDark.push_back(y < bounds.y0 || y >= bounds.y1 || pick(0, 3) == 0);
            for (int x = bounds.x0; x < bounds.x1 && !isDark.back(); ++x) {
                source.at(x, y) = number(random);
            }
        }
        FftConvolution convolution(ImageOperatorsFlag::Parallel, frame, bounds, radius);
        const Bucket reached = convolution.getResultBounds();
        BitmapImpl<float> results[2] = {{reached.width(), reached.height()},
                                        {reached.width(), reached.height()}};
        const float* weights[] = {kernels[0].data(), kernels[1].data()};
        float* targets[] = {results[0].pixels().data(), results[1].pixels().data()};
        const auto readRow = [&](int y, std::span<float> row) {
            std::copy_n(source.row(y).begin() + bounds.x0, row.size(), row.begin());
            return !isDark[static_cast<std::size_t>(y)];
        };
        // Twice, for what is left from the time before must not show.
        for (int round = 0; round < 2; ++round) {
            ASSERT_TRUE(convolution.convolve(readRow, weights, targets, [] { return false; }));
        }
        for (int k = 0; k < 2; ++k) {
            for (int y = 0; y < frame.y; ++y) {
                for (int x = 0; x < frame.x; ++x) {
                    double sum = 0.0;
                    for (int v = std::max(y - radius, 0); v < std::min(y + radius + 1, frame.y);
                         ++v) {
                        for (int u = std::max(x - radius, 0); u < std::min(x + radius + 1, frame.x);
                             ++u) {
                            const auto index =
                                static_cast<std::size_t>((radius + y - v) * size + radius + x - u);
                            sum += static_cast<double>(source.at(u, v)) *
                                   static_cast<double>(kernels[k][index]);
                        }
                    }
                    const bool isReached =
                        x >= reached.x0 && x < reached.x1 && y >= reached.y0 && y < reached.y1;
                    const float result =
                        isReached ? results[k].at(x - reached.x0, y - reached.y0) : 0.0f;
                    ASSERT_NEAR(result, sum, 1e-4 * (1.0 + sum)) << x << ", " << y;
                }
            }
        }
    }
}

TEST(Highlights, GlowAboveTheThresholdInTheirOwnColor) {
    const struct {
        CompressedRgb color;
        float threshold;
        CompressedRgb light;
    } cases[] = {
        {{4, 2, 1}, 0, {4, 2, 1}},           {{4, 2, 1}, 2, {2, 1, 0.5f}},  // half of it is above
        {{2, 1, 0}, 2, {0.25f, 0.125f, 0}},  // at the threshold: a quarter of the knee
        {{1, 0.5f, 0}, 2, {0, 0, 0}},        // where the knee begins
        {{3, 1.5f, 0}, 2, {1, 0.5f, 0}},     // where it ends
        {{0, 0, 8}, 4, {0, 0, 4}},           {{8, -3, 0}, 4, {4, 0, 0}},
        {{-8, -3, -1}, 0, {0, 0, 0}},        {{4, 2, 1}, -1, {4, 2, 1}},
        {{4, 2, 1}, kNan, {4, 2, 1}},        {{4, 2, 1}, kInfinity, {0, 0, 0}},
        {{kInfinity, 2, 1}, 1, {0, 0, 0}},   {{2, kNan, 1}, 1, {0, 0, 0}},
        {{2, 9, -kInfinity}, 1, {0, 0, 0}},  {{kLargest, 0, kLargest}, 1, {kLargest, 0, kLargest}},
        {{1e-30f, 0, 0}, 0, {1e-30f, 0, 0}},
    };
    for (const auto& [color, threshold, light] : cases) {
        Image image = makeImage(7, 5);
        image.at(4, 2) = color;
        const Highlights highlights({}, image, threshold);
        const bool isDark = light == CompressedRgb();
        ASSERT_EQ(highlights.getBounds(), isDark ? Bucket() : Bucket({4, 2, 5, 3})) << color.r;
        for (int channel = 0; channel < 3 && !isDark; ++channel) {
            float value = -1.0f;
            EXPECT_TRUE(highlights.getRow(2, channel, {&value, 1}));
            EXPECT_LT(value, 2.0f);
            EXPECT_FLOAT_EQ(value * highlights.getUnit(),
                            light.*kComponents[static_cast<std::size_t>(channel)]);
        }
    }
}

TEST(BloomGlare, OnePixelGivesThePointSpreadFunctions) {
    Image image = makeImage(41, 33);
    image.at(20, 15) = {4000, 2000, 0.5f};
    for (const bool isLegacy : {false, true}) {
        BloomGlareData data = makeData(0.25f, 3.0f, isLegacy);
        data.glare = {3, 40.0f, 0.1f, 1.0f, 0.3f};
        const int radius = 10;  // the default size is half of the image
        const auto bloom = isLegacy ? makeLegacyBloomPsf(radius) : makeBloomPsf(radius);
        const auto glare = isLegacy ? makeLegacyGlarePsf(data.glare, radius)
                                    : makeGlarePsf(data.glare, {}, radius);
        const Image layer = render(image, data);
        for (int y = 0; y < 33; ++y) {
            for (int x = 0; x < 41; ++x) {
                const int i = x - 20;
                const int j = 15 - y;  // row 0 is the lowest
                const bool isReached = std::max(std::abs(i), std::abs(j)) <= radius;
                for (std::size_t channel = 0; channel < 3; ++channel) {
                    const std::size_t index = bloom.index(radius + i, radius + j);
                    const float light = image.at(20, 15).*kComponents[channel];
                    const float expected = isReached
                                               ? light * (0.25f * bloom.planes[channel][index] +
                                                          3.0f * glare.planes[channel][index])
                                               : 0.0f;
                    ASSERT_NEAR(layer.at(x, y).*kComponents[channel], expected, 1e-5f * light)
                        << x << ", " << y;
                }
            }
        }
    }
}

TEST(BloomGlare, LosesOnlyWhatLeavesTheImage) {
    std::mt19937 random(5);
    std::uniform_real_distribution<float> shade(0.0f, 9.0f);
    for (const bool isLegacy : {false, true}) {
        const BloomGlareData data = makeData(0.5f, 0.25f, isLegacy);
        BloomGlareRenderer renderer;  // for its kernels
        const Image flat = render(makeImage(64, 80, {2, 1, 3}), data, renderer);
        EXPECT_NEAR(flat.at(32, 40).r, 0.75f * 2, 1e-4);
        EXPECT_NEAR(flat.at(21, 21).g, 0.75f * 1, 1e-4);
        EXPECT_NEAR(flat.at(40, 50).b, 0.75f * 3, 1e-4);
        EXPECT_LT(flat.at(0, 40).r, 0.75f * 2 * 0.75f);
        EXPECT_LT(flat.at(0, 0).r, flat.at(0, 40).r);

        Image lights = makeImage(64, 80);
        for (int i = 0; i < 30; ++i) {
            const auto x = 20 + static_cast<int>(random() % 24);
            lights.at(x, 20 + static_cast<int>(random() % 40)) = {shade(random), shade(random), 1};
        }
        const Image layer = render(lights, data, renderer);
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const auto component = kComponents[channel];
            EXPECT_NEAR(sumUp(layer, component) / sumUp(lights, component), 0.75, 1e-4);
        }
    }
}

TEST(BloomGlare, AnswersNumbersWhateverTheImageHolds) {
    Image image = makeImage(30, 20, {0.2f, 0.2f, 0.2f});
    image.at(7, 7) = {50, 60, 70};
    image.at(3, 9) = {};
    BloomGlareData data = makeData(1, 1, true);
    data.threshold = 1.0f;
    const Image clean = render(image, data);
    EXPECT_GT(sumUp(clean, &CompressedRgb::g), 50.0);
    for (const float value : {kNan, kInfinity, -kInfinity, -kLargest}) {
        image.at(3, 9) = {0, value, 0};
        const Image layer = render(image, data);
        EXPECT_TRUE(std::ranges::equal(layer.pixels(), clean.pixels())) << value;
    }
    const auto expectNumbers = [&] {
        const Image layer = render(image, data);
        for (const CompressedRgb& pixel : layer.pixels()) {
            ASSERT_TRUE(pixel.r >= 0 && pixel.g >= 0 && pixel.b >= 0);
            ASSERT_TRUE(std::isfinite(pixel.r + pixel.g / 4 + pixel.b / 4));
        }
    };
    image.at(3, 9) = {1, kLargest, kLargest};
    expectNumbers();
    data.bloomIntensity = data.glareIntensity = kInfinity;
    image.at(3, 9) = {1, 1, 1};
    image.at(7, 7) = {0, 60, 70};
    expectNumbers();
    data.size = data.glare.rotation = data.glare.colorShift = kNan;
    data.glare.streakCount = -4;
    expectNumbers();
    data.threshold = kInfinity;
    EXPECT_EQ(sumUp(render(image, data), &CompressedRgb::g), 0.0);
}

TEST(BloomGlare, TakesImagesOfAnySize) {
    for (const Pixel size : {Pixel{0, 0}, {0, 3}, {1, 1}, {1, 50}, {37, 1}, {40, 30}}) {
        for (const bool isLegacy : {false, true}) {
            const Image image = makeImage(size.x, size.y, {3, 2, 1});
            const Image layer = render(image, makeData(1, isLegacy ? 1.0f : 0.0f, isLegacy));
            EXPECT_EQ(layer.getSize(), size);
            const double light = sumUp(layer, &CompressedRgb::r);
            EXPECT_LE(light, 2.0001 * sumUp(image, &CompressedRgb::r));
            EXPECT_TRUE(light > 0.0 || size != (Pixel{40, 30}));
            const Image alone = render(image, makeData(1, isLegacy ? 1.0f : 0.0f, isLegacy), {});
            EXPECT_TRUE(std::ranges::equal(layer.pixels(), alone.pixels()));
        }
    }
}

/// The light of the layer on a circle around the middle, by degree.
std::vector<float> lookAround(const Image& layer, double distance) {
    std::vector<float> light;
    for (int degree = 0; degree < 360; ++degree) {
        const double angle = degree * std::numbers::pi / 180.0;
        const int x = static_cast<int>(std::lround(distance * std::cos(angle)));
        const int y = static_cast<int>(std::lround(distance * std::sin(angle)));
        light.push_back(layer.at(layer.getWidth() / 2 + x, layer.getHeight() / 2 + y).g);
    }
    return light;
}

TEST(LegacyGlare, ThrowsRaysAtEqualAngles) {
    Image image = makeImage(301, 301);
    image.at(150, 150) = {1000, 1000, 1000};
    for (const int count : {1, 2, 3, 4, 6, 16}) {
        for (const float rotation : {0.0f, 90.0f, -37.0f, 720.0f + 10.0f}) {
            BloomGlareData data = makeData(0, 1, true);
            data.size = 100;
            data.glare = {count, rotation, 0.0f, 0.0f, 0.0f};
            const auto light = lookAround(render(image, data), 75);
            const float brightest = *std::ranges::max_element(light);
            for (int degree = 0; degree < 360; ++degree) {
                const double spacing = 360.0 / count;
                const double distance =
                    std::abs(std::remainder(degree - static_cast<double>(rotation), spacing));
                if (distance < 0.5) {
                    EXPECT_GT(light[static_cast<std::size_t>(degree)], 0.5f * brightest) << degree;
                } else if (distance > 4.0) {
                    EXPECT_LT(light[static_cast<std::size_t>(degree)], 0.01f * brightest) << degree;
                }
            }
        }
    }
}

TEST(LegacyGlare, BlurWidensAndColorsReachFarther) {
    const auto getSpread = [](const PointSpreadFunction& psf, std::size_t channel, bool across) {
        double sum = 0.0;
        for (int y = 0; y < psf.getSize(); ++y) {
            for (int x = 0; x < psf.getSize(); ++x) {
                const double distance = std::abs(across ? y - psf.radius : x - psf.radius);
                sum += distance * static_cast<double>(psf.planes[channel][psf.index(x, y)]);
            }
        }
        return sum;
    };
    const auto sharp = makeLegacyGlarePsf({2, 0, 0, 0, 0}, 80);
    const auto blurred = makeLegacyGlarePsf({2, 0, 1, 0, 0}, 80);
    EXPECT_GT(getSpread(blurred, 0, true), 2.0 * getSpread(sharp, 0, true));
    EXPECT_EQ(sharp.planes[0], sharp.planes[1]);
    for (const float shift : {0.0f, 1.0f / 3.0f, 2.0f / 3.0f}) {
        const auto colored = makeLegacyGlarePsf({2, 0, 0, 1, shift}, 80);
        const auto farthest = static_cast<std::size_t>(std::lround(3.0f * (1.0f - shift))) % 3;
        for (std::size_t channel = 0; channel < 3; ++channel) {
            EXPECT_EQ(getSpread(colored, channel, false) > getSpread(sharp, 0, false),
                      channel == farthest);
        }
    }
}

TEST(BloomGlareProgress, StepsAreThoseThatWereSaid) {
    const Image bright = makeImage(16, 9, {1, 1, 1});
    for (const Image& image : {bright, makeImage(16, 9)}) {
        for (int bits = 0; bits < 16; ++bits) {
            BloomGlareData data =
                makeData(bits & 1 ? 0.2f : 0.0f, bits & 2 ? 0.2f : -1.0f, bits & 4);
            data.enabled = bits & 8 ? 1 : 0;
            float last = 0.0f;
            BloomGlareProgress progress(TaskProgress([&last](float fraction) {
                EXPECT_GE(fraction, last);
                last = fraction;
            }));
            EXPECT_EQ(progress.getTotalSteps(), 1);
            const int total = getBloomGlareTotalSteps(data, {});
            progress.setTotalSteps(total);
            BloomGlareRenderer renderer;
            for (int round = 0; round < 2; ++round) {
                last = 0.0f;
                progress.setCurrentStep(0);
                Image layer = image;
                EXPECT_TRUE(renderer.render({}, layer, data, progress));
                EXPECT_EQ(progress.getCurrentStep(), total);
                EXPECT_EQ(last, 1.0f);
            }
            const int active = bits & 8 ? (bits & 1) + (bits >> 1 & 1) : 0;
            EXPECT_EQ(total > 1, active > 0);
            EXPECT_EQ(renderer.getConvolutionCount(), image.at(0, 0).r > 0 ? active : 0);
        }
    }
}

TEST(BloomGlareProgress, AbortLeavesTheImageAsItWas) {
    const Image image = makeImage(40, 30, {1, 2, 3});
    const BloomGlareData data = makeData(0.2f, 0.2f);
    const Image expected = render(image, data);
    BloomGlareRenderer renderer;
    bool isDone = false;
    for (int allowed = 0; !isDone; ++allowed) {
        ASSERT_LT(allowed, 100);
        int asked = 0;
        BloomGlareProgress progress(TaskProgress({}, [&] { return asked++ >= allowed; }));
        Image layer = image;
        isDone = renderer.render(ImageOperatorsFlag::Parallel, layer, data, progress);
        EXPECT_TRUE(std::ranges::equal(layer.pixels(), (isDone ? expected : image).pixels()));
        EXPECT_TRUE(!isDone || allowed > 10);
    }
}

TEST(BloomGlareRenderer, ConvolvesOnlyWhatHasChanged) {
    Image image = makeImage(50, 40, {0.5f, 0.5f, 0.5f});
    image.at(10, 30) = {9, 8, 7};
    BloomGlareData data = makeData(0.2f, 0.0f, true);  // whose kernels are made fast
    data.threshold = 1.0f;
    BloomGlareRenderer renderer;
    const struct {
        std::function<void()> change;
        int convolutions;
    } cases[] = {
        {[] {}, 1},
        {[&] { data.glareIntensity = 0.1f; }, 1},
        {[&] { data.bloomIntensity = 0.7f; }, 0},
        {[&] { data.bloomIntensity = 0.0f; }, 0},
        {[&] { data.bloomIntensity = 0.3f; }, 0},
        {[&] {
             image.at(1, 1) = {0.1f, 0, 0};
         },
         0},  // is dark and stays so
        {[&] {
             image.at(1, 1) = {3, 0, 0};
         },
         2},
        {[&] {
             image.at(1, 1) = {0, 3, 0};
         },
         2},
        {[&] { std::swap(image.at(1, 1), image.at(2, 1)); }, 2},
        {[&] { data.glare.rotation = 3.0f; }, 1},
        {[&] { data.size = 30.0f; }, 2},
        {[&] { data.threshold = 2.0f; }, 2},
        {[&] { data.legacy = 0; }, 2},
        {[&] { data.aperture.bladeCount = 9; }, 0},  // the aperture is not custom
        {[&] { data.aperture.isCustom = true; }, 1},
        {[&] { data.aperture.bladeCount = 5; }, 1},
        {[&] {
             image = makeImage(50, 30, {5, 5, 5});
         },
         2},
    };
    int expected = 0;
    for (const auto& [change, convolutions] : cases) {
        change();
        expected += convolutions;
        Image layer = image;
        BloomGlareProgress progress;
        ASSERT_TRUE(renderer.render(ImageOperatorsFlag::Parallel, layer, data, progress));
        EXPECT_EQ(renderer.getConvolutionCount(), expected);
        EXPECT_TRUE(std::ranges::equal(layer.pixels(), render(image, data).pixels()));
    }
}

TEST(BloomGlareProgress, OtherThreadsMayReadAndAbort) {
    std::atomic<bool> isWanted = true;
    BloomGlareProgress progress(TaskProgress({}, [&isWanted] { return !isWanted; }));
    std::thread other([&isWanted, copy = progress] {
        while (copy.getCurrentStep() < 4) {
            std::this_thread::yield();
        }
        EXPECT_EQ(copy.getTotalSteps(), 10);
        isWanted = false;
    });
    progress.setTotalSteps(10);
    Image image = makeImage(60, 60, {1, 1, 1});
    bool isDone = true;
    while (isDone) {
        isDone =
            computeBloomAndGlare(ImageOperatorsFlag::Parallel, image, makeData(1, 1), {}, progress);
    }
    other.join();
    EXPECT_GE(progress.getCurrentStep(), 4);
}

TEST(BloomGlareData, ComesFromSettings) {
    tests::MapSettings settings;
    EXPECT_EQ(getPostProcessData(settings).bloomGlare, BloomGlareData());
    settings.set(368, Property(true));
    settings.set(400, Property(true));
    settings.set(353, Property(1.5f));
    settings.set(354, Property(2.5f));
    settings.set(360, Property(3.5f));
    settings.set(387, Property(45.0f));
    settings.set(355, Property(7));
    settings.set(401, Property(true));
    BloomGlareData expected{1, 1, 1.5f, 2.5f, 3.5f, 45.0f, {}, {}};
    expected.glare.streakCount = 7;
    expected.aperture.isCustom = true;
    EXPECT_EQ(getPostProcessData(settings).bloomGlare, expected);
}

}  // namespace
}  // namespace tavrin::postcore
