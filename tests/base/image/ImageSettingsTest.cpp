#include "base/image/Exr.h"
#include "base/image/ImageSettings.h"
#include "services/colorkit/ColorMapping.h"
#include "services/colorkit/Pipeline.h"
#include "services/colorkit/PipelineText.h"
#include "services/colorkit/operators/ExposureOperator.h"
#include "services/postcore/PropertyDescriptor.h"
#include "tests/support/MapSettings.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tavrin::image {
namespace {

using colorkit::arePipelinesSame;
using colorkit::ColorMapping;
using postcore::Property;
using postcore::PropertyDescriptor;
using testing::ElementsAre;
using testing::HasSubstr;
using tests::MapSettings;

const std::vector<int> kIds = {353, 355, 362, 363, 368, 381};

class ImageSettings : public testing::Test {
protected:
    void read(const ChannelImage& image) {
        readSettings(image, kIds, settings_, mapping_,
                     [this](const String& text) { warnings_.push_back(text.toUtf8()); });
    }

    ChannelImage image_{{0, 0, 2, 2}, {0, 0, 2, 2}, 1.0f};
    MapSettings settings_;
    ColorMapping mapping_;
    std::vector<std::string> warnings_;
};

TEST_F(ImageSettings, SurviveAFile) {
    settings_.set(353, 0.1f);
    settings_.set(355, 7);
    settings_.set(362, std::vector<Vec3>{{1, 1, 1}, {0.5f, 1, 1}});
    settings_.set(363, std::vector<float>{0.25f, 2});
    settings_.set(368, true);
    settings_.set(381, std::vector<bool>{true, false});
    mapping_.setEnabled(false);
    writeSettings(image_, kIds, settings_, mapping_);
    image_.addElement({"", ElementKind::Rgb, 0});
    image_.fitChannelsToDataWindow();
    const tests::TemporaryFolder folder;
    ASSERT_TRUE(ExrSaver().save(image_, folder / "image.exr"));
    const auto saved = ExrLoader().load(folder / "image.exr");
    ASSERT_TRUE(saved);

    const MapSettings written = settings_;
    settings_.values.clear();
    mapping_.setEnabled(true);
    mapping_.setPipeline(colorkit::createDefaultPipeline());
    read(*saved);
    EXPECT_TRUE(settings_.values == written.values);
    EXPECT_FALSE(mapping_.isEnabled());
    EXPECT_TRUE(mapping_.getPipeline().isEmpty());
    EXPECT_THAT(warnings_, ElementsAre());
}

TEST_F(ImageSettings, AbsentAndUnusableOnesGetDefaults) {
    for (const int id : kIds) {
        settings_.set(id, -1);
    }
    image_.setAttribute("tavrin.post.bloomIntensity", 3);
    image_.setAttribute("tavrin.post.glareStreakCount", 3.0f);
    image_.setAttribute("tavrin.post.bloomGlareEnabled", 2);
    image_.setAttribute("tavrin.post.lightMixIntensity", String("1;2"));
    image_.setAttribute("tavrin.post.lightMixColor", String("1 1 1"));
    std::u16string tooLong = u"1";
    for (int i = 0; i < 1 << 19; ++i) {
        tooLong += u",0";
    }
    image_.setAttribute("tavrin.post.lightMixEnabled", String(tooLong));
    mapping_.setEnabled(false);
    read(image_);
    for (const int id : kIds) {
        const Property expected =
            id == 368 ? Property(true) : PropertyDescriptor::get(id)->defaultValue;
        EXPECT_TRUE(settings_.get(id) == expected) << id;
    }
    EXPECT_TRUE(mapping_.isEnabled());
    EXPECT_TRUE(arePipelinesSame(mapping_.getPipeline(), colorkit::createDefaultPipeline()));
}

TEST_F(ImageSettings, ToneMappingIsTheHeadersBeforeTheLegacyOne) {
    image_.setAttribute("tavrin.post.toneMapExposure", 1.0f);
    read(image_);
    const auto legacy =
        colorkit::makePipeline({colorkit::OperatorValues(colorkit::ExposureOperator::kDescriptor)
                                    .set(colorkit::ExposureOperator::kStops, 1.0f)});
    EXPECT_TRUE(arePipelinesSame(mapping_.getPipeline(), legacy));
    EXPECT_EQ(settings_.values.size(), kIds.size());

    const auto kept = mapping_.getPipeline();
    read(image_);
    EXPECT_EQ(mapping_.getPipeline(), kept);

    image_.setAttribute("tavrin.cm.pipeline",
                        serializePipelineToString(colorkit::createDefaultPipeline()));
    read(image_);
    EXPECT_TRUE(arePipelinesSame(mapping_.getPipeline(), colorkit::createDefaultPipeline()));
    EXPECT_THAT(warnings_, ElementsAre());

    image_.setAttribute("tavrin.cm.pipeline", String("{"));
    read(image_);
    EXPECT_TRUE(arePipelinesSame(mapping_.getPipeline(), legacy));
    EXPECT_THAT(warnings_, ElementsAre(HasSubstr("cannot be read")));
}

}  // namespace
}  // namespace tavrin::image
