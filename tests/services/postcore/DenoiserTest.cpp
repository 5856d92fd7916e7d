#include "services/postcore/denoise/IDenoiser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <thread>
#include <utility>
#include <vector>

namespace tavrin::postcore {
namespace {

using Bitmap = BitmapImpl<Rgb>;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

class Messages final : public ILogger {
public:
    void error(const String& text) override { texts.push_back(text.toUtf8()); }
    void warning(const String& text) override { error(text); }
    std::vector<std::string> texts;
};

Bitmap fill(Pixel size, Rgb pixel) {
    Bitmap bitmap(size.x, size.y);
    std::ranges::fill(bitmap.pixels(), pixel);
    return bitmap;
}

Bitmap grey(Pixel size, float value) {
    return fill(size, {value, value, value, 0.5f});
}

/// The bitmap with independent noise of one standard deviation in all components.
Bitmap addNoise(Bitmap bitmap, float deviation) {
    std::mt19937 random(7);
    std::normal_distribution<float> noise(0.0f, deviation);
    for (Rgb& pixel : bitmap.pixels()) {
        pixel = {pixel.r + noise(random), pixel.g + noise(random), pixel.b + noise(random),
                 pixel.a};
    }
    return bitmap;
}

double getError(const Bitmap& left, const Bitmap& right) {
    double sum = 0.0;
    for (std::size_t i = 0; i < left.pixels().size(); ++i) {
        sum += std::pow(left.pixels()[i].g - right.pixels()[i].g, 2.0);
    }
    return sum / static_cast<double>(left.pixels().size());
}

Optional<Bitmap> denoise(DenoisingMode mode, const Bitmap& color, const Bitmap& variance,
                         DenoisingData data = {}, const IDenoiser::Progress& progress = {}) {
    Messages messages;
    const auto denoiser = createDenoiser(mode, Scheduler::defaultInstance(), messages,
                                         std::move(data), OidnBackend::Best);
    return denoiser->denoise(color, variance, progress);
}

Bitmap removeFireflies(const Bitmap& color, const Bitmap& variance, float sensitivity = 1.0f) {
    DenoisingData data;
    data.fireflySensitivity = sensitivity;
    return *denoise(DenoisingMode::FirefliesOnly, color, variance, std::move(data));
}

/// Pixels that belong together, in an image of 128 × 128 pixels.
struct BrightPixels {
    const char* name;
    std::vector<Pixel> positions;
    float deviation;  ///< of each of them; they are 30 in surroundings of 1
    bool isRemoved;
};

class Fireflies : public testing::TestWithParam<BrightPixels> {};

TEST_P(Fireflies, AreSingleAndUncertain) {
    Bitmap color = grey({128, 128}, 1.0f);
    Bitmap variance = grey({128, 128}, 1e-6f);
    const float deviation = GetParam().deviation;
    for (const Pixel position : GetParam().positions) {
        color.at(position.x, position.y) = {30.0f, 30.0f, 30.0f, 0.5f};
        variance.at(position.x, position.y) = {deviation * deviation, deviation * deviation,
                                               deviation * deviation};
    }
    const Bitmap expected = GetParam().isRemoved ? grey({128, 128}, 1.0f) : color;
    const Bitmap result = removeFireflies(color, variance);
    for (std::size_t i = 0; i < result.pixels().size(); ++i) {
        EXPECT_EQ(result.pixels()[i], expected.pixels()[i]) << i;
        EXPECT_EQ(result.pixels()[i].a, 0.5f);
    }
    EXPECT_EQ(getError(removeFireflies(color, variance, 0.0f), color), 0.0);
}

INSTANTIATE_TEST_SUITE_P(
    , Fireflies,
    testing::Values(BrightPixels{"spikes", {{8, 8}, {0, 0}, {127, 3}, {4, 12}}, 40.0f, true},
                    BrightPixels{"certain", {{8, 8}, {0, 0}}, 1.0f, false},
                    BrightPixels{"highlight", {{8, 8}, {8, 9}, {9, 8}, {9, 9}}, 40.0f, false},
                    BrightPixels{
                        "line", {{2, 5}, {3, 6}, {4, 7}, {5, 8}, {6, 9}, {7, 10}}, 40.0f, false}),
    [](const auto& parameters) { return parameters.param.name; });

TEST(FireflyDenoiser, LeavesNoiseThatAgreesWithItsNeighboursBitForBit) {
    const Bitmap noisy = addNoise(grey({40, 30}, 2.0f), 0.3f);
    const Bitmap result = removeFireflies(noisy, grey({40, 30}, 0.09f));
    EXPECT_TRUE(std::ranges::equal(result.pixels(), noisy.pixels()));
}

double getMean(const Bitmap& bitmap) {
    double sum = 0.0;
    for (const Rgb& pixel : bitmap.pixels()) {
        sum += double{pixel.r} + pixel.g + pixel.b;
    }
    return sum / (3.0 * static_cast<double>(bitmap.getPixelCount()));
}

TEST(FireflyDenoiser, TakesLittleLightAndCleansTheDarkFirst) {
    constexpr int kWidth = 100;
    constexpr int kHeight = 60;
    const auto isFirefly = [](int x, int y) { return x % 5 == 2 && y % 5 == 2; };
    Bitmap color(kWidth, kHeight);
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            const float shade = (x < kWidth / 2 ? 0.1f : 4.0f) * (isFirefly(x, y) ? 10.0f : 1.0f);
            color.at(x, y) = {shade, 0.5f * shade, shade, 1.0f};
        }
    }
    const Bitmap result = removeFireflies(color, grey({kWidth, kHeight}, 1e3f));
    EXPECT_GT(getMean(result), 0.99 * getMean(color));
    EXPECT_LT(getMean(result), 0.992 * getMean(color));
    int leftCount = 0;
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            if (!isFirefly(x, y)) {
                EXPECT_EQ(result.at(x, y), color.at(x, y));
            } else if (x < kWidth / 2) {
                EXPECT_EQ(result.at(x, y), color.at(0, 0)) << x << ' ' << y;
            } else {
                leftCount += result.at(x, y) == color.at(x, y) ? 1 : 0;
            }
        }
    }
    EXPECT_GT(leftCount, 60);
    EXPECT_LT(leftCount, 120);
}

