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

String nested(std::size_t levels, const std::string& innermost) {
    return String::fromUtf8(std::string(levels, '[') + innermost + std::string(levels, ']'));
}

TEST(Json, KeepsTheOrderOfMembers) {
    const auto json = parseJson(R"({"z": [1, -2.5], "a": {"k": null, "b": true}})");
    ASSERT_TRUE(json.has_value());
    EXPECT_EQ(dumpJson(*json), R"({"z":[1,-2.5],"a":{"k":null,"b":true}})");
}

TEST(Json, NestingIsLimited) {
    for (const auto& [levels, innermost] : {std::pair{64u, ""}, {64u, "1"}, {63u, "{\"a\": 1}"}}) {
        EXPECT_TRUE(parseJson(nested(levels, innermost)).has_value());
        const auto tooDeep = parseJson(nested(levels + 1, innermost));
        ASSERT_FALSE(tooDeep.has_value()) << innermost;
        EXPECT_EQ(tooDeep.error(), "The text is nested too deeply.");
    }
    // Deep enough to exhaust the stack of a recursive parser.
    EXPECT_FALSE(parseJson(nested(1'000'000, "")).has_value());
}

TEST(Json, BadTextIsAFailureThatSaysWhere) {
    const struct {
        String text;
        const char* reason;
    } cases[] = {
        {"", "at byte 1"},
        {"[1, 2", "at byte 6"},
        {"{\"a\" 1}", "at byte 6"},
        {"[1] 2", "at byte 5"},
        {"[NaN]", "at byte 2"},
        {"'a'", "at byte 1"},
        {"[01]", "at byte 3"},
        {"\"\\uD800\"", "at byte"},
        {"[1e999]", "out of range"},
        {"\"line\nend\"", "byte"},
        {"// note\n1", "at byte 1"},
        {R"([{"a": 1}, {"b": {"a": 2, "\u0061": 3}, "a": 4}])", "two members \"a\"."},
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
