#include "foundation/StandardPaths.h"
#include "services/postcore/denoise/CertainPixels.h"
#include "services/postcore/denoise/neural/FeatureTrust.h"
#include "services/postcore/denoise/neural/LightKeeping.h"
#include "services/postcore/denoise/neural/NeuralDenoiser.h"
#include "services/postcore/denoise/neural/TileChannels.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <limits>
#include <random>
#include <utility>
#include <vector>

namespace tavrin::postcore {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

BitmapImpl<Rgb> makeFlat(Pixel size, float value) {
    BitmapImpl<Rgb> bitmap(size.x, size.y);
    std::ranges::fill(bitmap.pixels(), Rgb{value, value, value, 1.0f});
    return bitmap;
}

/// Multiples of the shade with a mean of 1; alpha counts the pixels.
BitmapImpl<Rgb> makeNoise(Pixel size, float shade) {
    std::mt19937 random(1);
    std::exponential_distribution<float> factor(1.0f);
    BitmapImpl<Rgb> bitmap(size.x, size.y);
    float alpha = 0.0f;
    for (Rgb& pixel : bitmap.pixels()) {
        pixel = {shade * factor(random), shade * factor(random), shade * factor(random), ++alpha};
    }
    return bitmap;
}

void takeBack(const BitmapImpl<Rgb>& noisy, const BitmapImpl<Rgb>& variance, float sensitivity,
              BitmapImpl<Rgb>& result) {
    Scheduler& scheduler = Scheduler::defaultInstance();
    const auto shares = findCertainPixels(scheduler, noisy, variance, 1.0f, sensitivity, result);
    keepCertainPixels(scheduler, noisy, shares, result);
}

TEST(CertainPixels, TakesTheMeanWeighedByTheErrors) {
    const struct {
        const char* name;
        float noisy;
        float denoised;
        float deviation;
        float sensitivity;
        float expected;
    } cases[] = {
        {"noise of the network's own error", 1.1f, 1.0f, 0.01f, 1.0f, 1.05f},
        {"more noise, half of it believed", 1.1f, 1.0f, 0.02f, 0.5f, 1.05f},
        {"an uncertain pixel", 3.0f, 1.0f, 1.0f, 1.0f, 1.0002f},
        {"a light", 150.0f, 100.0f, 4.0f, 1.0f, 149.505f},
        {"a firefly", 150.0f, 1.0f, 150.0f, 1.0f, 1.0f},
        {"no variance", 3.0f, 1.0f, 0.0f, 1.0f, 1.0f},
        {"a variance that is none", 3.0f, 1.0f, kNan, 1.0f, 1.0f},
        {"an infinite variance", 3.0f, 1.0f, kInfinity, 1.0f, 1.0f},
        {"nothing is believed to be noise", 3.0f, 1.0f, 1.0f, 0.0f, 3.0f},
        {"a missing pixel", kNan, 1.0f, 1.0f, 0.0f, 1.0f},
        {"a negative pixel", -1.0f, 1.0f, 1.0f, 0.0f, 0.0f},
        {"the largest floats", 3e38f, 3e38f, 1e19f, 1.0f, 3e38f},
    };
    const Pixel size{7, 3};
    for (const auto& [name, noisy, denoised, deviation, sensitivity, expected] : cases) {
        auto result = makeFlat(size, denoised);
        auto source = makeFlat(size, noisy);
        source.at(6, 2).a = 0.25f;
        takeBack(source, makeFlat(size, deviation * deviation), sensitivity, result);
        for (const Rgb& pixel : result.pixels()) {
            EXPECT_NEAR(pixel.g, expected, 1e-4f * expected) << name;
        }
        EXPECT_EQ(result.at(6, 2).a, 0.25f);
    }
}

TEST(CertainPixels, BelievesNoSingleSmallVariance) {
    auto variance = makeFlat({9, 9}, 1.0f);
    variance.at(4, 4) = Rgb();
    auto result = makeFlat({9, 9}, 1.0f);
    takeBack(makeFlat({9, 9}, 3.0f), variance, 1.0f, result);
    EXPECT_NEAR(result.at(4, 4).g, 1.0f, 1e-3f);
}

TEST(FeatureTrust, ComparesNoiseWhateverTheNumberOfSamples) {
    const Pixel size{64, 64};
    const auto color = makeFlat(size, 0.5f);
    const auto isTrusted = [&](float albedoDeviation, float colorDeviation) {
        const DenoisingFeature albedo{FeatureType::VisibleDiffuse, makeFlat(size, 0.3f),
                                      makeFlat(size, albedoDeviation * albedoDeviation)};
        return AlbedoTrust(albedo).isTrusted(color, makeFlat(size, colorDeviation * colorDeviation),
                                             1.0f);
    };
    for (const float samples : {1.0f, 16.0f, 256.0f}) {
        const float deviation = 1.0f / std::sqrt(samples);
        EXPECT_TRUE(isTrusted(0.003f * deviation, 0.5f * deviation));
        EXPECT_FALSE(isTrusted(0.05f * deviation, 0.5f * deviation));
    }
    EXPECT_TRUE(isTrusted(0.0f, 0.0f));
    const AlbedoTrust unknown({FeatureType::VisibleDiffuse, makeFlat(size, 0.3f), {}});
    EXPECT_TRUE(unknown.isTrusted(color, color, 1.0f));
}

TEST(LightKeeping, LeavesLessThanAHundredthUnlessItWasNoise) {
    const Pixel size{9, 5};
    const struct {
        float denoised;
        float share;
        float expected;
    } cases[] = {{0.995f, 0.0f, 0.995f}, {0.98f, 0.0f, 0.992f}, {1.03f, 0.0f, 1.008f},
                 {0.98f, 0.5f, 0.984f},  {0.5f, 0.0f, 0.515f},  {0.0f, 0.0f, 0.0f}};
    for (const auto& [denoised, share, expected] : cases) {
        auto result = makeFlat(size, denoised);
        auto noisy = makeFlat(size, 1.0f);
        noisy.at(3, 2).g = kNan;
        BitmapImpl<float> shares(size.x, size.y);
        std::ranges::fill(shares.pixels(), share);
        keepLight(Scheduler::defaultInstance(), noisy, shares, result);
        EXPECT_NEAR(result.at(8, 4).g, expected, 1e-5f);
    }
}

TEST(TileChannels, LeaveNothingOfTheTileBefore) {
    const Pixel size{17, 18};
    const auto picture = makeFlat(size, 0.5f);
    const NetworkInput input{&picture, &picture, &picture};
    for (const int blockSize : {8, 16}) {
        const Pixel tileSize{32, 32};
        std::vector<float> values(16 * 32 * 32, kNan);
        const TiledNetwork::Channels channels{values.data(), tileSize, blockSize};
        writeTile(Scheduler::defaultInstance(), input, makeLightCode(1.0f), {{0, 0}, {}}, channels);
        for (int channel = 0; channel < 16; ++channel) {
            for (int y = 0; y < tileSize.y; ++y) {
                for (int x = 0; x < tileSize.x; ++x) {
                    const float value = channels.getRow(channel / blockSize,
                                                        y)[x * blockSize + channel % blockSize];
                    const bool isKnown = channel < 9 && x < size.x && y < size.y;
                    ASSERT_TRUE(isKnown ? value > 0.0f : value == 0.0f)
                        << channel << " at " << x << ", " << y << ": " << value;
                }
            }
        }
    }
}

class Logger final : public ILogger {
public:
    void error(const String& text) override { errors.push_back(text.toUtf8()); }
    void warning(const String& text) override { warnings.push_back(text.toUtf8()); }

