#include "foundation/Scheduler.h"
#include "services/postcore/sharpening/DiscreteGaussian.h"
#include "services/postcore/sharpening/Sharpening.h"

#include <gtest/gtest.h>
#include <hwy/highway.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <span>
#include <vector>

namespace tavrin::postcore {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kLargest = std::numeric_limits<float>::max();
constexpr int kLargestInt = std::numeric_limits<int>::max();

struct Values {
    float amount;
    float sharpenRadius;
    float blurRadius;
};

Sharpening makeSharpening(const Values& values, float radiusFactor = 1.0f) {
    Sharpening sharpening;
    sharpening.initialize(true, values.amount, values.sharpenRadius, values.blurRadius,
                          radiusFactor);
    return sharpening;
}

BitmapImpl<Rgb> makeImage(int width, int height, const auto& getPixel) {
    BitmapImpl<Rgb> image(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            image.at(x, y) = getPixel(x, y);
        }
    }
    return image;
}

/// Noise with alphas of any kind, and some pixels that are not finite.
BitmapImpl<Rgb> makeNoise(int width, int height, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> shade(0.0f, 1.5f);
    return makeImage(width, height, [&](int, int) {
        Rgb pixel{shade(random), shade(random), shade(random), shade(random)};
        const auto kind = random() % 64;
        float* const floats[] = {&pixel.r, &pixel.g, &pixel.b, &pixel.a};
        if (kind < 4) {
            *floats[kind] = random() % 2 ? kNan : -kInfinity;
        }
        return pixel;
    });
}

bool areSameBits(const BitmapImpl<Rgb>& left, const BitmapImpl<Rgb>& right) {
    return left.getSize() == right.getSize() &&
           std::ranges::equal(std::as_bytes(left.pixels()), std::as_bytes(right.pixels()));
}

int wrap(int x, int width) {
    return (x % width + width) % width;
}

/// The mean of one component around (x, y), with weights from the Bessel function itself.
double computeMean(const BitmapImpl<Rgb>& image, float Rgb::*component, int x, int y,
                   double deviation, bool sidesMeet) {
    const double t = deviation * deviation;
    const int reach = static_cast<int>(std::ceil(7.0 * deviation)) + 2;
    std::vector<double> weights;
    for (int n = 0; n <= reach; ++n) {
        weights.push_back(std::exp(-t) * std::cyl_bessel_i(n, t));
    }
    double sum = 0.0;
    double weightSum = 0.0;
    for (int dy = -reach; dy <= reach; ++dy) {
        for (int dx = -reach; dx <= reach; ++dx) {
            const int column = sidesMeet ? wrap(x + dx, image.getWidth()) : x + dx;
            const int row = y + dy;
            const bool exists = column >= 0 && column < image.getWidth() && row >= 0 &&
                                row < image.getHeight() && isFinite(image.at(column, row));
            if (exists) {
                const double weight = weights[static_cast<std::size_t>(std::abs(dx))] *
                                      weights[static_cast<std::size_t>(std::abs(dy))];
                sum += weight * static_cast<double>(image.at(column, row).*component);
                weightSum += weight;
            }
        }
    }
    return sum / weightSum;
}

void expectFiltered(const BitmapImpl<Rgb>& image, const Values& values, bool sidesMeet) {
    BitmapImpl<Rgb> result = image;
    makeSharpening(values).apply({}, result, 1, sidesMeet);
    const double wideRadius = std::hypot(values.sharpenRadius, values.blurRadius);
    for (int y = 0; y < image.getHeight(); ++y) {
        for (int x = 0; x < image.getWidth(); ++x) {
            const Rgb& before = image.at(x, y);
            const Rgb& after = result.at(x, y);
            ASSERT_EQ(std::memcmp(&before.a, &after.a, sizeof(float)), 0);
            if (!isFinite(before)) {
                ASSERT_EQ(std::memcmp(&before, &after, sizeof(Rgb)), 0);
                continue;
            }
            for (const auto component : {&Rgb::r, &Rgb::g, &Rgb::b}) {
                const auto getMean = [&](double radius) {
                    return computeMean(image, component, x, y, radius, sidesMeet);
                };
                const double narrow = getMean(values.blurRadius);
                const double expected =
                    std::max(narrow + values.amount * (narrow - getMean(wideRadius)), 0.0);
                ASSERT_NEAR(after.*component, expected, 1e-4 * (1.0 + values.amount))
                    << x << ", " << y;
            }
        }
    }
}

TEST(Sharpening, IsTheDifferenceOfTwoBlursWithEveryInstructionSet) {
    const struct {
        Pixel size;
        Values values;
        bool sidesMeet;
    } cases[] = {
        {{1, 1}, {5, 2, 1}, false},         {{1, 19}, {1, 1, 0.5f}, true},
        {{23, 1}, {2, 0.4f, 0}, false},     {{7, 5}, {10, 0.05f, 0}, false},
        {{33, 21}, {3, 1.5f, 0.3f}, false}, {{18, 13}, {1, 0.5f, 0}, true},
        {{21, 9}, {0, 3, 2}, true},         {{16, 8}, {1.5f, 3, 2}, false},
    };
    for (const std::int64_t target : hwy::SupportedAndGeneratedTargets()) {
        hwy::SetSupportedTargetsForTest(target);
        hwy::GetChosenTarget().Update(hwy::SupportedTargets());
        for (const auto& [size, values, sidesMeet] : cases) {
            SCOPED_TRACE(std::to_string(size.x) + " x " + std::to_string(size.y) + " " +
                         hwy::TargetName(target));
            expectFiltered(makeNoise(size.x, size.y, 7), values, sidesMeet);
        }
    }
    hwy::SetSupportedTargetsForTest(0);
    hwy::GetChosenTarget().Update(hwy::SupportedTargets());
}

