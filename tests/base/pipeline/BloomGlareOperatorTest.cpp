#include "services/colorkit/Pipeline.h"
#include "services/colorkit/operators/ExposureOperator.h"
#include "services/colorkit/operators/PhotographicExposureOperator.h"
#include "services/postcore/PropertyIds.h"
#include "tests/base/pipeline/TestChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <numeric>
#include <thread>

namespace tavrin::pipeline {
namespace {

using image::ChannelImage;
using image::ElementInfo;
using image::ElementKind;
using image::kBloomGlareInteractive;
using postcore::BloomGlareData;
using testing::ElementsAre;

constexpr Bucket kWindow = {0, 0, 6, 4};
constexpr auto kWait = IOperator::Control::Wait;
const ElementInfo kBeauty{{}, ElementKind::Rgba};
const ElementInfo kLight{"Light", ElementKind::Rgb, image::kLightSelectElement | image::kNoGlare};
const ElementInfo kData{"Data", ElementKind::Rgb, image::kNoBloom | image::kNoGlare};
const ElementInfo kLayer{kBloomGlareInteractive, ElementKind::Rgb, image::kVirtualElement};

/// A beauty of value 1, alpha 0.5 in its first pixel, a light of value 2 that takes no glare, and
/// data of value 3.
ChannelImage makeImage() {
    using postcore::RenderElementFlag;
    ChannelImage image(kWindow, kWindow, 1.0f);
    image.addElement({{}, ElementKind::Rgba});
    image.addElement({"Light", ElementKind::Rgb});
    image.addElement({"Data", ElementKind::Rgb});
    image.setRenderElementInfos(
        {postcore::RenderElementInfo(
             {postcore::kLightSelectType, {"Light", "Light"}, RenderElementFlag::AllowBloom}),
         postcore::RenderElementInfo(
             {{2000}, {"Data", "Data"}, RenderElementFlag::NoPostProcessing})});
    image.fitChannelsToDataWindow();
    for (const auto& [name, item] : image.getChannels()) {
        const float value = name.startsWith("Light") ? 2.0f : name.startsWith("Data") ? 3.0f : 1.0f;
        std::ranges::fill(image.getChannel<float>(name).getValues(), value);
    }
    image.getChannel<float>("A").getValues()[0] = 0.5f;
    return image;
}

class BloomGlare : public testing::Test {
protected:
    BloomGlare() {
        test_.setFile("image", makeImage);
        op_.onStart = [this](const String& title) { told_.push_back(title.toUtf8()); };
        // The layer is ten times the light, and a hundred more in the lowest row.
        op_.setCompute([this](auto, BitmapImpl<CompressedRgb>& bitmap, const BloomGlareData& data,
                              const postcore::CameraData&) {
            data_ = data;
            ++computations_;
            for (int y = 0; y < bitmap.getHeight(); ++y) {
                for (CompressedRgb& pixel : bitmap.row(y)) {
                    const float extra = y == 0 ? 100.0f : 0.0f;
                    pixel = {10.0f * pixel.r + extra, 10.0f * pixel.g + extra, extra};
                }
            }
            return true;
        });
        load();
    }

    /// Loading takes the settings that the image does not bring back to their defaults.
    void load() {
        EXPECT_EQ(test_.load({"image"}), "");
        test_.settings().set(postcore::kBloomGlareEnabledId, true);
    }

    /// The red value of the element as the next operators get it; -1 without an answer.
    float getRed(const String& element, int x = 0, int y = 0,
                 Flags<IOperator::Control> flags = {}) {
        const auto pixels =
            test_.chain.blendBloomGlare.provideRgbRegion(element, kWindow, 1.0f, flags);
        return pixels ? pixels->at(x, y).r : -1.0f;
    }
    void show(const ElementInfo& element) {
        op_.setElement(element);
        ended_.wait();
    }

