#include "services/colorkit/Pipeline.h"
#include "services/colorkit/operators/ContrastOperator.h"
#include "services/colorkit/operators/ExposureOperator.h"
#include "services/colorkit/operators/HighlightCompressionOperator.h"
#include "services/colorkit/operators/LutOperator.h"
#include "services/colorkit/operators/VignetteOperator.h"
#include "services/postcore/LegacyToneMapping.h"
#include "tests/support/MapSettings.h"
#include "tests/support/Message.h"

#include <gtest/gtest.h>

#include <limits>

namespace tavrin::postcore {
namespace {

using namespace colorkit;

class LegacyToneMapping : public testing::Test {
protected:
    void set(const char* name, const Property& value) {
        for (const PropertyDescriptor& descriptor : getLegacyTonemappingDescriptors()) {
            if (descriptor.name == name) {
                settings_.set(descriptor.id, value);
                return;
            }
        }
        FAIL() << name;
    }
    std::vector<const IColorMappingOperator*> list() {
        pipeline_ = settings_.getColorMappingPipeline();
        return listOperators(pipeline_);
    }

    tests::MapSettings target_;
    LegacyAwarePostParamsSettings settings_{target_};
    EntityHolder<IColorMappingOperator> pipeline_;
};

TEST_F(LegacyToneMapping, PassesOtherPropertiesOn) {
    settings_.set(353, 0.5f);
    EXPECT_TRUE(target_.values.at(353) == Property(0.5f));
    EXPECT_TRUE(list().empty());
    EXPECT_NE(tests::messageOf([&] { settings_.get(353); }), "");
}

TEST_F(LegacyToneMapping, BecomesOperatorsInOrder) {
    set("toneMapHighlightCompression", 2.0f);
    set("toneMapExposure", 100.0f);
    set("toneMapContrast", std::numeric_limits<float>::quiet_NaN());
    set("toneMapSaturation", 1);
    const auto operators = list();
    EXPECT_TRUE(target_.values.empty());
    ASSERT_EQ(operators.size(), 2u);
    const OperatorValues exposure =
        OperatorValues(ExposureOperator::kDescriptor).set(ExposureOperator::kStops, 10.0f);
    EXPECT_TRUE(operators[0]->getValues() == exposure);
    EXPECT_EQ(operators[1]->getValues().get(HighlightCompressionOperator::kWhite), 2.0f);
}

TEST_F(LegacyToneMapping, LutNeedsAFile) {
    set("toneMapLutOpacity", 0.5f);
    EXPECT_TRUE(list().empty());
    set("toneMapLutPath", String("film.cube"));
    set("toneMapVignette", 0.25f);
    const auto operators = list();
    ASSERT_EQ(operators.size(), 2u);
    EXPECT_EQ(operators[0]->getValues().get(VignetteOperator::kStrength), 0.25f);
    EXPECT_EQ(operators[1]->getValues().get(LutOperator::kPath), Path(String("film.cube")));
    EXPECT_EQ(operators[1]->getValues().get(LutOperator::kOpacity), 0.5f);
    EXPECT_TRUE(operators[0]->getValues().isEnabled() && operators[1]->getValues().isEnabled());
}

}  // namespace
}  // namespace tavrin::postcore