TEST(Sharpening, ChangesWavesAlikeAtEveryScale) {
    const double frequency = 2.0 * std::acos(-1.0) / 48.0;
    const auto getResponse = [=](double radius) {
        return std::exp(-0.5 * frequency * frequency * radius * radius);
    };
    const Values cases[] = {{2, 4, 0}, {0, 0, 6}, {3, 2, 5}};
    for (const Values& values : cases) {
        const double expected = getResponse(values.blurRadius) *
                                (1.0 + values.amount * (1.0 - getResponse(values.sharpenRadius)));
        for (const int scale : {1, 2, 4}) {
            const auto getWave = [=](double amplitude, int x) {
                return 0.5 + amplitude * std::cos(frequency * scale * x);
            };
            const int width = 384 / scale;
            auto image = makeImage(width, 3, [&](int x, int) {
                const auto shade = static_cast<float>(getWave(0.1, x));
                return Rgb{shade, shade, 0.5f, 1.0f};
            });
            makeSharpening({values.amount, values.sharpenRadius / 4, values.blurRadius / 4}, 4.0f)
                .apply({}, image, scale, false);
            for (int x = width / 4; x < 3 * width / 4; ++x) {
                EXPECT_NEAR(image.at(x, 1).r, getWave(0.1 * expected, x), 1e-3) << scale;
                EXPECT_NEAR(image.at(x, 1).b, 0.5, 1e-6);
            }
        }
    }
}

TEST(Sharpening, StaysInTheRangeOfFloats) {
    for (const Values& values : {Values{10, 10, 0}, Values{10, 1, 3}, Values{0, 0, 10}}) {
        for (const float shade : {0.0f, 1e-20f, 1.0f, kLargest}) {
            auto flat = makeImage(9, 40, [&](int, int) { return Rgb{shade, shade, shade, 0}; });
            auto mixed = makeImage(9, 40, [&](int x, int y) {
                return Rgb{(x + y) % 2 ? shade : 0, y % 2 ? shade : -shade, -shade, 0};
            });
            makeSharpening(values).apply({}, flat, 1, false);
            makeSharpening(values).apply({}, mixed, 1, false);
            for (const Rgb& pixel : flat.pixels()) {
                EXPECT_LE(std::abs(pixel.r / 2 - shade / 2), 1e-5f * shade);
            }
            for (const Rgb& pixel : mixed.pixels()) {
                EXPECT_TRUE(isFinite(pixel));
                EXPECT_GE(pixel.r, 0.0f);
                if (values.amount == 0.0f) {
                    EXPECT_LE(std::abs(pixel.r - shade / 2), 0.1f * shade);
                }
                EXPECT_LE(std::abs(pixel.b / 2 + shade / 2), 1e-5f * shade);
            }
        }
    }
}

TEST(Sharpening, PartsAndThreadsMakeNoDifference) {
    std::mt19937 random(3);
    const auto pick = [&](int from, int to) {
        return std::uniform_int_distribution<int>(from, to)(random);
    };
    for (int i = 0; i < 40; ++i) {
        const Values values{static_cast<float>(pick(0, 3)), 0.1f * static_cast<float>(pick(1, 60)),
                            0.1f * static_cast<float>(pick(0, 30))};
        const int scale = pick(1, 4);
        const auto image = makeNoise(pick(1, 300), pick(1, 300), random());
        const Pixel size = image.getSize();
        const Sharpening sharpening = makeSharpening(values);
        BitmapImpl<Rgb> whole = image;
        sharpening.apply(ImageOperatorsFlag::Parallel, whole, scale, false);
        BitmapImpl<Rgb> alone = image;
        sharpening.apply({}, alone, scale, false);
        EXPECT_TRUE(areSameBits(whole, alone));

        const int radius =
            sharpening.getWindowRadius({size.x * scale, size.y * scale}, scale) / scale;
        const int x0 = pick(0, size.x - 1);
        const int y0 = pick(0, size.y - 1);
        const Bucket part{x0, y0, pick(x0 + 1, size.x), pick(y0 + 1, size.y)};
        const Bucket around{std::max(x0 - radius, 0), std::max(y0 - radius, 0), part.x1 + radius,
                            part.y1 + radius};
        BitmapImpl<Rgb> tile = getSubBitmap({}, image, around);
        sharpening.apply({}, tile, scale, false);
        EXPECT_TRUE(areSameBits(getSubBitmap({}, tile,
                                             {x0 - around.x0, y0 - around.y0, part.x1 - around.x0,
                                              part.y1 - around.y0}),
                                getSubBitmap(ImageOperatorsFlag::Parallel, whole, part)));
    }
}

