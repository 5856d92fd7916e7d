#include "services/colorkit/Pipeline.h"
#include "services/colorkit/editing/PipelineData.h"
#include "tests/services/colorkit/MappingFixtures.h"
#include "tests/support/Message.h"
#include "tests/support/RegisteredTypes.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace tavrin::colorkit::test {
namespace {

std::vector<int> getIds(const EntityHolder<IColorMappingOperator>& pipeline) {
    std::vector<int> ids;
    for (const IColorMappingOperator* each : listOperators(pipeline)) {
        ids.push_back(each->getId());
    }
    return ids;
}

RC_GTEST_PROP(PipelineData, SurvivesTheWayToObjectsAndBack, ()) {
    const tests::RegisteredTypes types;
    const auto pipeline = makePipeline(arbitraryOperators());
    const GenericList objects = convertPipelineToDataObjects(pipeline, HiddenItems::Include);
    const auto copy = createPipeline(objects);
    RC_ASSERT(arePipelinesSame(copy, pipeline));
    RC_ASSERT(getIds(copy) == getIds(pipeline));
    RC_ASSERT(
        areOperatorsDataSame(convertPipelineToDataObjects(copy, HiddenItems::Include), objects));
}

TEST(PipelineData, ObjectsWithoutAnIdGetOne) {
    const tests::RegisteredTypes types;
    const GenericObject object = GenericObject::construct("Exposure");
    const std::vector<int> ids = getIds(createPipeline({object, object}));
    EXPECT_NE(ids[0], 0);
    EXPECT_NE(ids[1], 0);
    EXPECT_NE(ids[0], ids[1]);
}

TEST(PipelineData, HiddenOperatorsMayBeLeftOut) {
    const tests::RegisteredTypes types;
    ColorMappingOperatorDescriptor hidden = exposure(0.0f).getDescriptor();
    hidden.category = OperatorCategory::NotOffered;
    const auto pipeline = makePipeline({OperatorValues(hidden), exposure(1.0f)});
    EXPECT_EQ(convertPipelineToDataObjects(pipeline, HiddenItems::Include).size(), 2u);
    const GenericList shown = convertPipelineToDataObjects(pipeline, HiddenItems::Omit);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].get<int>("id"), pipeline->getId());
}

TEST(PipelineData, OtherObjectsAreRefused) {
    const tests::RegisteredTypes types;
    EXPECT_EQ(tests::messageOf([] { createPipeline({GenericObject::construct("ColorMapping")}); }),
              "There is no colour-mapping operator \"ColorMapping\".");
}

TEST(PipelineData, IsComparedByValuesAndIds) {
    const tests::RegisteredTypes types;
    const auto make = [](const char* type, int id, bool enabled = true) {
        GenericObject object = GenericObject::construct(type);
        object.set("id", id);
        object.set("enabled", enabled);
        return object;
    };
    const GenericObject first = make("Exposure", 1);
    const GenericObject second = make("Contrast", 2);
    GenericObject brighter = first;
    brighter.set("stops", 1.0f);
    const struct {
        GenericList left;
        GenericList right;
        bool areSame;
    } cases[] = {
        {{}, {}, true},
        {{first, second}, {first, second}, true},
        {{first, second}, {second, first}, false},
        {{first}, {first, second}, false},
        {{first}, {}, false},
        {{first}, {brighter}, false},
        {{first}, {make("Exposure", 1, false)}, false},
        {{first}, {make("Contrast", 1)}, false},
        {{first}, {make("Exposure", 3)}, false},
        {{first}, {make("Exposure", 0)}, true},
        {{brighter}, {make("Exposure", 0)}, false},
    };
    for (const auto& [left, right, areSame] : cases) {
        EXPECT_EQ(areOperatorsDataSame(left, right), areSame);
        EXPECT_EQ(areOperatorsDataSame(right, left), areSame);
    }
}

}  // namespace
}  // namespace tavrin::colorkit::test