TEST(FireflyDenoiser, FillsPixelsThatAreNotFinite) {
    Bitmap color = grey({9, 9}, 3.0f);
    color.at(4, 4).g = kNan;
    color.at(0, 8).r = kInfinity;
    const Bitmap result = removeFireflies(color, grey({9, 9}, 0.01f));
    EXPECT_TRUE(std::ranges::equal(result.pixels(), grey({9, 9}, 3.0f).pixels()));
}

/// A picture, its features, and how far denoising brings the error down at least.
struct Scene {
    const char* name;
    Function<Rgb(int x, int y)> color;
    bool isDiffuseVisible;  ///< the picture itself is the feature VisibleDiffuse
    double factor;
};

class HighQuality : public testing::TestWithParam<Scene> {};

constexpr Pixel kSize{83, 61};
constexpr float kDeviation = 0.1f;

Bitmap paint(const Function<Rgb(int x, int y)>& color) {
    Bitmap bitmap(kSize.x, kSize.y);
    for (int y = 0; y < kSize.y; ++y) {
        for (int x = 0; x < kSize.x; ++x) {
            bitmap.at(x, y) = color(x, y);
        }
    }
    return bitmap;
}

DenoisingData makeData(const Bitmap& diffuse) {
    DenoisingData data;
    data.features.push_back({FeatureType::VisibleNormals, fill(diffuse.getSize(), {0, 0, 1}),
                             grey(diffuse.getSize(), 0.0f)});
    data.features.push_back({FeatureType::VisibleDiffuse, diffuse, grey(diffuse.getSize(), 0.0f)});
    return data;
}

TEST_P(HighQuality, TakesNoiseAwayAndKeepsThePicture) {
    const Bitmap clean = paint(GetParam().color);
    const Bitmap noisy = addNoise(clean, kDeviation);
    const Bitmap variance = grey(kSize, kDeviation * kDeviation);
    const Bitmap diffuse = GetParam().isDiffuseVisible ? clean : grey(kSize, 0.5f);
    const Bitmap result = *denoise(DenoisingMode::HighQuality, noisy, variance, makeData(diffuse));
    EXPECT_LT(getError(result, clean) * GetParam().factor, getError(noisy, clean));
    EXPECT_NEAR(getMean(result) / getMean(noisy), 1.0, 0.01);
    DenoisingData data = makeData(diffuse);
    data.sensitivity = 0.0f;
    data.fireflySensitivity = 0.0f;
    EXPECT_EQ(
        getError(*denoise(DenoisingMode::HighQuality, noisy, variance, std::move(data)), noisy),
        0.0);
}

INSTANTIATE_TEST_SUITE_P(
    , HighQuality,
    testing::Values(Scene{"constant",
                          [](int, int) {
                              return Rgb{0.5f, 0.6f, 0.7f};
                          },
                          false, 150.0},
                    Scene{"step",
                          [](int x, int) {
                              return x < 40 ? Rgb{0.2f, 0.2f, 0.2f} : Rgb{2.0f, 2.0f, 2.0f};
                          },
                          false, 50.0},
                    Scene{"texture",
                          [](int x, int y) {
                              const float shade = (x / 3 + y / 3) % 2 == 0 ? 0.3f : 0.6f;
                              return Rgb{shade, shade, shade};
                          },
                          true, 17.5}),
    [](const auto& parameters) { return parameters.param.name; });