TEST(Sharpening, WindowIsOnTheGridAndCoversTheImageAtMost) {
    const Sharpening sharpening = makeSharpening({1, 10, 10});
    for (const int scale : {1, 2, 3, 5, 8, 100, 1000, 1000000, kLargestInt}) {
        const int radius = sharpening.getWindowRadius({kLargestInt, 4}, scale);
        EXPECT_EQ(radius % scale, 0) << scale;
        EXPECT_EQ(sharpening.getWindowRadius({0, 0}, scale), 0);
        EXPECT_LE(sharpening.getWindowRadius({7, 4}, scale), 6 + std::int64_t{scale});
    }
    EXPECT_GT(sharpening.getWindowRadius({4000, 4}, 1), 4 * 14);
    EXPECT_EQ(sharpening.getWindowRadius({4000, 4}, 1), sharpening.getWindowRadius({4000, 4}, 0));
}

TEST(Sharpening, DoesNothingWhereThereIsNothingToDo) {
    const struct {
        bool enabled;
        Values values;
        float factor;
    } cases[] = {
        {false, {1, 3, 3}, 1},
        {true, {0, 3, 0}, 1},
        {true, {1, 0, 0}, 1},
        {true, {-1, 3, -3}, 1},
        {true, {1, -3, -3}, -1},
        {true, {kNan, 3, kNan}, 1},
        {true, {1, kInfinity, kNan}, 1},
        {true, {1, 3, 3}, kNan},
        {true, {kInfinity, 3, 0}, 1},
        {true, {1, 3, 3}, 0},
        {true, {1, 1e-4f, 0}, 1},
    };
    for (const auto& [enabled, values, factor] : cases) {
        Sharpening sharpening = makeSharpening({1, 1, 1});
        sharpening.initialize(enabled, values.amount, values.sharpenRadius, values.blurRadius,
                              factor);
        EXPECT_EQ(sharpening.getWindowRadius({500, 500}, 1), 0);
        const auto image = makeNoise(20, 20, 1);
        BitmapImpl<Rgb> result = image;
        sharpening.apply({}, result, 1, false);
        EXPECT_TRUE(areSameBits(result, image)) << values.amount << ", " << values.sharpenRadius;
    }
    Sharpening largest = makeSharpening({kLargest, kLargest, kLargest}, kLargest);
    BitmapImpl<Rgb> image = makeNoise(5, 5, 1);
    largest.apply({}, image, 1, true);
    BitmapImpl<Rgb> none;
    largest.apply(ImageOperatorsFlag::Parallel, none, 1, true);
    EXPECT_LT(largest.getWindowRadius({kLargestInt, kLargestInt}, 1), 1000);
}

TEST(DiscreteGaussian, HasTheVarianceAndFadesToNothing) {
    for (const double variance : {1e-4, 0.0025, 0.04, 0.25, 1.0, 9.0, 200.0, 8192.0}) {
        const std::vector<float> weights = makeDiscreteGaussian(variance);
        double sum = -weights[0];
        double squares = 0.0;
        for (std::size_t n = 0; n < weights.size(); ++n) {
            sum += 2.0 * weights[n];
            squares += 2.0 * weights[n] * static_cast<double>(n * n);
        }
        EXPECT_NEAR(sum, 1.0, 1e-6);
        EXPECT_NEAR(squares / variance, 1.0, 5e-3) << variance;
    }
    EXPECT_EQ(makeDiscreteGaussian(2e-5), std::vector<float>{1.0f});
    EXPECT_EQ(makeDiscreteGaussian(static_cast<double>(kNan)), std::vector<float>{1.0f});
}

TEST(GetSubBitmap, AnswersWhatIsInside) {
    const auto image = makeNoise(5, 4, 1);
    constexpr int kLeast = std::numeric_limits<int>::min();
    const Bucket rectangles[] = {
        {0, 0, 5, 4},  {1, 2, 4, 3}, {-3, 2, 2, 9}, {kLeast, kLeast, kLargestInt, kLargestInt},
        {-2, 1, 0, 3}, {5, 0, 9, 4}, {3, 3, 1, 4},
    };
    for (const Bucket& rectangle : rectangles) {
        const int x0 = std::max(rectangle.x0, 0);
        const int y0 = std::max(rectangle.y0, 0);
        const int width = std::min(rectangle.x1, 5) - x0;
        const int height = std::min(rectangle.y1, 4) - y0;
        const bool isEmpty = width <= 0 || height <= 0;
        const auto expected = makeImage(isEmpty ? 0 : width, isEmpty ? 0 : height,
                                        [&](int x, int y) { return image.at(x0 + x, y0 + y); });
        EXPECT_TRUE(areSameBits(getSubBitmap({}, image, rectangle), expected)) << rectangle.x0;
        EXPECT_TRUE(
            areSameBits(getSubBitmap(ImageOperatorsFlag::Parallel, image, rectangle), expected));
    }
}

}  // namespace
}  // namespace tavrin::postcore
