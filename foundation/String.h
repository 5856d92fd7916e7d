#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace tavrin {
inline namespace foundation {

/// Space, tab and the line ends of ASCII.
constexpr bool isWhiteSpace(char16_t unit) {
    return unit == u' ' || (unit >= u'\t' && unit <= u'\r');
}

/// Text as UTF-16 code units: the text type of the whole system. Equality and order are ordinal on
/// code units (on a common prefix the shorter string comes first). Any sequence of code units is
/// allowed, lone surrogates too; the conversions to and from UTF-8 replace what the other form
/// cannot hold by U+FFFD and never fail. A plain value: safe to read from several threads.
class String {
public:
    static constexpr std::size_t kNotFound = std::u16string::npos;

    String() = default;
    /// From UTF-8 text ending in NUL; meant for literals.
    String(const char* utf8) : String(fromUtf8(utf8)) {}
    String(const char16_t* text) : text_(text) {}
    String(std::u16string text) : text_(std::move(text)) {}
    String(std::u16string_view text) : text_(text) {}

    /// Decodes UTF-8; each malformed sequence becomes one U+FFFD.
    static String fromUtf8(std::string_view utf8);
    /// Encodes as UTF-8; each lone surrogate becomes U+FFFD.
    std::string toUtf8() const;

    bool isEmpty() const { return text_.empty(); }
    std::size_t size() const { return text_.size(); }
    char16_t operator[](std::size_t index) const { return text_[index]; }
    std::u16string_view view() const { return text_; }

    bool startsWith(const String& prefix) const { return text_.starts_with(prefix.text_); }
    bool endsWith(const String& suffix) const { return text_.ends_with(suffix.text_); }
    bool contains(const String& part) const { return find(part) != kNotFound; }
    /// Index of the first occurrence at or after `from`, or kNotFound.
    std::size_t find(const String& part, std::size_t from = 0) const {
        return text_.find(part.text_, from);
    }
    /// Index of the last occurrence, or kNotFound.
    std::size_t findLast(const String& part) const { return text_.rfind(part.text_); }
    /// `count` code units from `start` (clipped to the end; `start` must not be past it).
    String substring(std::size_t start, std::size_t count = kNotFound) const {
        return text_.substr(start, count);
    }
    /// Every occurrence of `part` replaced, from left to right, without overlap; an empty `part`
    /// occurs nowhere.
    String replaced(const String& part, const String& replacement) const;
    /// Without white space at both ends.
    String trimmed() const;

    String& operator+=(const String& other) {
        text_ += other.text_;
        return *this;
    }
    friend String operator+(String left, const String& right) { return left += right; }
    friend bool operator==(const String&, const String&) = default;
    friend std::strong_ordering operator<=>(const String& left, const String& right) {
        return left.text_.compare(right.text_) <=> 0;
    }

private:
    std::u16string text_;
};

}  // namespace foundation
}  // namespace tavrin

template <>
struct std::hash<tavrin::String> {
    std::size_t operator()(const tavrin::String& text) const noexcept {
        return std::hash<std::u16string_view>{}(text.view());
    }
};
