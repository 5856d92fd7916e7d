#include "foundation/StringArray.h"
#include "foundation/Text.h"
#include "tests/support/ArbitraryText.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace tavrin {
namespace {

using tests::codeUnits;
using tests::toText;

RC_GTEST_PROP(ExportStringArray, IsReadBackItemForItem, ()) {
    std::vector<String> items;
    for (const auto& units :
         *rc::gen::container<std::vector<std::vector<std::uint16_t>>>(codeUnits())) {
        items.push_back(toText(units));
    }
    const auto parsed = Str::parseExportStringArray(Str::getExportStringArray(items));
    RC_ASSERT(parsed.has_value());
    RC_ASSERT(*parsed == items);
}

TEST(ExportStringArray, WriterQuotesEveryItem) {
    EXPECT_EQ(Str::getExportStringArray({"a b", R"(say "C:\")"}), R"("a b","say \"C:\\\"")");
}

TEST(ExportStringArray, ReaderAcceptsWhatOthersWrite) {
    const struct {
        const char* name;
        String text;
        std::vector<String> items;
    } cases[] = {
        {"nothing", "", {}},
        {"white space around", " \"a\" ,\n\"b\"\t", {"a", "b"}},
        {"unquoted", "key value", {"key"}},
        {"unquoted up to white space, commas and quotes too", "a,\"b\" , c", {"a,\"b\"", "c"}},
        {"text right after the quote", "\"a\"b,\"c\"", {"a"}},
        {"an unterminated item after the list", "\"a\" \"b", {"a"}},
        {"backslash before any character", R"("\a\\\"\,")", {R"(a\",)"}},
        {"backslash outside quotes", R"(\")", {R"(\")"}},
    };
    for (const auto& [name, text, items] : cases) {
        const auto parsed = Str::parseExportStringArray(text);
        ASSERT_TRUE(parsed.has_value()) << name;
        EXPECT_EQ(*parsed, items) << name;
    }
}

TEST(ExportStringArray, UnterminatedItemIsAFailure) {
    for (const char* text : {"\"", "\"a", "\"a\\", "\"a\\\"", "\"a\",\"b", "x \t,\""}) {
        const auto parsed = Str::parseExportStringArray(text);
        ASSERT_FALSE(parsed.has_value()) << text;
        EXPECT_EQ(parsed.error(), "Incorrectly escaped string") << text;
    }
}

TEST(EscapeFilename, ReplacesWhatSomeSystemForbids) {
    EXPECT_EQ(Str::escapeFilename("../a\\b:c*?\"<>|"), ".._a_b_c______");
    EXPECT_EQ(Str::escapeFilename(String(std::u16string(u"a\0\n\u007F\u00E9", 5))), u"a___\u00E9");
    EXPECT_EQ(Str::escapeFilename(""), "_");
    EXPECT_EQ(Str::escapeFilename(".."), "__");
    EXPECT_EQ(Str::escapeFilename("render. ."), "render___");
    EXPECT_EQ(Str::escapeFilename("abc", 3), "abc");
    EXPECT_EQ(Str::escapeFilename("ab. c", 3), "ab_");
    EXPECT_EQ(Str::escapeFilename(u"a\u00E9\U00010000", 6), u"a\u00E9") << "whole characters";
}

TEST(EscapeLine, LeavesNothingThatCommandsATerminal) {
    const String text = u"a\nb\x1B[2J\u009B\u202E\u2066\u2028 \u00E9";
    EXPECT_EQ(Str::escapeControls(text), u"a\nb?[2J???? \u00E9");
    EXPECT_EQ(Str::escapeLine(text), u"a?b?[2J???? \u00E9");
}

}  // namespace
}  // namespace tavrin
