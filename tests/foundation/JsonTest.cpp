#include "foundation/Json.h"
#include "tests/support/ArbitraryText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace tavrin {
namespace {

using testing::HasSubstr;
using tests::codeUnits;
using tests::toText;

std::string nested(int levels, const std::string& innermost) {
    return std::string(std::size_t(levels), '[') + innermost +
           std::string(std::size_t(levels), ']');
}

TEST(Json, KeepsTheOrderOfMembers) {
    const auto json = parseJson(R"({"z": [1, -2.5], "a": {"k": null, "b": true}})");
    ASSERT_TRUE(json.has_value());
    EXPECT_EQ(dumpJson(*json), R"({"z":[1,-2.5],"a":{"k":null,"b":true}})");
}

TEST(Json, NestingIsLimited) {
    for (const char* innermost : {"", "1", "{}"}) {
        const int levels = innermost == std::string("{}") ? 63 : 64;
        EXPECT_TRUE(parseJson(String::fromUtf8(nested(levels, innermost))).has_value());
        const auto tooDeep = parseJson(String::fromUtf8(nested(levels + 1, innermost)));
        ASSERT_FALSE(tooDeep.has_value()) << innermost;
        EXPECT_EQ(tooDeep.error(), "The text is nested too deeply.");
    }
    // Deep enough to exhaust the stack of a recursive parser.
    EXPECT_FALSE(parseJson(String::fromUtf8(nested(1'000'000, ""))).has_value());
    EXPECT_FALSE(parseJson(String::fromUtf8(std::string(1'000'000, '['))).has_value());
}

TEST(Json, BadTextIsAFailureThatSaysWhere) {
    const struct {
        String text;
        const char* reason;
    } cases[] = {
        {"", "at byte 1"},         {"[1, 2", "at byte 6"},      {"{\"a\" 1}", "at byte 6"},
        {"[1] 2", "at byte 5"},    {"[NaN]", "at byte 2"},      {"'a'", "at byte 1"},
        {"[01]", "at byte 3"},     {"\"\\uD800\"", "at byte"},  {"[1e999]", "out of range"},
        {"\"line\nend\"", "byte"}, {"// note\n1", "at byte 1"},
    };
    for (const auto& [text, reason] : cases) {
        const auto json = parseJson(text);
        ASSERT_FALSE(json.has_value()) << text.toUtf8();
        EXPECT_THAT(json.error().toUtf8(), HasSubstr(reason)) << text.toUtf8();
    }
}

RC_GTEST_PROP(Json, TextsAreReadBack, ()) {
    // Through UTF-8 once, as JSON holds no lone surrogates.
    const String text = String::fromUtf8(toText(*codeUnits()).toUtf8());
    const auto json = parseJson(dumpJson(toJson(text)));
    RC_ASSERT(json.has_value());
    RC_ASSERT(toString(*json) == text);
}

}  // namespace
}  // namespace tavrin
