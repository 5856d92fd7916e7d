#include "foundation/Text.h"

#include <algorithm>

namespace tavrin {
inline namespace foundation {
namespace Str {
namespace {

/// Control characters of ASCII and Latin-1, separators of lines and paragraphs, and embeddings,
/// overrides and isolates of directions (Unicode Standard Annex 9).
bool isControl(char16_t unit) {
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0) || (unit >= 0x2028 && unit <= 0x202E) ||
           (unit >= 0x2066 && unit <= 0x2069);
}

/// The first characters that take at most so many bytes in UTF-8.
String cut(const String& text, std::size_t mostBytes) {
    const std::string utf8 = text.toUtf8();
    if (utf8.size() <= mostBytes) {
        return text;
    }
    std::size_t size = mostBytes;
    while (size > 0 && (utf8[size] & 0xC0) == 0x80) {
        --size;
    }
    return String::fromUtf8(std::string_view(utf8).substr(0, size));
}

/// The text with the 26 letters that start with `from` changed to those that start with `to`.
String changeLetters(const String& text, char16_t from, char16_t to) {
    constexpr int kLetters = 26;
    std::u16string changed(text.view());
    for (char16_t& unit : changed) {
        if (unit >= from && unit < from + kLetters) {
            unit = static_cast<char16_t>(unit - from + to);
        }
    }
    return changed;
}

}  // namespace

String escapeFilename(const String& text, std::size_t mostBytes) {
    static constexpr std::u16string_view kForbidden = u"<>:\"/\\|?*";
    std::u16string name(cut(text, mostBytes).view());
    for (char16_t& unit : name) {
        if (isControl(unit) || kForbidden.find(unit) != kForbidden.npos) {
            unit = u'_';
        }
    }
    if (name.empty()) {
        return "_";
    }
    for (auto last = name.rbegin(); last != name.rend() && (*last == u'.' || *last == u' ');
         ++last) {
        *last = u'_';
    }
    return name;
}

String escapeControls(const String& text) {
    std::u16string shown(text.view());
    std::ranges::replace_if(
        shown, [](char16_t unit) { return isControl(unit) && unit != u'\n'; }, u'?');
    return shown;
}

String escapeLine(const String& text) {
    return escapeControls(text).replaced("\n", "?");
}

String quote(const String& name) {
    constexpr std::size_t kMostShown = 40;
    const bool isLong = name.size() > kMostShown;
    return "\"" + name.substring(0, kMostShown) + (isLong ? u"\u2026\"" : u"\"");
}

String toLowerCase(const String& text) {
    return changeLetters(text, u'A', u'a');
}

String toUpperCase(const String& text) {
    return changeLetters(text, u'a', u'A');
}

}  // namespace Str
}  // namespace foundation
}  // namespace tavrin
