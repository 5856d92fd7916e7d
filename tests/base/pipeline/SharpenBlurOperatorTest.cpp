#include "base/image/RegionSampling.h"
#include "services/postcore/PropertyIds.h"
#include "services/postcore/sharpening/Sharpening.h"
#include "tests/base/pipeline/TestChain.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace tavrin::pipeline {
namespace {

constexpr Bucket kWindow = {0, 0, 113, 87};

class SharpenBlur : public testing::Test {
protected:
    SharpenBlur() {
        test_.setFile("render", [] { return makeRender(kWindow, 5); });
        test_.load({"render"});
        set(true, 1.5f, 1.2f, 0.8f);
    }
    void set(bool enabled, float amount, float radius, float blurRadius) {
        test_.settings().set(postcore::kSharpenBlurEnabledId, enabled);
        test_.settings().set(postcore::kSharpenAmountId, amount);
        test_.settings().set(postcore::kSharpenRadiusId, radius);
        test_.settings().set(postcore::kBlurRadiusId, blurRadius);
    }
    BitmapImpl<Rgb> get(const Bucket& region, float scale, const String& element = {}) {
        return *test_.chain.sharpenBlur.provideRgbRegion(element, region, scale);
    }
    BitmapImpl<Rgb> getInput(const Bucket& region, float scale, const String& element = {}) {
        return *test_.chain.colorMap.provideRgbRegion(element, region, scale);
    }

    TestChain test_;
};

RC_GTEST_FIXTURE_PROP(SharpenBlur, TilesAreThoseOfTheWhole, ()) {
    const int scale = *rc::gen::element(1, 2, 3, 4, 5, 8);
    set(true, *rc::gen::element(0.0f, 2.0f), *rc::gen::element(0.0f, 0.5f, 3.0f),
        *rc::gen::element(0.0f, 0.7f, 4.0f));
    const Pixel size = image::getSampledSize(kWindow.size(), float(scale));
    const int x0 = *rc::gen::inRange(0, size.x);
    const int y0 = *rc::gen::inRange(0, size.y);
    const Bucket tile = {x0, y0, *rc::gen::inRange(x0, size.x) + 1,
                         *rc::gen::inRange(y0, size.y) + 1};
    const Bucket region = {x0 * scale, y0 * scale, std::min(tile.x1 * scale, kWindow.x1),
                           std::min(tile.y1 * scale, kWindow.y1)};
    RC_ASSERT(areIdentical(get(region, float(scale)), crop(get(kWindow, float(scale)), tile)));
}

TEST_F(SharpenBlur, FiltersByTheSettings) {
    postcore::Sharpening filter;
    filter.initialize(true, 1.5f, 1.2f, 0.8f, 1.0f);
    auto expected = getInput(kWindow, 2.0f);
    filter.apply({}, expected, 2, false);
    EXPECT_TRUE(areIdentical(get(kWindow, 2.0f), expected));
}

TEST_F(SharpenBlur, HasTheInputsSizeAtEveryScale) {
    for (const float scale : {1.0f, 2.0f, 7.0f, 2.5f, 3.7f, 0.5f}) {
        for (const Bucket& region : {kWindow, Bucket{3, 5, 24, 26}, Bucket{112, 86, 113, 87}}) {
            EXPECT_EQ(get(region, scale).getSize(), getInput(region, scale).getSize());
        }
    }
}

TEST_F(SharpenBlur, LeavesAloneWhatItShould) {
    EXPECT_FALSE(areIdentical(get(kWindow, 1.0f), getInput(kWindow, 1.0f)));
    EXPECT_TRUE(areIdentical(get(kWindow, 1.0f, "L1"), getInput(kWindow, 1.0f, "L1")));
    set(false, 1.5f, 1.2f, 0.8f);
    EXPECT_TRUE(areIdentical(get(kWindow, 1.0f), getInput(kWindow, 1.0f)));
    set(true, 1.0f, 0.0f, 0.0f);
    EXPECT_TRUE(areIdentical(get(kWindow, 1.0f), getInput(kWindow, 1.0f)));
}

}  // namespace
}  // namespace tavrin::pipeline
