#include "services/colorkit/Pipeline.h"
#include "services/postcore/PropertyIds.h"
#include "tests/base/pipeline/TestChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tavrin::pipeline {
namespace {

using image::ChannelImage;
using testing::ElementsAre;
using testing::StartsWith;

class LoadOperatorTest : public testing::Test {
protected:
    LoadOperatorTest() {
        for (const float value : {1.0f, 2.0f}) {
            test_.setFile(value == 1.0f ? "one.exr" : "two.exr", [value] {
                ChannelImage image = makeConstant(windowOf(4, 3), "", value);
                image.addChannel("A");
                image.fitChannelsToDataWindow();
                return image;
            });
        }
    }
    float getValue() { return load_.provideRgbRegion({}, windowOf(1, 1), 1.0f)->at(0, 0).r; }

    TestChain test_;
    LoadOperator& load_ = test_.chain.load;
};

TEST_F(LoadOperatorTest, AnswersNothingBeforeTheFirstImage) {
    EXPECT_EQ(load_.getRevision(), IOperator::kNoRevision);
    EXPECT_EQ(test_.chain.zoom.getRevision(), IOperator::kNoRevision);
    EXPECT_FALSE(test_.chain.zoom.provideRgbRegion({}, windowOf(1, 1), 1.0f));
    EXPECT_EQ(load_.getDataWindow(), Bucket());
    EXPECT_TRUE(load_.getElements().empty());
    load_.setElementsFlag(image::kSelectedForDenoising, {});
    EXPECT_EQ(load_.getRevision(), IOperator::kNoRevision);
}

TEST_F(LoadOperatorTest, ImagesOfTheSameSecondHaveRevisionsOfTheirOwn) {
    ASSERT_EQ(test_.load({"one.exr"}), "");
    EXPECT_EQ(getValue(), 1.0f);
    std::int64_t revision = load_.getRevision();
    for (int i = 0; i < 3; ++i) {
        ASSERT_EQ(test_.load({"two.exr"}), "");
        EXPECT_GT(load_.getRevision(), revision);
        revision = load_.getRevision();
    }
    EXPECT_EQ(getValue(), 2.0f);
    load_.setElementsFlag(image::kSelectedForDenoising, {"A"});
    EXPECT_GT(load_.getRevision(), revision);
    EXPECT_EQ(test_.chain.zoom.getRevision(), load_.getRevision());
    for (const auto& element : load_.getElements()) {
        EXPECT_EQ(element.has(image::kSelectedForDenoising), element.name == "A");
    }
}

TEST_F(LoadOperatorTest, AFailureLeavesWhatWasThere) {
    test_.setFile("virtual.exr",
                  [] { return makeConstant(windowOf(4, 3), image::kLightMixInteractive, 1.0f); });
    test_.setFile("broken.exr", [] {
        ChannelImage image = makeConstant(windowOf(4, 3), "", 1.0f);
        image.setAttribute("tavrin.elements", String("\"unterminated"));
        return image;
    });
    ASSERT_EQ(test_.load({"one.exr"}), "");
    test_.settings().set(postcore::kSharpenAmountId, 3.0f);
    const std::int64_t revision = load_.getRevision();
    const std::vector<std::pair<std::vector<String>, std::string>> cases = {
        {{}, "At least one input image path is expected."},
        {{"none.exr"}, "File \"none.exr\" cannot be opened."},
        {{"one.exr", "none.exr"}, "Image \"one.exr\" is missing channel \"TAVRIN_FB_WEIGHTS\", "},
        {{"virtual.exr"},
         "Render element \"LightMix Interactive\" is expected to be virtual and computed in real "
         "time. It shall not be physically stored."},
        {{"broken.exr"}, "Cannot operate with image file \"broken.exr\". Incorrectly escaped"},
    };
    for (const auto& [files, error] : cases) {
        EXPECT_THAT(test_.load(files), StartsWith(error));
        EXPECT_EQ(load_.getRevision(), revision);
        EXPECT_EQ(getValue(), 1.0f);
        EXPECT_EQ(test_.settings().get(postcore::kSharpenAmountId).get<float>(), 3.0f);
    }
    EXPECT_THAT(load_.getLoadedPaths(), ElementsAre(Path(String("one.exr"))));
}

TEST_F(LoadOperatorTest, SuggestsAPathBesideTheFile) {
    const std::vector<std::pair<String, String>> cases = {
        {"/a/render.exr", "/a/render_Post.exr"},
        {"/a/r.v2.txr", "/a/r.v2_Post.txr"},
        {"/a/plain", "/a/plain_Post.txr"},
        {"/a/dot.", "/a/dot_Post.txr"},
        {".exr", ""},
    };
    for (const auto& [file, path] : cases) {
        test_.setFile(file, [] { return makeConstant(windowOf(1, 1), "", 1.0f); });
        ASSERT_EQ(test_.load({file}), "");
        EXPECT_EQ(load_.getSuggestedSavePath(), path);
    }
    ASSERT_EQ(test_.load({"one.exr", "two.exr"}, {1.0f}), "");
    EXPECT_EQ(load_.getSuggestedSavePath(), "");
    EXPECT_EQ(load_.getLoadedPaths().size(), 2u);
    EXPECT_THAT(load_.getLoadedWeights(), ElementsAre(image::Weight(1.0f), image::Weight(1.0f)));
}

TEST_F(LoadOperatorTest, TakesSettingsFromTheImage) {
    test_.setFile("set.exr", [] {
        ChannelImage image = makeConstant(windowOf(4, 3), "", 1.0f);
        image.setAttribute("tavrin.cm.enabled", 0);
        image.setAttribute("tavrin.cm.pipeline", String("no pipeline"));
        return image;
    });
    test_.settings().set(postcore::kSharpenAmountId, 3.0f);
    ASSERT_EQ(test_.load({"set.exr"}), "");
    EXPECT_EQ(test_.settings().get(postcore::kSharpenAmountId).get<float>(), 1.0f) << "the default";
    EXPECT_FALSE(test_.colorMapping.isEnabled());
    EXPECT_TRUE(colorkit::arePipelinesSame(test_.colorMapping.getPipeline(),
                                           colorkit::createDefaultPipeline()));
    EXPECT_EQ(test_.takeWarnings().size(), 1u);
    ASSERT_EQ(test_.load({"one.exr"}), "");
    EXPECT_TRUE(test_.colorMapping.isEnabled());
}

TEST_F(LoadOperatorTest, ObserversOfTheSettingsMayAskForTheImage) {
    std::size_t elements = 0;
    const auto observer = test_.settings().addObserver(
        postcore::kSharpenAmountId,
        [&](int, const postcore::Property&) { elements = load_.getElements().size(); });
    test_.settings().set(postcore::kSharpenAmountId, 3.0f);
    ASSERT_EQ(test_.load({"one.exr"}), "");
    EXPECT_EQ(elements, 2u);
}

TEST_F(LoadOperatorTest, RegionsOutsideOfTheImageAreNotAnswered) {
    ASSERT_EQ(test_.load({"one.exr"}), "");
    test_.settings().set(postcore::kSharpenBlurEnabledId, true);
    for (const Bucket& region : {Bucket{0, 0, 5, 1}, Bucket{-1, 0, 1, 1}, Bucket{0, 2, 1, 4},
                                 Bucket{8, 8, 9, 9}, Bucket{-2000000000, 0, 2000000000, 1}}) {
        EXPECT_FALSE(load_.provideRgbRegion({}, region, 1.0f));
        EXPECT_FALSE(load_.provideMonoRegion("A", region, 1.0f));
        EXPECT_FALSE(test_.chain.zoom.provideRgbRegion({}, region, 2.0f));
    }
    EXPECT_FALSE(load_.provideRgbRegion("None", windowOf(1, 1), 1.0f));
    EXPECT_FALSE(load_.provideMonoRegion("None", windowOf(1, 1), 1.0f));
    EXPECT_TRUE(load_.provideMonoRegion("A", windowOf(4, 3), 1.0f));
}

}  // namespace
}  // namespace tavrin::pipeline
