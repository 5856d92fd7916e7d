#include "services/colorkit/Pipeline.h"
#include "services/colorkit/PipelineText.h"
#include "services/postcore/PostProcessData.h"
#include "services/postcore/PropertyIds.h"
#include "tests/base/pipeline/TestChain.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tavrin::pipeline {
namespace {

using image::ChannelImage;
using image::ElementKind;
using Control = IOperator::Control;

/// Larger than its display window, so that positions are not those of the data.
constexpr Bucket kData = {-6, -3, 34, 27};
constexpr Bucket kDisplay = {0, 0, 30, 20};

class ColorMapTest : public testing::Test {
protected:
    ColorMapTest() {
        test_.setFile("render", [] {
            ChannelImage image = makeRender(kData, 3);
            image.setAttribute("displayWindow", kDisplay);
            image.getChannel<float>("R").getValues()[5] = -1.0f;
            return image;
        });
        test_.load({"render"});
        setPipeline(R"({"version":1,"operators":[{"type":"Exposure","stops":1},
                       {"type":"Vignette","enabled":true},{"type":"Grain","enabled":true}]})");
    }
    void setPipeline(const char* text) {
        String error;
        test_.colorMapping.setPipeline(colorkit::deserializePipelineFromString(text, error));
        ASSERT_EQ(error, "");
    }
    BitmapImpl<Rgb> get(IOperator& op, const String& element, const Bucket& region, float scale,
                        Flags<Control> flags = {}) {
        return *op.provideRgbRegion(element, region, scale, flags);
    }

    TestChain test_;
    Performer& chain_ = test_.chain;
    const Bucket whole_ = windowOf(40, 30);
};

TEST_F(ColorMapTest, MapsEveryPixelAtItsPlaceInTheDisplayWindow) {
    auto expected = get(chain_.includeAlpha, {}, whole_, 1.0f);
    const auto context =
        postcore::getCommonColorMappingContext(postcore::getPostProcessData(test_.settings()));
    test_.colorMapping.createMappingOperator(context, kDisplay.size())
        ->mapBitmap(expected, {-6, -3}, 1.0f);
    const auto mapped = get(chain_.colorMap, {}, whole_, 1.0f);
    EXPECT_TRUE(areIdentical(mapped, expected));
    EXPECT_EQ(mapped.at(5, 0).r, 0.0f) << "negative components count as 0";
    for (const float scale : {1.0f, 2.0f, 3.0f}) {
        const auto part = get(chain_.colorMap, {}, {6, 12, 30, 24}, scale);
        for (int y = 0; y < part.getHeight(); ++y) {
            for (int x = 0; x < part.getWidth(); ++x) {
                EXPECT_EQ(part.at(x, y), mapped.at(6 + x * int(scale), 12 + y * int(scale)));
            }
        }
    }
}

TEST_F(ColorMapTest, AlphaPassesAndDataPassesAreNotMapped) {
    const auto alpha = *chain_.load.provideMonoRegion("A", whole_, 1.0f);
    for (const char* element : {"", "Data", "L1"}) {
        const auto mapped = get(chain_.colorMap, element, whole_, 1.0f);
        for (std::size_t i = 0; i < mapped.pixels().size(); ++i) {
            ASSERT_EQ(mapped.pixels()[i].a, alpha.pixels()[i]);
        }
    }
    EXPECT_EQ(get(chain_.colorMap, "Data", whole_, 2.0f).at(3, 4),
              get(chain_.load, "Data", whole_, 2.0f).at(3, 4));
    test_.setFile("opaque", [] { return makeConstant(kData, "", 0.5f); });
    ASSERT_EQ(test_.load({"opaque"}), "");
    EXPECT_EQ(get(chain_.colorMap, {}, whole_, 1.0f).at(3, 3).a, 1.0f);
    EXPECT_EQ(chain_.includeAlpha.getElements().front().kind, ElementKind::Rgba);
}

TEST_F(ColorMapTest, MeasuresWhatEntersAnOperator) {
    const auto pipeline = test_.colorMapping.getPipeline();
    const auto afterExposure = pipeline->getPredecessor();
    const auto source = get(chain_.includeAlpha, "", whole_, 1.0f);
    chain_.colorMap.setHistogramStage(static_cast<std::uint32_t>(afterExposure->getId()));
    EXPECT_FLOAT_EQ(get(chain_.colorMap, "", whole_, 1.0f, Control::Measure).at(2, 2).g,
                    source.at(2, 2).g * 2.0f);
    chain_.colorMap.setHistogramStage(ColorMapOperator::kNoStage);
    const auto black = get(chain_.colorMap, "", whole_, 1.0f, Control::Measure);
    EXPECT_EQ(black.at(2, 2), Rgb());
    EXPECT_EQ(black.at(2, 2).a, source.at(2, 2).a);
}

TEST_F(ColorMapTest, TheCameraOfTheSettingsTakesPart) {
    setPipeline(R"({"version":1,"operators":[{"type":"PhotographicExposure"}]})");
    const auto before = get(chain_.colorMap, {}, whole_, 1.0f);
    test_.settings().set(postcore::kCameraIsoId, 400.0f);
    EXPECT_GT(get(chain_.colorMap, {}, whole_, 1.0f).at(1, 1).g, before.at(1, 1).g);
    EXPECT_EQ(test_.colorMapping.getContext().iso, 100.0f);
    chain_.colorMap.updateColorMappingContext();
    EXPECT_EQ(test_.colorMapping.getContext().iso, 400.0f);
}

TEST_F(ColorMapTest, ProblemsOfTheMappingAreWarningsOfTheLoad) {
    setPipeline(R"({"version":1,"operators":[{"type":"Lut","path":"/none.cube"}]})");
    get(chain_.colorMap, {}, whole_, 1.0f);
    get(chain_.colorMap, {}, whole_, 1.0f);
    EXPECT_EQ(test_.takeWarnings().size(), 1u);
    chain_.colorMap.updateColorMappingContext();
    get(chain_.colorMap, {}, whole_, 1.0f);
    EXPECT_EQ(test_.takeWarnings().size(), 1u) << "the context is another one";
}

}  // namespace
}  // namespace tavrin::pipeline