TEST(HighQualityDenoiser, KeepsTheLightOfRareBrightSamples) {
    constexpr float kExcess = 80.0f;
    constexpr unsigned kPeriod = 100;
    Bitmap noisy = addNoise(grey(kSize, 1.0f), kDeviation);
    std::mt19937 random(5);
    for (Rgb& pixel : noisy.pixels()) {
        const float excess = random() % kPeriod == 0 ? kExcess : 0.0f;
        pixel = {pixel.r + excess, pixel.g + excess, pixel.b + excess, pixel.a};
    }
    const Bitmap variance = grey(kSize, kExcess * kExcess / kPeriod);
    const Bitmap result =
        *denoise(DenoisingMode::HighQuality, noisy, variance, makeData(grey(kSize, 0.5f)));
    EXPECT_NEAR(getMean(result) / getMean(noisy), 1.0, 0.01);
    EXPECT_LT(30.0 * getError(result, grey(kSize, 1.0f + kExcess / kPeriod)),
              getError(noisy, grey(kSize, 1.0f)));
}

TEST(HighQualityDenoiser, LeavesCertainPixelsNearlyAlone) {
    const Bitmap color = addNoise(grey(kSize, 1.0f), 0.2f);
    const Bitmap result = *denoise(DenoisingMode::HighQuality, color, grey(kSize, 0.0f));
    EXPECT_LT(getError(result, color), 1e-6);
}

TEST(HighQualityDenoiser, AnswersFinitePixelsWhateverItGets) {
    for (const Pixel size : {Pixel{1, 1}, Pixel{1, 40}, Pixel{17, 2}, Pixel{65, 33}}) {
        std::mt19937 random(3);
        const float odd[] = {0.0f, -1.0f, 1e30f, -1e38f, kNan, kInfinity, -kInfinity, 0.5f, 1e-40f};
        const auto pick = [&] {
            Bitmap bitmap(size.x, size.y);
            for (Rgb& pixel : bitmap.pixels()) {
                pixel = {odd[random() % 9], odd[random() % 9], odd[random() % 9], 1.0f};
            }
            return bitmap;
        };
        DenoisingData data;
        data.features.push_back({FeatureType::VisibleNormals, pick(), pick()});
        data.features.push_back({FeatureType::VisibleDiffuse, pick(), {}});
        data.features.push_back({FeatureType::Hybrid, pick(), pick()});
        for (const DenoisingMode mode :
             {DenoisingMode::FirefliesOnly, DenoisingMode::HighQuality}) {
            const auto result = denoise(mode, pick(), pick(), data);
            ASSERT_EQ(result->getSize(), size);
            for (const Rgb& pixel : result->pixels()) {
                EXPECT_TRUE(std::isfinite(pixel.r) && std::isfinite(pixel.g) &&
                            std::isfinite(pixel.b));
            }
        }
    }
}

TEST(HighQualityDenoiser, AnswersTheSameForAnyNumberOfThreads) {
    const Bitmap color = addNoise(grey({90, 70}, 1.0f), 0.3f);
    const Bitmap variance = grey({90, 70}, 0.09f);
    std::vector<Bitmap> results;
    for (const int threads : {1, 4}) {
        Scheduler::setThreadCount(threads);
        results.push_back(
            *denoise(DenoisingMode::HighQuality, color, variance, makeData(grey({90, 70}, 0.4f))));
    }
    Scheduler::setThreadCount(0);
    EXPECT_TRUE(std::ranges::equal(results[0].pixels(), results[1].pixels()));
}

TEST(Denoisers, ReportProgressOnTheirThreadAndStopWhenTold) {
    const Bitmap color = addNoise(grey({200, 100}, 1.0f), 0.3f);
    for (const DenoisingMode mode : {DenoisingMode::FirefliesOnly, DenoisingMode::HighQuality}) {
        const auto thread = std::this_thread::get_id();
        float last = 0.0f;
        int calls = 0;
        EXPECT_TRUE(denoise(mode, color, grey({200, 100}, 0.09f), {}, [&](float fraction) {
            EXPECT_EQ(std::this_thread::get_id(), thread);
            EXPECT_GE(fraction, last);
            last = fraction;
            ++calls;
            return true;
        }));
        EXPECT_GE(calls, 3);  // fewer the more of the work other threads do
        EXPECT_EQ(last, 1.0f);
        calls = 0;
        EXPECT_FALSE(denoise(mode, color, grey({200, 100}, 0.09f), {},
                             [&calls](float) { return ++calls < 3; }));
        EXPECT_EQ(calls, 3);
    }
}

TEST(Denoisers, SayWhyThereIsNone) {
    for (const auto& [mode, text] :
         {std::pair(DenoisingMode::None, "No denoising mode is selected."),
          std::pair(DenoisingMode::NvidiaGpuAi,
                    "The NVIDIA denoiser is not installed on this system.")}) {
        Messages messages;
        EXPECT_FALSE(
            createDenoiser(mode, Scheduler::defaultInstance(), messages, {}, OidnBackend::Best));
        EXPECT_THAT(messages.texts, testing::ElementsAre(text));
    }
}

}  // namespace
}  // namespace tavrin::postcore
