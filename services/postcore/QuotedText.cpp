#include "services/postcore/QuotedText.h"

#include <string>

namespace tavrin::postcore {
namespace {

constexpr std::u16string_view kHexDigits = u"0123456789abcdef";

bool isLeadingSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

bool isTrailingSurrogate(char16_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

/// Whether text[i] is half of a character whose other half is missing.
bool isLoneSurrogate(std::u16string_view text, std::size_t i) {
    if (isLeadingSurrogate(text[i])) {
        return i + 1 == text.size() || !isTrailingSurrogate(text[i + 1]);
    }
    return isTrailingSurrogate(text[i]) && (i == 0 || !isLeadingSurrogate(text[i - 1]));
}

void appendEscaped(std::u16string& quoted, char16_t unit) {
    quoted += u"\\u";
    for (int shift = 12; shift >= 0; shift -= 4) {
        quoted += kHexDigits[(unit >> shift) & 0xF];
    }
}

/// Takes four hexadecimal digits.
Optional<char16_t> takeCode(std::u16string_view& rest) {
    constexpr std::size_t kDigits = 4;
    if (rest.size() < kDigits) {
        return {};
    }
    unsigned code = 0;
    for (const char16_t digit : rest.substr(0, kDigits)) {
        const bool isUpper = digit >= u'A' && digit <= u'F';
        const std::size_t value = kHexDigits.find(isUpper ? char16_t(digit - u'A' + u'a') : digit);
        if (value == kHexDigits.npos) {
            return {};
        }
        code = code * 16 + static_cast<unsigned>(value);
    }
    rest.remove_prefix(kDigits);
    return static_cast<char16_t>(code);
}

/// Takes what follows a backslash.
Optional<char16_t> takeEscaped(std::u16string_view& rest) {
    if (rest.empty()) {
        return {};
    }
    const char16_t unit = rest.front();
    rest.remove_prefix(1);
    switch (unit) {
        case u'n':
            return u'\n';
        case u'r':
            return u'\r';
        case u'u':
            return takeCode(rest);
        case u'"':
        case u'\\':
            return unit;
        default:
            return {};
    }
}

}  // namespace

String getQuotedText(const String& text) {
    std::u16string quoted = u"\"";
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        if (unit == u'"' || unit == u'\\') {
            quoted += u'\\';
            quoted += unit;
        } else if (unit == u'\n') {
            quoted += u"\\n";
        } else if (unit == u'\r') {
            quoted += u"\\r";
        } else if (unit < 0x20 || unit == 0x7F || isLoneSurrogate(text.view(), i)) {
            appendEscaped(quoted, unit);
        } else {
            quoted += unit;
        }
    }
    quoted += u'"';
    return quoted;
}

Optional<String> takeQuotedText(std::u16string_view& rest) {
    if (!rest.starts_with(u'"')) {
        return {};
    }
    rest.remove_prefix(1);
    std::u16string text;
    while (!rest.empty()) {
        const char16_t unit = rest.front();
        rest.remove_prefix(1);
        if (unit == u'"') {
            return String(std::move(text));
        }
        if (unit != u'\\') {
            text += unit;
        } else if (const auto escaped = takeEscaped(rest)) {
            text += *escaped;
        } else {
            return {};
        }
    }
    return {};
}

}  // namespace tavrin::postcore
