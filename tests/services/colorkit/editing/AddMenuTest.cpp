#include "services/colorkit/ColorMappingOperatorFactory.h"
#include "services/colorkit/DefaultLut.h"
#include "services/colorkit/InternalError.h"
#include "services/colorkit/editing/AddMenu.h"
#include "tests/support/RegisteredTypes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <list>
#include <map>
#include <set>
#include <string>

namespace tavrin::colorkit::test {
namespace {

using testing::ElementsAre;

class AddMenu : public testing::Test {
protected:
    /// Operators by type name, with names and categories of their own.
    void add(const char* typeName, const char* displayName, unsigned category) {
        ColorMappingOperatorDescriptor& descriptor = made_.emplace_back(
            *ColorMappingOperatorFactory::getInstance().findDescriptor("Exposure"));
        descriptor.typeName = typeName;
        descriptor.displayName = displayName;
        descriptor.category = static_cast<OperatorCategory>(category);
        descriptors_.emplace(typeName, &descriptor);
    }
    std::vector<std::string> getLabels() const {
        std::vector<std::string> labels;
        for (const auto& item : createAddItemMenuContent(descriptors_)) {
            labels.push_back((item.isHeading ? "# " : "") + item.label.toUtf8());
            EXPECT_EQ(item.isHeading, !item.action);
        }
        return labels;
    }

    std::list<ColorMappingOperatorDescriptor> made_;
    std::map<String, const ColorMappingOperatorDescriptor*> descriptors_;
    tests::RegisteredTypes types_;
};

TEST_F(AddMenu, HasAHeadingForEachCategoryWithOperators) {
    add("Zoom", "A film", 3);
    add("Bold", "Z basic", 0);
    add("Aura", "B film", 3);
    add("Crisp", "Y basic", 0);
    add("Hidden", "Hidden", 4);
    EXPECT_THAT(getLabels(),
                ElementsAre("# Basic", "Z basic", "Y basic", "# Final Look", "B film", "A film"));
    add("Mid", "Middle", 2);
    add("Curve", "Curve", 1);
    EXPECT_THAT(getLabels(),
                ElementsAre("# Basic", "Z basic", "Y basic", "# Curve Control", "Curve",
                            "# Highlight Control", "Middle", "# Final Look", "B film", "A film"));
}

TEST_F(AddMenu, AnUnknownCategoryIsAnInternalError) {
    add("Odd", "Odd", 5);
    EXPECT_THROW(createAddItemMenuContent(descriptors_), InternalError);
}

TEST_F(AddMenu, OffersEveryOperatorWithItsDescription) {
    const auto& descriptors = ColorMappingOperatorFactory::getInstance().getAllDescriptors();
    std::map<String, String> expected;
    for (const auto& [name, descriptor] : descriptors) {
        if (descriptor->category != OperatorCategory::NotOffered) {
            expected.emplace(descriptor->displayName, descriptor->description);
        }
    }
    std::map<String, String> offered;
    for (const auto& item : createAddItemMenuContent()) {
        if (item.isHeading) {
            EXPECT_EQ(item.description, "");
        } else {
            offered.emplace(item.label, item.description);
        }
    }
    EXPECT_EQ(offered, expected);
}

TEST_F(AddMenu, ActionsAddAnOperatorWithItsDefaultsAtTheEnd) {
    GenericList list;
    std::set<int> ids;
    for (int round = 0; round < 2; ++round) {
        for (const auto& item : createAddItemMenuContent()) {
            if (item.isHeading) {
                continue;
            }
            item.action(list);
            EXPECT_EQ(*list.back().getType().getAttributes().get<String>("Orvix.Ui.Name"),
                      item.label);
            EXPECT_TRUE(ids.insert(list.back().get<int>("id")).second);
            GenericObject expected = GenericObject::construct(list.back().getType().getName());
            expected.set("id", list.back().get<int>("id"));
            if (item.label == "LUT") {
                expected.set("path", getDefaultLut());
            }
            EXPECT_EQ(list.back(), expected);
        }
    }
    EXPECT_EQ(list.size(), ids.size());
    EXPECT_FALSE(ids.contains(0));
}

}  // namespace
}  // namespace tavrin::colorkit::test