    TestChain test_;
    BloomGlareOperator& op_ = test_.chain.bloomGlare;
    Completion ended_{op_};
    BloomGlareData data_;
    std::atomic<int> computations_ = 0;
    std::vector<std::string> told_;  // of the operator's thread, until it has ended
};

TEST_F(BloomGlare, AddsItsLayerToTheElementThatIsShown) {
    EXPECT_EQ(getRed({}), 1.0f);
    EXPECT_EQ(getRed(kBloomGlareInteractive), 0.0f);
    show(kBeauty);
    EXPECT_EQ(getRed({}), 11.0f);
    EXPECT_EQ(getRed({}, 0, 3), 111.0f) << "the lowest row";
    const auto pixels = test_.chain.blendBloomGlare.provideRgbRegion({}, kWindow, 1.0f);
    EXPECT_EQ(pixels->at(0, 0).a, 0.5f);
    EXPECT_EQ(pixels->at(0, 0).b, 1.0f);
    EXPECT_EQ(getRed("Light"), 2.0f);
    show(kLight);
    EXPECT_EQ(getRed({}), 1.0f);
    EXPECT_EQ(getRed("Light"), 22.0f);
    EXPECT_EQ(data_.glareIntensity, 0.0f);
    EXPECT_GT(data_.bloomIntensity, 0.0f);
    show(kLayer);
    EXPECT_EQ(getRed(kBloomGlareInteractive), 10.0f) << "that of the beauty";
    show(kData);
    EXPECT_EQ(getRed("Data"), 3.0f);
    EXPECT_EQ(getRed(kBloomGlareInteractive), 0.0f);
    EXPECT_THAT(told_, ElementsAre("Bloom and Glare progress", "Bloom and Glare progress",
                                   "Bloom and Glare progress", ""));
}

TEST_F(BloomGlare, IsClearedOnceWhenSwitchedOff) {
    using Change = std::pair<int, postcore::Property>;
    const std::vector<std::vector<Change>> cases = {
        {{postcore::kBloomGlareEnabledId, false}},
        {{postcore::kBloomIntensityId, 0.0f}, {postcore::kGlareIntensityId, 0.0f}}};
    for (const std::vector<Change>& changes : cases) {
        show(kBeauty);
        EXPECT_EQ(getRed({}), 11.0f);
        told_.clear();
        for (const auto& [id, value] : changes) {
            test_.settings().set(id, value);
        }
        op_.refresh();
        ended_.wait();
        EXPECT_EQ(getRed({}), 1.0f);
        op_.refresh();
        op_.wait();
        EXPECT_EQ(getRed({}, 0, 0, kWait), 1.0f);
        EXPECT_THAT(told_, ElementsAre(""));
        test_.settings().set(postcore::kBloomGlareEnabledId, true);
    }
}

TEST_F(BloomGlare, IsComputedForThoseWhoWait) {
    EXPECT_EQ(getRed("Light", 0, 0, kWait), 22.0f);
    EXPECT_EQ(getRed({}, 0, 0, kWait), 11.0f);
    EXPECT_EQ(getRed({}, 0, 0, kWait), 11.0f);
    EXPECT_EQ(getRed("Data", 0, 0, kWait), 3.0f);
    EXPECT_EQ(getRed(kBloomGlareInteractive, 0, 3, kWait), 110.0f);
    EXPECT_EQ(computations_, 3) << "once for each element";
    EXPECT_TRUE(told_.empty());
}

TEST_F(BloomGlare, ANewImageMakesItStale) {
    show(kBeauty);
    load();
    EXPECT_EQ(getRed({}), 1.0f);
    ended_.wait();
    EXPECT_EQ(getRed({}), 11.0f) << "asking for it has started the next computation";
}

TEST_F(BloomGlare, MeansTheThresholdAsBrightAsItIsShown) {
    using colorkit::ExposureOperator;
    test_.settings().set(postcore::kBloomGlareThresholdId, 3.0f);
    colorkit::OperatorValues exposure(ExposureOperator::kDescriptor);
    exposure.set(ExposureOperator::kStops, 2.0f);
    test_.colorMapping.setPipeline(colorkit::makePipeline({exposure}));
    for (const bool isOn : {true, false}) {
        test_.colorMapping.setEnabled(isOn);
        show(kBeauty);
        EXPECT_FLOAT_EQ(data_.threshold, isOn ? 0.75f : 3.0f);
    }
    using colorkit::PhotographicExposureOperator;
    test_.colorMapping.setEnabled(true);
    test_.colorMapping.setPipeline(colorkit::makePipeline(
        {colorkit::OperatorValues(PhotographicExposureOperator::kDescriptor)}));
    test_.settings().set(postcore::kCameraIsoId, 1600.0f);
    show(kBeauty);
    EXPECT_FLOAT_EQ(data_.threshold, 3.0f / 16.0f);
}

TEST_F(BloomGlare, ListsWhatCanGlow) {
    std::vector<std::string> names;
    for (const ElementInfo& element : op_.getElements()) {
        names.push_back(element.name.toUtf8());
    }
    EXPECT_THAT(names, ElementsAre("Light", "", "LightMix Interactive", kLayer.name.toUtf8()));
    EXPECT_EQ(test_.chain.blendBloomGlare.getElements().back(), kLayer);
}

TEST_F(BloomGlare, IsComputedAndAskedForAtOnceByManyThreads) {
    std::atomic<bool> isEnding = false;
    std::vector<std::jthread> threads;
    for (const char* element : {"", "Light", "Bloom and Glare Interactive"}) {
        threads.emplace_back([this, element, &isEnding] {
            const float red = String(element) == "Light" ? 2.0f : 1.0f;
            const bool isLayer = kBloomGlareInteractive == element;
            while (!isEnding) {
                EXPECT_EQ(getRed(element, 0, 0, kWait), isLayer ? 10.0f : 11.0f * red);
            }
        });
    }
    for (int i = 0; i < 100; ++i) {
        op_.setElement(i % 2 == 0 ? kBeauty : kData);
        op_.wait();
    }
    isEnding = true;
}

constexpr Bucket kLarge = {0, 0, 64, 48};

/// With the computation that the program uses: a light in the middle of black.
TEST(BloomGlareOperator, SpreadsLightAroundLights) {
    TestChain test;
    test.setFile("light", [] {
        ChannelImage image = makeConstant(kLarge, {}, 0.0f);
        for (const char* channel : {"R", "G", "B"}) {
            image.getChannel<float>(channel).getValues()[24 * 64 + 32] = 1000.0f;
        }
        return image;
    });
    EXPECT_EQ(test.load({"light"}), "");
    test.settings().set(postcore::kBloomGlareEnabledId, true);
    const auto pixels = test.chain.blendBloomGlare.provideRgbRegion({}, kLarge, 1.0f, kWait);
    ASSERT_TRUE(pixels);
    const double sum =
        std::accumulate(pixels->pixels().begin(), pixels->pixels().end(), 0.0,
                        [](double before, const Rgb& pixel) { return before + double(pixel.g); });
    EXPECT_GT(pixels->at(33, 24).g, 0.1f);
    EXPECT_NEAR(sum, 1000.0 * (1.0 + 0.2 + 0.2), 30.0);
    const int steps = test.chain.bloomGlare.getProgress().getTotalSteps();
    EXPECT_GT(steps, 1);
    EXPECT_EQ(test.chain.bloomGlare.getProgress().getCurrentStep(), steps);
}

}  // namespace
}  // namespace tavrin::pipeline
