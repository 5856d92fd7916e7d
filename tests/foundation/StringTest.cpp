#include "foundation/String.h"
#include "tests/support/ArbitraryText.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

namespace tavrin {
namespace {

using tests::codeUnits;
using tests::toText;

/// What UTF-8 can hold of a text: lone surrogates have become U+FFFD.
std::u16string withoutLoneSurrogates(const String& text) {
    const auto isHigh = [](char16_t unit) { return (unit & 0xFC00) == 0xD800; };
    const auto isLow = [](char16_t unit) { return (unit & 0xFC00) == 0xDC00; };
    std::u16string result(text.view());
    for (std::size_t i = 0; i < result.size(); ++i) {
        if (isHigh(result[i]) && i + 1 < result.size() && isLow(result[i + 1])) {
            ++i;
        } else if (isHigh(result[i]) || isLow(result[i])) {
            result[i] = u'\uFFFD';
        }
    }
    return result;
}

RC_GTEST_PROP(String, Utf8KeepsAllButLoneSurrogates, ()) {
    const String text = toText(*codeUnits());
    RC_ASSERT(String::fromUtf8(text.toUtf8()).view() == withoutLoneSurrogates(text));
}

RC_GTEST_PROP(String, AnyBytesDecodeToTextThatUtf8Holds, (const std::string& bytes)) {
    const String text = String::fromUtf8(bytes);
    RC_ASSERT(text.view() == withoutLoneSurrogates(text));
    RC_ASSERT(String::fromUtf8(text.toUtf8()) == text);
}

TEST(String, Utf8OfEachLength) {
    const struct {
        std::u16string text;
        std::string utf8;
    } cases[] = {
        {u"\u007F\u0080\u07FF", "\x7F\xC2\x80\xDF\xBF"},
        {u"\u0800\uFFFD\uFFFE\uFFFF", "\xE0\xA0\x80\xEF\xBF\xBD\xEF\xBF\xBE\xEF\xBF\xBF"},
        {u"\U00010000\U0010FFFF", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"},
        {std::u16string(u"a\0b", 3), std::string("a\0b", 3)},
    };
    for (const auto& [text, utf8] : cases) {
        EXPECT_EQ(String(text).toUtf8(), utf8);
        EXPECT_EQ(String::fromUtf8(utf8).view(), text);
    }
}

TEST(String, MalformedUtf8BecomesOneReplacementEach) {
    const struct {
        const char* name;
        std::string utf8;
        std::u16string text;
    } cases[] = {
        {"stray trail byte", "a\x80z", u"a\uFFFDz"},
        {"bytes that never occur", "\xFE\xFF", u"\uFFFD\uFFFD"},
        {"truncated by the end", "a\xE2\x82", u"a\uFFFD"},
        {"truncated by a letter", "\xE2\x82z", u"\uFFFDz"},
        {"truncated by a lead byte", "\xF0\x9F\xC3\xA9", u"\uFFFD\u00E9"},
        {"overlong, three bytes", "\xE0\x80\xAFz", u"\uFFFDz"},
        {"overlong, four bytes", "\xF0\x80\x80\xAFz", u"\uFFFDz"},
        {"high surrogate", "\xED\xA0\x80z", u"\uFFFDz"},
        {"surrogate pair", "\xED\xA0\xBD\xED\xB8\x80z", u"\uFFFD\uFFFDz"},
        {"past the last code point", "\xF4\x90\x80\x80z", u"\uFFFDz"},
        {"five bytes", "\xF8z", u"\uFFFDz"},
    };
    for (const auto& [name, utf8, text] : cases) {
        EXPECT_EQ(String::fromUtf8(utf8).view(), text) << name;
    }
}

RC_GTEST_PROP(String, OrderIsThatOfCodeUnits, ()) {
    const auto left = *codeUnits();
    const auto right = *codeUnits();
    const auto expected = std::lexicographical_compare_three_way(left.begin(), left.end(),
                                                                 right.begin(), right.end());
    RC_ASSERT((toText(left) <=> toText(right)) == expected);
    RC_ASSERT((toText(left) == toText(right)) == (left == right));
}

TEST(String, ReplacedAndTrimmed) {
    EXPECT_EQ(String("aaaaa").replaced("aa", "b"), "bba");
    EXPECT_EQ(String("a.b.").replaced(".", ".."), "a..b..");
    EXPECT_EQ(String("abc").replaced("", "x"), "abc");
    EXPECT_EQ(String(" \t\r\n a b\v\f ").trimmed(), "a b");
    EXPECT_EQ(String(" \n ").trimmed(), "");
}

}  // namespace
}  // namespace tavrin
