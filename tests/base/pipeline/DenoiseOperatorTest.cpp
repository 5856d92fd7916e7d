#include "tests/base/pipeline/TestChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <semaphore>

namespace tavrin::pipeline {
namespace {

using image::ChannelImage;
using image::ElementKind;
using postcore::DenoisingMode;
using testing::ElementsAre;
using testing::StartsWith;

constexpr int kMode = 996;
constexpr Bucket kWindow = {0, 0, 6, 4};

/// Gives every component the value of its variance, so that tests see what it has been given.
class FakeDenoiser final : public postcore::IDenoiser {
public:
    Function<void()> onDenoise;

    Optional<BitmapImpl<Rgb>> denoise(const BitmapImpl<Rgb>& color, const BitmapImpl<Rgb>& variance,
                                      const Progress& progress) override {
        if (onDenoise) {
            onDenoise();
        }
        if (!progress(0.5f)) {
            return {};
        }
        BitmapImpl<Rgb> result = variance;
        for (std::size_t i = 0; i < result.pixels().size(); ++i) {
            result.pixels()[i].a = color.pixels()[i].a;
        }
        return result;
    }
};

/// A beauty of value 1 with variance 0.25 and alpha, a light "L" of the same values, and what the
/// denoisers need beside them.
ChannelImage makeNoisy() {
    ChannelImage image(kWindow, kWindow, 1.0f);
    image.addElement({"", ElementKind::Rgba, 0});
    for (const char* name : {"SqrBeauty", "L", "SqrL", "VisibleNormals", "SqrVisibleNormals",
                             "VisibleDiffuse", "SqrVisibleDiffuse", "Plain"}) {
        image.addElement({name, ElementKind::Rgb, 0});
    }
    image.addChannel(image::kWeightsElement);
    image.fitChannelsToDataWindow();
    for (const auto& [name, item] : image.getChannels()) {
        const float value = name.startsWith("Sqr")           ? 0.25f
                            : name == image::kWeightsElement ? 2.0f
                                                             : 1.0f;
        std::ranges::fill(image.getChannel<float>(name).getValues(), value);
    }
    return image;
}

ChannelImage without(const char* prefix) {
    ChannelImage image = makeNoisy();
    ChannelImage rest(kWindow, kWindow, 1.0f);
    for (const auto& [name, channel] : image.getChannels()) {
        if (!name.startsWith(prefix)) {
            rest.setChannel(channel->clone());
        }
    }
    return rest;
}

class Denoise : public testing::Test {
protected:
    Denoise() {
        test_.setFile("noisy", makeNoisy);
        test_.setFile("few", [] {
            ChannelImage image = makeNoisy();
            std::ranges::fill(image.getChannel<float>(image::kWeightsElement).getValues(), 0.5f);
            return image;
        });
        test_.setFile("stored", [] {
            ChannelImage image = makeNoisy();
            image.addElement({"DenoisedL", ElementKind::Rgb, 0});
            image.fitChannelsToDataWindow();
            for (const char* c : {"DenoisedL.R", "DenoisedL.G", "DenoisedL.B"}) {
                std::ranges::fill(image.getChannel<float>(c).getValues(), 0.75f);
            }
            image.getChannel<float>("DenoisedL.R").getValues()[0] = NAN;
            return image;
        });
        test_.setFile("optix", [] {
            ChannelImage image = makeNoisy();
            image.addElement({"OptixNormals", ElementKind::Rgb, 0});
            image.fitChannelsToDataWindow();
            return image;
        });
        test_.setFile("unweighted", [] { return without("TAVRIN"); });
        test_.setFile("unguided", [] { return without("VisibleNormals"); });
        denoise_.setDenoiserFactory(
            [this](DenoisingMode mode, Scheduler&, postcore::ILogger& logger,
                   postcore::DenoisingData data,
                   postcore::OidnBackend) -> std::unique_ptr<postcore::IDenoiser> {
                if (mode == DenoisingMode::NvidiaGpuAi) {
                    logger.error("It is not installed.");
                    return nullptr;
                }
                data_ = std::move(data);
                auto denoiser = std::make_unique<FakeDenoiser>();
                denoiser->onDenoise = onDenoise_;
                return denoiser;
            });
        test_.load({"noisy"});
        test_.settings().set(kMode, 2);
    }
    std::string run() {
        denoise_.denoise();
        const auto result = denoised_.wait();
        return result ? std::string() : result.error().toUtf8();
    }
    float getBlended(const String& element = {}) {
        return test_.chain.blendDenoised.provideRgbRegion(element, kWindow, 1.0f)->at(3, 2).g;
    }

