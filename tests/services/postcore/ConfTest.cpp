#include "services/colorkit/ColorMapping.h"
#include "services/colorkit/Pipeline.h"
#include "services/postcore/Conf.h"
#include "services/postcore/PropertyDescriptor.h"
#include "tests/support/ArbitraryProperty.h"
#include "tests/support/MapSettings.h"
#include "tests/support/Message.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <fstream>

namespace tavrin::postcore {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using tests::MapSettings;
using tests::messageOf;

bool all(int) {
    return true;
}

class ConfTest : public testing::Test {
protected:
    Path write(const std::string& text) const {
        std::ofstream(file_.std(), std::ios::binary) << text;
        return file_;
    }
    /// The warnings about a text; its values are in settings_.
    std::vector<std::string> parse(const std::string& text, const IdFilter& accepts = all) {
        std::vector<std::string> warnings;
        Conf::parse(
            write(text), settings_,
            [&](const String& warning) { warnings.push_back(warning.toUtf8()); }, accepts,
            Conf::isColorMappingKey);
        return warnings;
    }

    const tests::TemporaryFolder folder_;
    const Path file_ = folder_ / "file.tvpost";
    MapSettings settings_;
};

TEST_F(ConfTest, SavesAndReadsWhatTheFilterAccepts) {
    settings_.set(353, 0.1f);
    settings_.set(381, std::vector<bool>{true, false});
    settings_.set(362, std::vector<Vec3>{{1, 1, 1}, {0.5f, 1, 1}});
    settings_.set(993, 0.5f);
    Conf::save(settings_, file_, [](int id) { return id != 993; });
    MapSettings read;
    Conf::parse(file_, read, [](const String& text) { FAIL() << text.toUtf8(); }, all, {});
    EXPECT_EQ(read.values.count(993), 0u);
    EXPECT_EQ(read.values.size(), PropertyDescriptor::list().size() - 1);
    for (const auto& [id, value] : read.values) {
        EXPECT_TRUE(value == settings_.get(id)) << id;
    }
}

TEST_F(ConfTest, ToleratesTheEditorsOfOtherSystems) {
    EXPECT_THAT(parse("\xEF\xBB\xBFTavrin settings 1\r\n\r\n  # a comment\r\n"
                      "bloomIntensity=0.5\r\n\tcameraIso\t=\t200"),
                ElementsAre());
    EXPECT_TRUE(settings_.get(353) == Property(0.5f));
    EXPECT_TRUE(settings_.get(341) == Property(200.0f));
}

TEST_F(ConfTest, TellsOfEachLineItCannotUse) {
    EXPECT_THAT(
        parse("Tavrin settings 1\n"
              "bloomIntensity = much\n"
              "glareStreakCount = 100\n"
              "nothing = 1\n"
              "just words\n"
              "= 5\n"
              "cameraIso = 200\n"
              "cameraIso = 300\n"
              "bloomGlareEnabled =\n"
              "colorMap.enabled = true\n"),
        ElementsAre("Line 2: Property bloomIntensity is invalid. \"much\" is not a value of the "
                    "type Float.",
                    "Line 3: Property glareStreakCount is invalid. Value is expected to be between "
                    "1 and 16.",
                    "Line 4: There is no property \"nothing\".",
                    "Line 5: The text \"just words\" is not of the form NAME = VALUE.",
                    "Line 6: The text \"= 5\" is not of the form NAME = VALUE.",
                    "Line 8: \"cameraIso\" stands here again; its first value counts.",
                    "Line 9: Property bloomGlareEnabled is invalid. \"\" is not a value of the "
                    "type Bool."));
    EXPECT_EQ(settings_.values.size(), 1u);
    EXPECT_TRUE(settings_.get(341) == Property(200.0f));
}

TEST_F(ConfTest, PassesOverWhatTheFilterDoesNotAccept) {
    EXPECT_THAT(parse("Tavrin settings 1\nbloomIntensity = 1\nglareIntensity = wrong\n"
                      "colorMap.pipeline = wrong\n",
                      [](int) { return false; }),
                ElementsAre());
    EXPECT_TRUE(settings_.values.empty());
}

TEST_F(ConfTest, RefusesOtherFiles) {
    const struct {
        std::string text;
        const char* reason;
    } cases[] = {
        {"", "is not a settings file."},
        {"bloomIntensity = 1\n", "is not a settings file."},
        {"Tavrin settings\n", "is not a settings file."},
        {"Tavrin settings 0\n", "is not a settings file."},
        {std::string("\x7F"
                     "ELF\0\1\2",
                     7),
         "is not a settings file."},
        {"Tavrin settings 2\n", "was written by a newer version of the program."},
        {"Tavrin settings 1\n" + std::string(2 << 20, '#'), "is too long"},
    };
    for (const auto& [text, reason] : cases) {
        EXPECT_THAT(messageOf([&, &text = text] { parse(text); }),
                    AllOf(HasSubstr("\"" + file_.native().toUtf8() + "\" "), HasSubstr(reason)));
    }
    EXPECT_THAT(messageOf([&] { Conf::parse(folder_.path(), settings_, {}, all, {}); }),
                HasSubstr("it is a folder"));
    EXPECT_THAT(messageOf([&] { Conf::parse(folder_ / "none", settings_, {}, all, {}); }),
                HasSubstr("No such file"));
}

TEST_F(ConfTest, CarriesTheColourMapping) {
    colorkit::ColorMapping mapping;
    mapping.setEnabled(false);
    mapping.setPipeline(colorkit::createDefaultPipeline());
    saveConfigWithColorMapping(settings_, mapping, file_, all);
    MapSettings read;
    const auto loaded = loadConfigWithColorMapping(
        file_, read, all, [](const String& text) { FAIL() << text.toUtf8(); });
    EXPECT_EQ(loaded.isEnabled, false);
    ASSERT_TRUE(loaded.pipeline);
    EXPECT_TRUE(colorkit::arePipelinesSame(*loaded.pipeline, mapping.getPipeline()));
    EXPECT_EQ(read.values.size(), PropertyDescriptor::list().size());
}

TEST_F(ConfTest, ColourMappingThatIsWrongIsLeftOut) {
    std::vector<std::string> warnings;
    const auto loaded = loadConfigWithColorMapping(
        write("Tavrin settings 1\ncolorMap.pipeline = {\ncolorMap.enabled = 2\nother = 1\n"),
        settings_, all, [&](const String& warning) { warnings.push_back(warning.toUtf8()); });
    EXPECT_FALSE(loaded.pipeline);
    EXPECT_FALSE(loaded.isEnabled);
    EXPECT_THAT(warnings, ElementsAre(HasSubstr("Line 2: The tone mapping cannot be read"),
                                      HasSubstr("Line 3: \"2\" is not a value"),
                                      HasSubstr("Line 4: There is no property")));
}

}  // namespace
}  // namespace tavrin::postcore
