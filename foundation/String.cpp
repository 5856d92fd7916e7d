#include "foundation/String.h"

#include <utf8.h>

#include <algorithm>
#include <iterator>

namespace tavrin {
inline namespace foundation {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool isHighSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isLowSurrogate(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

bool isAscii(char16_t unit) {
    return unit < 0x80;
}

}  // namespace

String String::fromUtf8(std::string_view utf8) {
    // The long texts in files hardly ever have other characters, and most short ones have none.
    std::u16string ascii(utf8.begin(), utf8.end());
    if (std::ranges::all_of(ascii, isAscii)) {
        return ascii;
    }
    const std::string valid = utf8::replace_invalid(utf8, kReplacement);
    std::u16string text;
    text.reserve(valid.size());
    utf8::unchecked::utf8to16(valid.begin(), valid.end(), std::back_inserter(text));
    return text;
}

std::string String::toUtf8() const {
    if (std::ranges::all_of(text_, isAscii)) {
        return std::string(text_.begin(), text_.end());
    }
    std::string utf8;
    utf8.reserve(text_.size());
    for (std::size_t i = 0; i < text_.size(); ++i) {
        char32_t codePoint = text_[i];
        if (isHighSurrogate(text_[i]) && i + 1 < text_.size() && isLowSurrogate(text_[i + 1])) {
            codePoint = 0x10000 + ((codePoint - 0xD800) << 10) + (text_[i + 1] - 0xDC00u);
            ++i;
        } else if (isHighSurrogate(text_[i]) || isLowSurrogate(text_[i])) {
            codePoint = kReplacement;
        }
        utf8::unchecked::append(codePoint, std::back_inserter(utf8));
    }
    return utf8;
}

String String::replaced(const String& part, const String& replacement) const {
    if (part.isEmpty()) {
        return *this;
    }
    std::u16string result;
    std::size_t start = 0;
    for (std::size_t hit = find(part); hit != kNotFound; hit = find(part, start)) {
        result.append(text_, start, hit - start);
        result += replacement.text_;
        start = hit + part.size();
    }
    result.append(text_, start);
    return result;
}

String String::trimmed() const {
    std::size_t first = 0;
    std::size_t last = text_.size();
    while (first < last && isWhiteSpace(text_[first])) {
        ++first;
    }
    while (last > first && isWhiteSpace(text_[last - 1])) {
        --last;
    }
    return substring(first, last - first);
}

}  // namespace foundation
}  // namespace tavrin
