#include "tests/base/pipeline/TestChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>

namespace tavrin::pipeline {
namespace {

using image::ChannelImage;
using image::Weight;
using testing::ElementsAre;
using testing::HasSubstr;

/// A beauty of one value that says how many of its like are in memory.
ChannelImage makePart(float value, float weight, int width = 8) {
    ChannelImage image = makeConstant(windowOf(width, 4), "", value);
    image.addChannel(image::kWeightsElement);
    image.fitChannelsToDataWindow();
    std::ranges::fill(image.getChannel<float>(image::kWeightsElement).getValues(), weight);
    return image;
}

class Merge : public testing::Test {
protected:
    Merge() {
        test_.setFile("a", [] { return makePart(2.0f, 1.0f); });
        test_.setFile("b", [] { return makePart(6.0f, 3.0f); });
        test_.setFile("wide", [] { return makePart(6.0f, 3.0f, 9); });
        test_.setFile("unweighted", [] { return makeConstant(windowOf(8, 4), "", 1.0f); });
    }
    float getValue() {
        return test_.chain.load.provideRgbRegion({}, windowOf(8, 4), 1.0f)->at(7, 3).g;
    }

    TestChain test_;
};

TEST_F(Merge, WeightsAreChannelsOrConstants) {
    const std::vector<std::pair<std::vector<Weight>, float>> cases = {
        {{}, 5.0f},           {{String("TAVRIN_FB_WEIGHTS")}, 5.0f},       {{1.0f}, 4.0f},
        {{3.0f, 1.0f}, 3.0f}, {{3.0f, String("TAVRIN_FB_WEIGHTS")}, 4.0f},
    };
    for (const auto& [weights, mean] : cases) {
        ASSERT_EQ(test_.load({"a", "b"}, weights), "");
        EXPECT_FLOAT_EQ(getValue(), mean);
    }
    EXPECT_THAT(test_.load({"a", "b", "a"}, {1.0f, 2.0f}),
                HasSubstr("Number of specified weights is mismatched"));
    EXPECT_THAT(test_.load({"a"}, {1.0f, 2.0f}),
                HasSubstr("Number of specified weights is mismatched"));
}

TEST_F(Merge, ImagesThatDoNotSuitTheFirstAreNamed) {
    ASSERT_EQ(test_.load({"a"}), "");
    EXPECT_THAT(test_.load({"a", "wide"}), HasSubstr("Image \"wide\" does not fit within the"));
    EXPECT_THAT(test_.load({"a", "b", "unweighted"}),
                HasSubstr("Image \"unweighted\" is missing channel \"TAVRIN_FB_WEIGHTS\""));
    EXPECT_THAT(test_.load({"unweighted", "a"}), HasSubstr("Image \"unweighted\" is missing"));
    EXPECT_EQ(test_.load({"a", "b", "none"}), "File \"none\" cannot be opened.");
    EXPECT_EQ(getValue(), 2.0f) << "what was there";
}

TEST_F(Merge, WeightsThatCannotBeMeantAreRefused) {
    const std::vector<std::pair<std::vector<Weight>, std::string>> cases = {
        {{-1.0f}, "A weight of -1 makes no sense: it is 0 or more."},
        {{1.0f, NAN}, "A weight of nan makes no sense: it is 0 or more."},
        {{0.0f}, "No image would be left to merge: all weights are 0."},
        {{String("R")}, "Channel \"R\" cannot hold pixel weights: it is one of the beauty."},
    };
    for (const auto& [weights, error] : cases) {
        EXPECT_EQ(test_.load({"a", "b"}, weights), error);
    }
}

TEST_F(Merge, DropsDenoisedVariantsThatOneImageLacks) {
    const auto hasVariant = [this] {
        return test_.chain.load.getImage()->hasChannel<float>("Denoised.G");
    };
    test_.setFile("denoised", [] {
        ChannelImage image = makePart(2.0f, 1.0f);
        image.addElement({"Denoised", image::ElementKind::Rgb});
        image.fitChannelsToDataWindow();
        return image;
    });
    ASSERT_EQ(test_.load({"denoised", "denoised"}), "");
    EXPECT_TRUE(hasVariant());
    EXPECT_TRUE(test_.takeWarnings().empty());
    ASSERT_EQ(test_.load({"denoised", "a"}), "");
    EXPECT_FALSE(hasVariant());
    EXPECT_THAT(test_.takeWarnings(), ElementsAre(HasSubstr("one of them lacks are dropped")));
}

TEST_F(Merge, TellsHowFarItIs) {
    std::vector<float> told;
    test_.chain.load.onProgress = [&told](float part) { told.push_back(part); };
    ASSERT_EQ(test_.load({"a", "b", "a", "b"}), "");
    EXPECT_THAT(told, ElementsAre(0.0f, 0.25f, 0.5f, 0.75f, 1.0f, 1.0f));
}

/// A part that the renderer has marked, with a tone mapping.
ChannelImage makeTxr(const char* pipeline) {
    ChannelImage image = makePart(2.0f, 1.0f);
    for (const char* name : {"istavrinexr", "stats.passes", "stats.time", "stats.rayspersecond"}) {
        image.setAttribute("tavrin." + String(name), 1);
    }
    image.setAttribute("tavrin.stats.rayspersample", 1.0f);
    image.setAttribute("tavrin.cm.pipeline", String(pipeline));
    return image;
}

TEST_F(Merge, KeepsTheToneMappingOfTheFirstAndWarnsOfOthers) {
    test_.setFile("clamped", [] {
        return makeTxr(R"({"version":1,"operators":[{"type":"Clamp","enabled":true}]})");
    });
    test_.setFile("unmapped", [] { return makeTxr(R"({"version":1,"operators":[]})"); });
    ASSERT_EQ(test_.load({"clamped", "clamped"}), "");
    EXPECT_THAT(test_.takeWarnings(), ElementsAre());
    ASSERT_EQ(test_.load({"clamped", "unmapped", "a", "b"}), "");
    EXPECT_THAT(test_.takeWarnings(), ElementsAre(HasSubstr("postprocessing properties differed"),
                                                  HasSubstr("not been recognized as TXR images")));
    ASSERT_FALSE(test_.colorMapping.getPipeline().isEmpty());
    EXPECT_TRUE(test_.colorMapping.getPipeline()->getPredecessor().isEmpty());
}

TEST_F(Merge, ADisplayWindowBeyondMemoryIsRefused) {
    test_.setFile("huge", [] {
        ChannelImage image = makePart(1.0f, 1.0f);
        image.setAttribute("displayWindow", Bucket{-2000000000, 0, 2000000000, 2000000000});
        return image;
    });
    EXPECT_EQ(test_.load({"huge", "a"}),
              "Cannot operate with image file \"huge\". A merged image of 4000000000 x 2000000000 "
              "pixels, which its display window asks for, does not fit in memory.");
}

}  // namespace
}  // namespace tavrin::pipeline
