#include "tests/base/pipeline/TestChain.h"

#include <gtest/gtest.h>

namespace tavrin::pipeline {
namespace {

class ZoomTest : public testing::Test {
protected:
    ZoomTest() {
        test_.setFile("render", [] { return makeRender(windowOf(40, 30), 2); });
        test_.load({"render"});
    }

    TestChain test_;
    Performer& chain_ = test_.chain;
    const Bucket region_ = {3, 2, 13, 8};
};

TEST_F(ZoomTest, EnlargesByBlocks) {
    const auto colors = *chain_.monoToColor.provideRgbRegion({}, region_, 1.0f);
    const auto values = *chain_.load.provideMonoRegion("A", region_, 1.0f);
    for (const int n : {2, 4, 7}) {
        const auto zoomed = chain_.zoom.provideRgbRegion({}, region_, 1.0f / float(n));
        const auto zoomedValues = chain_.zoom.provideMonoRegion("A", region_, 1.0f / float(n));
        ASSERT_EQ(zoomed->getSize(), (Pixel{10 * n, 6 * n}));
        ASSERT_EQ(zoomedValues->getSize(), (Pixel{10 * n, 6 * n}));
        for (int y = 0; y < 6 * n; ++y) {
            for (int x = 0; x < 10 * n; ++x) {
                EXPECT_EQ(zoomed->at(x, y), colors.at(x / n, y / n));
                EXPECT_EQ(zoomedValues->at(x, y), values.at(x / n, y / n));
            }
        }
    }
}

TEST_F(ZoomTest, PassesReductionsOn) {
    EXPECT_TRUE(areIdentical(*chain_.zoom.provideRgbRegion({}, region_, 2.0f),
                             *chain_.monoToColor.provideRgbRegion({}, region_, 2.0f)));
}

TEST_F(ZoomTest, SingleChannelsAreGrey) {
    const auto values = *chain_.load.provideMonoRegion("A", region_, 1.0f);
    const auto grey = *chain_.zoom.provideRgbRegion("A", region_, 1.0f);
    const float value = values.at(4, 3);
    const Rgb pixel = grey.at(4, 3);
    EXPECT_EQ(pixel, (Rgb{value, value, value}));
    EXPECT_EQ(pixel.a, value);
    for (const auto& element : chain_.zoom.getElements()) {
        EXPECT_NE(element.kind, image::ElementKind::Mono);
    }
    EXPECT_FALSE(chain_.zoom.provideRgbRegion("None", region_, 1.0f));
}

}  // namespace
}  // namespace tavrin::pipeline