    TestChain test_;
    DenoiseOperator& denoise_ = test_.chain.denoise;
    Completion denoised_{denoise_};
    Function<void()> onDenoise_;
    postcore::DenoisingData data_;
};

TEST_F(Denoise, BlendsByTheAmount) {
    EXPECT_EQ(getBlended(), 1.0f);
    ASSERT_EQ(run(), "");
    EXPECT_EQ(data_.features.size(), 2u);
    const std::vector<std::tuple<bool, float, float>> cases = {
        {true, 1.0f, 0.25f}, {true, 0.5f, 0.625f}, {true, 0.0f, 1.0f}, {false, 1.0f, 1.0f}};
    for (const auto& [isOn, amount, expected] : cases) {
        test_.settings().set(989, isOn);
        test_.settings().set(993, amount);
        EXPECT_EQ(getBlended(), expected);
        EXPECT_EQ(getBlended("L"), expected);
        EXPECT_EQ(getBlended("Plain"), 1.0f);
    }
    EXPECT_EQ(test_.chain.blendDenoised.provideRgbRegion({}, kWindow, 1.0f)->at(0, 0).a, 1.0f);
    EXPECT_FALSE(denoise_.provideRgbRegion("DenoisedL", kWindow, 1.0f));
    for (const auto& element : test_.chain.blendDenoised.getElements()) {
        EXPECT_EQ(element.has(image::kHasDenoisedVariant),
                  element.name == "" || element.name == "L");
    }
    test_.chain.load.setElementsFlag(image::kSelectedForDenoising, {});
    test_.settings().set(989, true);
    EXPECT_EQ(getBlended(), 1.0f) << "another selection drops what was computed";
}

TEST_F(Denoise, ShowsVariantsOfTheFile) {
    ASSERT_EQ(test_.load({"stored"}), "");
    EXPECT_EQ(getBlended("L"), 0.75f);
    EXPECT_EQ(test_.chain.blendDenoised.provideRgbRegion("L", kWindow, 1.0f)->at(0, 0).g, 1.0f)
        << "a pixel that is not finite is not taken";
}

TEST_F(Denoise, FailuresSayWhatIsMissing) {
    const auto fail = [this](const char* file, int mode) {
        EXPECT_EQ(test_.load({file}), "");
        test_.settings().set(kMode, mode);
        return run();
    };
    const std::string prefix = "Denoising has failed. ";
    EXPECT_EQ(fail("noisy", 0), prefix +
                                    "Denoising is not enabled. You have to select the denoise "
                                    "mode first.");
    EXPECT_EQ(fail("few", 2),
              prefix + "No part of the image has been rendered with at least 2 passes");
    EXPECT_EQ(fail("few", 1),
              prefix + "No part of the image has been rendered with at least 1 pass");
    EXPECT_EQ(fail("unweighted", 1),
              prefix + "The image is missing \"TAVRIN_FB_WEIGHTS\" render element.");
    EXPECT_EQ(fail("unguided", 2),
              prefix + "The image is missing \"VisibleNormals\" render element.");
    EXPECT_EQ(fail("noisy", 4), prefix + "The image is missing \"OptixNormals\" render element.");
    EXPECT_EQ(fail("optix", 4), "It is not installed.");
    test_.chain.load.setElementsFlag(image::kSelectedForDenoising, {});
    test_.settings().set(kMode, 1);
    EXPECT_THAT(run(), StartsWith(prefix + "There are not selected any denoisable"));
}

TEST_F(Denoise, OffersTheModesThatTheImageHasFeaturesFor) {
    EXPECT_THAT(denoise_.getAvailableDenoisingModes(),
                ElementsAre(DenoisingMode::HighQuality, DenoisingMode::FirefliesOnly,
                            DenoisingMode::IntelAi));
    ASSERT_EQ(test_.load({"unguided"}), "");
    EXPECT_THAT(denoise_.getAvailableDenoisingModes(),
                ElementsAre(DenoisingMode::FirefliesOnly, DenoisingMode::IntelAi));
    const auto all = [](const image::ElementInfo&) { return true; };
    EXPECT_EQ(denoise_.getDenoiseCapableElements(all).size(), 2u);
    EXPECT_EQ(denoise_.getNotDenoiseCapableElements(all).size(), 1u);
}

TEST_F(Denoise, CancellingKeepsWhatIsDone) {
    std::binary_semaphore started(0);
    std::binary_semaphore mayGoOn(0);
    std::atomic<int> elements = 0;
    onDenoise_ = [&] {
        if (++elements == 2) {
            started.release();
            mayGoOn.acquire();
        }
    };
    denoise_.denoise();
    started.acquire();
    denoise_.cancel();
    mayGoOn.release();
    EXPECT_TRUE(denoised_.wait());
    EXPECT_EQ(getBlended(), 0.25f) << "the first element";
    EXPECT_EQ(getBlended("L"), 1.0f);
}

TEST_F(Denoise, AnImageThatIsReplacedMeanwhileEndsIt) {
    std::binary_semaphore started(0);
    std::binary_semaphore mayGoOn(0);
    onDenoise_ = [&] {
        started.release();
        mayGoOn.acquire();
    };
    denoise_.denoise();
    started.acquire();
    EXPECT_EQ(test_.load({"noisy"}), "");
    mayGoOn.release();
    EXPECT_TRUE(denoised_.wait());
    EXPECT_EQ(getBlended(), 1.0f);
}

}  // namespace
}  // namespace tavrin::pipeline