    std::vector<std::string> errors;
    std::vector<std::string> warnings;
};

/// Needs the weights that scripts/fetch-denoiser-weights fetches.
class NeuralDenoiserTest : public testing::Test {
protected:
    void SetUp() override {
        const Path weights = StandardPaths::denoiserWeightsBundle() / "rt_hdr_calb_cnrm.tza";
        if (!std::filesystem::exists(weights.std())) {
            GTEST_SKIP() << weights.native().toUtf8() << " is missing.";
        }
    }

    std::unique_ptr<IDenoiser> create(DenoisingData data = {}) {
        return createNeuralDenoiser(Scheduler::defaultInstance(), logger_, std::move(data),
                                    OidnBackend::Best);
    }

    static bool goOn(float) { return true; }

    Logger logger_;
};

double getDeviation(const BitmapImpl<Rgb>& bitmap, double mean) {
    double sum = 0.0;
    for (const Rgb& pixel : bitmap.pixels()) {
        sum += (pixel.g - mean) * (pixel.g - mean);
    }
    return std::sqrt(sum / static_cast<double>(bitmap.getPixelCount()));
}

TEST_F(NeuralDenoiserTest, RemovesNoiseWithAndWithoutFeatures) {
    const Pixel size{203, 141};
    for (const int features : {0, 1, 2}) {
        DenoisingData data;
        if (features >= 1) {
            data.features.push_back({FeatureType::VisibleDiffuse, makeFlat(size, 0.4f), {}});
        }
        if (features >= 2) {
            data.features.push_back({FeatureType::VisibleNormals, makeFlat(size, 0.6f), {}});
        }
        const auto noisy = makeNoise(size, 0.3f);
        const auto result = create(data)->denoise(noisy, makeFlat(size, 0.09f), goOn);
        ASSERT_TRUE(result);
        ASSERT_EQ(result->getSize(), size);
        EXPECT_LT(getDeviation(*result, 0.3), 0.1 * getDeviation(noisy, 0.3)) << features;
        EXPECT_EQ(result->at(202, 140).a, noisy.at(202, 140).a);
    }
    EXPECT_TRUE(logger_.errors.empty() && logger_.warnings.empty());
}

TEST_F(NeuralDenoiserTest, AnswersFiniteColorsOfAnySize) {
    for (const Pixel size : {Pixel{0, 5}, Pixel{1, 1}, Pixel{17, 1}, Pixel{33, 49}}) {
        auto noisy = makeNoise(size, 2.0f);
        auto variance = makeFlat(size, 4.0f);
        DenoisingData data;
        data.features.push_back({FeatureType::VisibleDiffuse, noisy, variance});
        data.features.push_back({FeatureType::VisibleNormals, noisy, variance});
        const float values[] = {kNan, kInfinity, -kInfinity, -1.0f, 3e38f};
        for (std::size_t i = 0; i < noisy.pixels().size(); i += 7) {
            noisy.pixels()[i].g = values[i % std::size(values)];
            variance.pixels()[i].r = values[i / 7 % std::size(values)];
            data.features[i % 2].pixels.pixels()[i].b = values[i / 14 % std::size(values)];
        }
        const auto result = create(std::move(data))->denoise(noisy, variance, goOn);
        ASSERT_TRUE(result);
        ASSERT_EQ(result->getSize(), size);
        for (const Rgb& pixel : result->pixels()) {
            for (const float value : {pixel.r, pixel.g, pixel.b}) {
                ASSERT_TRUE(std::isfinite(value) && value >= 0.0f) << size.x << ": " << value;
            }
        }
    }
}

TEST_F(NeuralDenoiserTest, StopsWhenToldAndIsOfUseAfterwards) {
    const Pixel size{320, 240};
    const auto noisy = makeNoise(size, 0.3f);
    const auto variance = makeFlat(size, 0.09f);
    const auto denoiser = create();
    EXPECT_FALSE(denoiser->denoise(noisy, variance, [](float) { return false; }));
    std::vector<float> fractions;
    EXPECT_TRUE(denoiser->denoise(noisy, variance, [&](float fraction) {
        fractions.push_back(fraction);
        return true;
    }));
    EXPECT_TRUE(std::ranges::is_sorted(fractions));
    EXPECT_EQ(fractions.back(), 1.0f);
    EXPECT_THROW(denoiser->denoise(noisy, variance, [](float) -> bool { throw 1; }), int);
    EXPECT_TRUE(logger_.errors.empty());
}

TEST_F(NeuralDenoiserTest, WarnsOfABackEndThatIsNotThere) {
    const auto denoiser =
        createNeuralDenoiser(Scheduler::defaultInstance(), logger_, {}, OidnBackend::Gpu);
    EXPECT_NE(denoiser, nullptr);
    EXPECT_EQ(logger_.warnings.size(), 1u);
}

}  // namespace
}  // namespace tavrin::postcore
