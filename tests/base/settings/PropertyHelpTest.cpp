#include "base/settings/PropertyHelp.h"
#include "services/postcore/PropertyDescriptor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace tavrin::settings {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

std::vector<int> join(std::initializer_list<std::vector<int>> lists) {
    std::vector<int> joined;
    for (const auto& list : lists) {
        joined.insert(joined.end(), list.begin(), list.end());
    }
    return joined;
}

TEST(PropertyHelp, IdsAreGroupedInOrder) {
    EXPECT_THAT(denoisePropertyIds(), ElementsAre(989, 993, 996, 997));
    EXPECT_THAT(lightMixPropertyIds(), ElementsAre(362, 363, 381));
    EXPECT_THAT(cameraPropertyIds(), ElementsAre(341, 342, 343));
    EXPECT_THAT(sharpenBlurPropertyIds(), ElementsAre(379, 380, 382, 383));
    std::vector<int> bloomGlare = {353, 354, 355, 356, 357, 358, 359, 360, 368, 387};
    for (int id = 400; id <= 435; ++id) {
        bloomGlare.push_back(id);
    }
    EXPECT_EQ(bloomGlarePropertyIds(), bloomGlare);
    EXPECT_EQ(postPropertyIds(), join({denoisePropertyIds(), bloomGlare, cameraPropertyIds(),
                                       sharpenBlurPropertyIds()}));
    EXPECT_EQ(allPropertyIds(), join({postPropertyIds(), lightMixPropertyIds()}));
    EXPECT_EQ(allPropertyIds().size(), 60u);
}

TEST(PropertyHelp, PlaceholdersAreFilledIn) {
    const struct {
        int id;
        const char* part;
    } cases[] = {
        {997, "lie between 0 and 10. A larger"},
        {353, "equal to 0, the bloom effect is disabled"},
        {355, "from 1 up to 16 streaks"},
        {356, "global default is 15 degrees"},
        {368, "The global default is \"false\" which"},
        {408, "Value of 1 means no zoom, value of 10 means 10x zoom. The global default is 1 "},
        {341, "lie between 1 and 1000000. The global default is 100 which"},
    };
    for (const auto& [id, part] : cases) {
        EXPECT_THAT(getPropertyHelp(id).toUtf8(), HasSubstr(part));
    }
    for (const int id : allPropertyIds()) {
        EXPECT_FALSE(getPropertyHelp(id).contains("%")) << id;
    }
}

TEST(PropertyHelp, SomePropertiesHaveNone) {
    EXPECT_THAT(getPropertyHelp(996).toUtf8(), StartsWith("Selects a denoising mode, i.e. the"));
    EXPECT_TRUE(getPropertyHelp(342).isEmpty());
    EXPECT_TRUE(getPropertyHelp(391).isEmpty());
    EXPECT_TRUE(getPropertyHelp(1).isEmpty());
    // The rest of them are for the program itself.
    const std::set<int> grouped(allPropertyIds().begin(), allPropertyIds().end());
    std::vector<int> others;
    for (const auto& descriptor : postcore::PropertyDescriptor::list()) {
        if (grouped.count(descriptor.id) == 0) {
            others.push_back(descriptor.id);
        }
    }
    EXPECT_THAT(others, ElementsAre(391, 992, 999));
}

}  // namespace
}  // namespace tavrin::settings
