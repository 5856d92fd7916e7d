#include "services/colorkit/Pipeline.h"
#include "services/colorkit/PipelineText.h"
#include "tests/services/colorkit/MappingFixtures.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>

namespace tavrin::colorkit::test {
namespace {

RC_GTEST_PROP(PipelineText, TextReadsBackAsTheSamePipeline, ()) {
    const auto pipeline = makePipeline(arbitraryOperators());
    String error = "not cleared";
    const auto back = deserializePipelineFromString(serializePipelineToString(pipeline), error);
    RC_ASSERT(error.isEmpty());
    RC_ASSERT(arePipelinesSame(pipeline, back));
}

TEST(PipelineText, IsShortAndReadable) {
    EXPECT_EQ(serializePipelineToString(makePipeline({exposure(0.1f)})).toUtf8(),
              R"({"version":1,"operators":[{"type":"Exposure","enabled":true,"stops":0.1}]})");
}

TEST(PipelineText, ParametersThatAreLeftOutHaveTheirDefaults) {
    String error;
    const auto pipeline =
        deserializePipelineFromString(R"({"version":1,"operators":[{"type":"Exposure"}]})", error);
    EXPECT_TRUE(arePipelinesSame(pipeline, makePipeline({exposure(0.0f)}))) << error.toUtf8();
}

std::string withOperators(const std::string& operators) {
    return R"({"version":1,"operators":[)" + operators + "]}";
}

TEST(PipelineText, UnusableTextsAreRefusedWithASentence) {
    const std::string exposure = R"({"type":"Exposure","enabled":true,"stops":0})";
    std::string many = exposure;
    for (int i = 0; i < 64; ++i) {
        many += "," + exposure;
    }
    const std::string stopsMust =
        R"(The value "stops" of the tone mapping's operator "Exposure" must be a number from -10 to 10.)";
    const std::string noOperators = "The tone mapping has no list of operators.";
    const std::string noType = "The tone mapping has an operator without a type.";
    const auto exposureWith = [](const std::string& stops) {
        return withOperators(R"({"type":"Exposure","enabled":true,"stops":)" + stops + "}");
    };
    const std::pair<std::string, std::string> table[] = {
        {"", "The tone mapping cannot be read: The text is not valid JSON at byte 1."},
        {std::string(200000, ' '), "The tone mapping has more than 131072 characters."},
        {"[]", "The tone mapping has no version."},
        {R"({"version":2,"operators":[]})",
         "The tone mapping was written by a newer version of the program."},
        {R"({"version":0,"operators":[]})", "The tone mapping has an unknown version."},
        {R"({"version":1})", noOperators},
        {R"({"version":1,"operators":{}})", noOperators},
        {withOperators(many), "The tone mapping has 65 operators; at most 64 are possible."},
        {withOperators(R"({"enabled":true})"), noType},
        {withOperators(R"({"type":7})"), noType},
        {withOperators(R"({"type":"Sepia","enabled":true})"),
         R"(The tone mapping has the unknown operator "Sepia".)"},
        {withOperators(R"({"type":")" + std::string(5000, 'x') + R"("})"),
         "The tone mapping has the unknown operator \"" + std::string(40, 'x') + "\u2026\"."},
        {withOperators(R"({"type":"Exposure","enabled":1,"stops":0})"),
         R"(The value "enabled" of the tone mapping's operator "Exposure" must be true or false.)"},
        {exposureWith("\"0\""), stopsMust},
        {exposureWith("null"), stopsMust},
        {exposureWith("10.001"), stopsMust},
        {exposureWith("-1e300"), stopsMust},
        {exposureWith("0,\"ev\":1"),
         R"(The value "ev" of the tone mapping's operator "Exposure" is unknown.)"},
        {withOperators(
             R"({"type":"WhiteBalance","enabled":true,"temperature":6500,"tint":0,"method":"von Kries"})"),
         R"(The value "method" of the tone mapping's operator "WhiteBalance" must be "bradford" or "cat16".)"},
    };
    for (const auto& [text, sentence] : table) {
        String error;
        EXPECT_TRUE(deserializePipelineFromString(String::fromUtf8(text), error).isEmpty());
        EXPECT_EQ(error.toUtf8(), sentence) << text.substr(0, 200);
    }
}

}  // namespace
}  // namespace tavrin::colorkit::test
