#include "base/image/RegionSampling.h"
#include "foundation/Scheduler.h"
#include "services/postcore/PropertyIds.h"
#include "tests/base/pipeline/TestChain.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace tavrin::pipeline {
namespace {

using image::kLightMixInteractive;

constexpr Bucket kWindow = {0, 0, 397, 361};  // large enough to be mixed in parts

class LightMix : public testing::Test {
protected:
    LightMix() {
        test_.setFile("render", [] { return makeRender(kWindow, 1); });
        test_.load({"render"});
    }
    BitmapImpl<Rgb> getMix(const Bucket& region = kWindow, float scale = 1.0f) {
        return *mix_.provideRgbRegion(kLightMixInteractive, region, scale);
    }
    /// The lights' sum, each times its factors, one pixel after the other.
    BitmapImpl<Rgb> getSum(const Bucket& region, float scale, const std::vector<Rgb>& factors) {
        const Pixel size = image::getSampledSize(region.size(), scale);
        BitmapImpl<Rgb> sum(size.x, size.y);
        std::ranges::fill(sum.pixels(), Rgb());
        for (std::size_t i = 0; i < factors.size(); ++i) {
            const auto light = test_.chain.load.provideRgbRegion(
                "L" + String::fromUtf8(std::to_string(i + 1)), region, scale);
            for (std::size_t p = 0; p < sum.pixels().size(); ++p) {
                sum.pixels()[p].r += light->pixels()[p].r * factors[i].r;
                sum.pixels()[p].g += light->pixels()[p].g * factors[i].g;
                sum.pixels()[p].b += light->pixels()[p].b * factors[i].b;
            }
        }
        return sum;
    }

    TestChain test_;
    LightMixOperator& mix_ = test_.chain.lightMix;
    const std::vector<Rgb> allWhite_ = std::vector<Rgb>(4, {1, 1, 1});
};

TEST_F(LightMix, IsTheSumOfTheLightsBitForBit) {
    const auto whole = getSum(kWindow, 1.0f, allWhite_);
    for (const int threads : {1, 3, 0}) {
        Scheduler::setThreadCount(threads);
        EXPECT_TRUE(areIdentical(getMix(), whole));
        for (const float scale : {2.0f, 4.0f, 7.0f, 2.5f, 0.5f, 1.0f / 3.0f}) {
            EXPECT_TRUE(areIdentical(getMix(kWindow, scale), getSum(kWindow, scale, allWhite_)))
                << scale;
        }
    }
}

RC_GTEST_FIXTURE_PROP(LightMix, TilesAreThoseOfTheWhole, ()) {
    const auto whole = getMix();
    const int x0 = *rc::gen::inRange(0, kWindow.x1);
    const int y0 = *rc::gen::inRange(0, kWindow.y1);
    const Bucket tile = {x0, y0, *rc::gen::inRange(x0, kWindow.x1) + 1,
                         *rc::gen::inRange(y0, kWindow.y1) + 1};
    RC_ASSERT(areIdentical(getMix(tile), crop(whole, tile)));
}

TEST_F(LightMix, ObeysTheSettings) {
    test_.settings().set(postcore::kLightMixEnabledId, std::vector<bool>{true, false});
    test_.settings().set(postcore::kLightMixIntensityId, std::vector<float>{0.5f, 9.0f, 2.0f});
    test_.settings().set(postcore::kLightMixColorId, std::vector<Vec3>{{1, 0.5f, 0}});
    const auto expected =
        getSum(kWindow, 1.0f, {{0.5f, 0.25f, 0}, {0, 0, 0}, {2, 2, 2}, {1, 1, 1}});
    const auto mix = getMix();
    for (std::size_t p = 0; p < mix.pixels().size(); ++p) {
        EXPECT_FLOAT_EQ(mix.pixels()[p].r, expected.pixels()[p].r);
        EXPECT_FLOAT_EQ(mix.pixels()[p].g, expected.pixels()[p].g);
        EXPECT_FLOAT_EQ(mix.pixels()[p].b, expected.pixels()[p].b);
    }
}

TEST_F(LightMix, IsBlackWithoutLights) {
    test_.settings().set(postcore::kLightMixEnabledId, std::vector<bool>(4, false));
    const auto black = getSum(kWindow, 2.0f, {});
    EXPECT_TRUE(areIdentical(getMix(kWindow, 2.0f), black));
    test_.setFile("dark", [] { return makeConstant(kWindow, "", 1.0f); });
    ASSERT_EQ(test_.load({"dark"}), "");
    EXPECT_TRUE(areIdentical(getMix(kWindow, 2.0f), black));
    EXPECT_EQ(mix_.getElements(), test_.chain.load.getElements());
}

TEST(LightMixWithoutImage, IsNotAnswered) {
    TestChain test;
    EXPECT_FALSE(test.chain.zoom.provideRgbRegion(kLightMixInteractive, windowOf(4, 4), 1.0f));
}

TEST_F(LightMix, IsTheLastElement) {
    const auto elements = mix_.getElements();
    EXPECT_EQ(elements.size(), test_.chain.load.getElements().size() + 1);
    EXPECT_EQ(elements.back(), (image::ElementInfo{kLightMixInteractive, image::ElementKind::Rgb,
                                                   image::kVirtualElement}));
    EXPECT_EQ(mix_.getLightElements().size(), 4u);
    test_.setFile("glare", [] {
        auto image = makeRender(kWindow, 1);
        auto infos = image.getRenderElementInfos();
        infos.emplace_back(postcore::RenderElementInfo::Data{
            postcore::kLightMixInteractiveType, {"", ""}, postcore::RenderElementFlag::AllowGlare});
        image.setRenderElementInfos(infos);
        return image;
    });
    ASSERT_EQ(test_.load({"glare"}), "");
    EXPECT_EQ(mix_.getElements().back().flags, image::kVirtualElement | image::kNoBloom);
}

/// Names two lights and has pixels of one, and of sizes that nobody asked for.
class PartialSource final : public IOperator {
public:
    String available;
    int width = 8;

    std::int64_t getRevision() const override { return 1; }
    std::vector<image::ElementInfo> getElements() const override {
        return {{"L1", image::ElementKind::Rgb, image::kLightSelectElement},
                {"L2", image::ElementKind::Rgb, image::kLightSelectElement}};
    }
    Bucket getDisplayWindow() const override { return windowOf(8, 8); }
    Bucket getDataWindow() const override { return windowOf(8, 8); }

private:
    Optional<BitmapImpl<Rgb>> computeRgbRegion(const Request& request) override {
        return request.element == available ? Optional<BitmapImpl<Rgb>>(BitmapImpl<Rgb>(width, 8))
                                            : std::nullopt;
    }
    Optional<BitmapImpl<float>> computeMonoRegion(const Request&) override { return {}; }
};

TEST_F(LightMix, IsNotAnsweredWhenALightIsNot) {
    PartialSource source;
    mix_.setInput(source);
    for (const auto& [available, width] :
         std::vector<std::pair<String, int>>{{"L1", 8}, {"L2", 8}, {"L1", 7}, {"L1", 9}}) {
        source.available = available;
        source.width = width;
        EXPECT_FALSE(mix_.provideRgbRegion(kLightMixInteractive, windowOf(8, 8), 1.0f));
    }
    source.width = 8;
    test_.settings().set(postcore::kLightMixEnabledId, std::vector<bool>{true, false});
    EXPECT_TRUE(mix_.provideRgbRegion(kLightMixInteractive, windowOf(8, 8), 1.0f))
        << "lights that are off are not asked for";
}

}  // namespace
}  // namespace tavrin::pipeline
