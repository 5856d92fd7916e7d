#include "foundation/FileList.h"
#include "foundation/StandardPaths.h"
#include "foundation/TextFile.h"
#include "services/colorkit/Pipeline.h"
#include "services/colorkit/PipelineText.h"
#include "services/colorkit/editing/PipelineData.h"
#include "services/colorkit/editing/Presets.h"
#include "tests/services/colorkit/MappingFixtures.h"
#include "tests/support/Message.h"
#include "tests/support/RegisteredTypes.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

namespace tavrin::colorkit::test {
namespace {

using testing::ElementsAre;

class Presets : public testing::Test {
protected:
    void write(const char* name, const std::string& text) {
        std::ofstream((folder_ / name).std()) << text;
    }
    void write(const char* name, const std::vector<OperatorValues>& operators) {
        write(name, serializePipelineToString(makePipeline(operators)).toUtf8());
    }
    std::vector<std::string> getNames() {
        std::vector<std::string> names;
        for (const auto& [name, action] : presets_.createMenuContent()) {
            names.push_back(name.toUtf8());
        }
        return names;
    }
    /// What the preset makes of a list with something in it.
    GenericList apply(const char* name) {
        GenericList list = {GenericObject::construct("Contrast")};
        presets_.createMenuContent().at(name)(list);
        return list;
    }

    tests::RegisteredTypes types_;
    tests::TemporaryFolder folder_;
    PresetCollection presets_{[this] { return folder_.path(); }};
};

TEST_F(Presets, AreOfferedInTheOrderOfTheirNames) {
    write("b.ttm", {exposure(1.0f)});
    write("a.ttm", {exposure(2.0f), exposure(3.0f)});
    write("B 2.5.ttm", {exposure(4.0f)});
    write("c.txt", {exposure(5.0f)});
    EXPECT_THAT(getNames(), ElementsAre("B 2.5", "a", "b"));
    const GenericList list = apply("a");
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(list[0].get<float>("stops"), 2.0f);
    EXPECT_EQ(list[1].get<float>("stops"), 3.0f);
    EXPECT_NE(list[0].get<int>("id"), list[1].get<int>("id"));
}

TEST_F(Presets, TheFirstOfTheSameNameStays) {
    write("same.TTM", {exposure(1.0f)});
    write("same.ttm", {exposure(2.0f)});
    EXPECT_THAT(getNames(), ElementsAre("same"));
    EXPECT_EQ(apply("same").at(0).get<float>("stops"), 1.0f);
}

TEST_F(Presets, AreLookedForOnce) {
    write("a.ttm", {exposure(1.0f)});
    EXPECT_THAT(getNames(), ElementsAre("a"));
    write("b.ttm", {exposure(1.0f)});
    EXPECT_THAT(getNames(), ElementsAre("a"));
    write("a.ttm", {exposure(2.0f)});
    EXPECT_EQ(apply("a").at(0).get<float>("stops"), 2.0f);
}

TEST_F(Presets, ATextThatIsNoToneMappingEmptiesTheList) {
    write("bad.ttm", std::string("no tone mapping"));
    EXPECT_TRUE(apply("bad").empty());
}

TEST_F(Presets, AFileThatCannotBeReadLeavesTheList) {
    write("a.ttm", {exposure(1.0f)});
    const auto content = presets_.createMenuContent();
    std::filesystem::remove((folder_ / "a.ttm").std());
    GenericList list = {GenericObject::construct("Contrast")};
    const GenericList before = list;
    EXPECT_THAT(tests::messageOf([&] { content.at("a")(list); }), testing::HasSubstr("a.ttm"));
    EXPECT_EQ(list, before);
}

TEST_F(Presets, WithoutAFolderThereAreNone) {
    PresetCollection none([] { return std::nullopt; });
    EXPECT_TRUE(none.createMenuContent().empty());
}

TEST_F(Presets, ThoseOfTheProgramAreToneMappings) {
    const auto files = getFiles(StandardPaths::toneMappingPresetsBundle(), "ttm");
    const auto content = createPresetMenuContent();
    EXPECT_EQ(content.size(), files.size());
    for (const Path& file : files) {
        String error;
        const auto pipeline =
            deserializePipelineFromString(readTextFile(file, 1 << 20).value(), error);
        EXPECT_EQ(error.toUtf8(), "") << file.native().toUtf8();
        GenericList list;
        content.at(file.stem())(list);
        EXPECT_TRUE(arePipelinesSame(createPipeline(list), pipeline));
    }
}

}  // namespace
}  // namespace tavrin::colorkit::test
