#include "samples/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace tavrin::samples {
namespace {

using testing::HasSubstr;
using testing::Not;

Optional<CommandLine> parse(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "tavrin-sample");
    return parseCommandLine(int(arguments.size()), arguments.data());
}

TEST(CommandLine, ReadsEveryOption) {
    const auto line = parse({"-o", "a.txr", "--size", "1920x1080", "--samples", "10", "--seed",
                             "77", "--part", "2/3", "--threads", "4", "--timing", "--quiet"});
    ASSERT_TRUE(line);
    EXPECT_EQ(line->output.native(), "a.txr");
    EXPECT_EQ(line->size, (Pixel{1920, 1080}));
    EXPECT_EQ(line->seed, 77u);
    EXPECT_EQ(line->threads, 4);
    EXPECT_TRUE(line->timing && line->quiet);
    EXPECT_EQ(line->firstSample(), 3);
    EXPECT_EQ(line->lastSample(), 6);
}

TEST(CommandLine, PartsHaveEverySampleOnce) {
    CommandLine line;
    for (line.samples = 14; line.samples < 40; ++line.samples) {
        line.parts = 7;
        int next = 0;
        for (line.part = 1; line.part <= line.parts; ++line.part) {
            EXPECT_EQ(line.firstSample(), next);
            next = line.lastSample();
            EXPECT_GE(next - line.firstSample(), 2);
        }
        EXPECT_EQ(next, line.samples);
    }
}

TEST(CommandLine, RefusesWhatCannotBeDone) {
    const std::vector<std::vector<const char*>> wrong = {
        {},
        {"-o", ""},
        {"-o", "a.png"},
        {"-o", "a.txr", "--size", "640"},
        {"-o", "a.txr", "--size", "640x"},
        {"-o", "a.txr", "--size", "x360"},
        {"-o", "a.txr", "--size", "640x360x2"},
        {"-o", "a.txr", "--size", "0x360"},
        {"-o", "a.txr", "--size", "-4x360"},
        {"-o", "a.txr", "--size", "16385x1"},
        {"-o", "a.txr", "--size", "16384x16384"},
        {"-o", "a.txr", "--size", "99999999999x1"},
        {"-o", "a.txr", "--samples", "1"},
        {"-o", "a.txr", "--samples", "9999999"},
        {"-o", "a.txr", "--samples", "many"},
        {"-o", "a.txr", "--seed", "-1"},
        {"-o", "a.txr", "--seed", "1.5"},
        {"-o", "a.txr", "--part", "0/2"},
        {"-o", "a.txr", "--part", "3/2"},
        {"-o", "a.txr", "--part", "1"},
        {"-o", "a.txr", "--part", "1/3", "--samples", "5"},
        {"-o", "a.txr", "--threads", "0"},
        {"-o", "a.txr", "--unknown"},
        {"-o", "a.txr", "surplus"},
    };
    for (const auto& arguments : wrong) {
        std::string text;
        for (const char* argument : arguments) {
            text += std::string(" ") + argument;
        }
        try {
            parse(arguments);
            ADD_FAILURE() << text;
        } catch (const UsageError& error) {
            EXPECT_TRUE(error.message().endsWith(".")) << text << ": " << error.what();
        }
    }
}

TEST(CommandLine, HelpIsOurs) {
    testing::internal::CaptureStdout();
    EXPECT_FALSE(parse({"--help"}));
    const std::string help = testing::internal::GetCapturedStdout();
    for (const char* own :
         {"\n  --samples N  ", "  Print the version\n", "\n  2  the command line"}) {
        EXPECT_THAT(help, HasSubstr(own));
    }
    for (const char* parsers : {":INT", "in [", "Display program", "[24]"}) {
        EXPECT_THAT(help, Not(HasSubstr(parsers)));
    }
}

}  // namespace
}  // namespace tavrin::samples
