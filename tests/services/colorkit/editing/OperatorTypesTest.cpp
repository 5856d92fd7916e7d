#include "foundation/data/UiAttributes.h"
#include "services/colorkit/ColorMapping.h"
#include "services/colorkit/ColorMappingOperatorFactory.h"
#include "services/colorkit/editing/ParameterBinding.h"
#include "services/colorkit/editing/PipelineData.h"
#include "services/colorkit/operators/ContrastOperator.h"
#include "tests/support/Message.h"
#include "tests/support/RegisteredTypes.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tavrin::colorkit::test {
namespace {

class OperatorTypes : public testing::Test {
    tests::RegisteredTypes types_;
};

TEST_F(OperatorTypes, AreThoseOfTheFactory) {
    for (const auto& [name, descriptor] :
         ColorMappingOperatorFactory::getInstance().getAllDescriptors()) {
        SCOPED_TRACE(name.toUtf8());
        const GenericObject object = GenericObject::construct(name);
        EXPECT_TRUE(object.getType().isA("UnaryColorMappingOperator"));
        EXPECT_TRUE(object.get<EntityHolder<IColorMappingOperator>>("predecessor").isEmpty());
        EXPECT_EQ(object.get<int>("id"), 0);
        EXPECT_EQ(object.get<bool>("enabled"), descriptor->isEnabledByDefault);
        EXPECT_EQ(*object.getType().getAttributes().get<String>("Orvix.Ui.Name"),
                  descriptor->displayName);
        EXPECT_EQ(*object.getType().getAttributes().get<String>("Orvix.Ui.Description"),
                  descriptor->description);
        const auto& properties = object.getType().getProperties();
        ASSERT_EQ(properties.size(), 3 + descriptor->parameters.size());
        for (std::size_t i = 0; i < descriptor->parameters.size(); ++i) {
            const ParameterDeclaration& parameter = *descriptor->parameters[i];
            EXPECT_EQ(properties[3 + i].getName(), parameter.name);
            EXPECT_EQ(getParameter(object, parameter), getDefaultValue(parameter));
            if (const auto* number = std::get_if<float>(&parameter.defaultValue)) {
                const auto range = properties[3 + i].getLimit()->range;
                EXPECT_TRUE(range && range->minimum <= *number && *number <= range->maximum);
                EXPECT_EQ(range->maximum, parameter.maximum);
            }
            const auto* choices =
                properties[3 + i].getAttributes().get<UiChoices>("Orvix.Ui.Choices");
            EXPECT_EQ(choices == nullptr ? 0 : choices->size(), parameter.choices.size());
        }
    }
}

TEST_F(OperatorTypes, LimitsAreThoseOfTheParameters) {
    GenericObject contrast = GenericObject::construct(ContrastOperator::kDescriptor.typeName);
    for (const float value : {0.0f, 4.01f, std::nanf("")}) {
        EXPECT_EQ(tests::messageOf([&] { contrast.set("contrast", value); }),
                  "The property \"contrast\" of \"Contrast\" must be a number from 0.1 to 4.");
    }
    contrast.set("contrast", 4.0f);
    EXPECT_EQ(contrast.get<float>("contrast"), 4.0f);
}

TEST_F(OperatorTypes, DeclareTheLookUpTable) {
    const GenericObject lut = GenericObject::construct("Lut");
    EXPECT_FALSE(lut.get<bool>("enabled"));
    EXPECT_EQ(lut.get<Path>("path"), Path());
    EXPECT_EQ(lut.get<float>("opacity"), 1.0f);
    EXPECT_FALSE(lut.get<bool>("logarithmic"));
    EXPECT_FALSE(lut.get<bool>("linear"));
    const auto attributesOf = [&](const char* name) {
        return lut.getType().getProperties()[lut.getType().indexOf(name)].getAttributes();
    };
    EXPECT_EQ(*attributesOf("path").get<String>("Orvix.Ui.Name"), "");
    EXPECT_EQ(attributesOf("path").get<String>("Orvix.Ui.Description"), nullptr);
    EXPECT_EQ((*attributesOf("path").get<std::pair<int, int>>("Orvix.Ui.PathFlags")),
              std::pair(1, 2));
    EXPECT_EQ(attributesOf("opacity").get<String>("Orvix.Ui.Name"), nullptr);
    EXPECT_TRUE(attributesOf("opacity")
                    .get<String>("Orvix.Ui.Description")
                    ->startsWith("Sets the opacity of the LUT transform."));
    EXPECT_EQ(*attributesOf("opacity").get<int>("Orvix.Ui.Flags"), 1);
    EXPECT_EQ(attributesOf("linear").get<int>("Orvix.Ui.Flags"), nullptr);
}

TEST_F(OperatorTypes, AColorMappingHasADataForm) {
    const GenericObject fresh = GenericObject::construct("ColorMapping");
    ColorMapping colorMapping;
    EXPECT_EQ(toDataObject(colorMapping), fresh);
    colorMapping.setEnabled(false);
    colorMapping.setPipeline(createPipeline({GenericObject::construct("Exposure")}));
    const GenericObject data = toDataObject(colorMapping);
    EXPECT_FALSE(data.get<bool>("enabled"));
    EXPECT_EQ(data.get<EntityHolder<IColorMappingOperator>>("pipeline"),
              colorMapping.getPipeline());
}

}  // namespace
}  // namespace tavrin::colorkit::test
