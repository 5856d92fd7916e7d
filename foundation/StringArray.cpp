#include "foundation/StringArray.h"

#include <string>

namespace tavrin {
inline namespace foundation {
namespace Str {
namespace {

/// Walks once over the text.
class ExportReader {
public:
    explicit ExportReader(std::u16string_view text) : text_(text) {}

    Result<std::vector<String>> read() {
        std::vector<String> items;
        skipWhiteSpace();
        while (!isAtEnd()) {
            std::u16string item;
            if (text_[position_] == u'"') {
                if (!readQuoted(item)) {
                    return Failure("Incorrectly escaped string");
                }
            } else {
                readUnquoted(item);
            }
            items.emplace_back(std::move(item));
            skipWhiteSpace();
            if (isAtEnd() || text_[position_] != u',') {
                break;
            }
            ++position_;
            skipWhiteSpace();
        }
        return items;
    }

private:
    bool isAtEnd() const { return position_ == text_.size(); }

    void skipWhiteSpace() {
        while (!isAtEnd() && isWhiteSpace(text_[position_])) {
            ++position_;
        }
    }

    /// False when the text ends before the closing quote.
    bool readQuoted(std::u16string& item) {
        ++position_;
        while (!isAtEnd() && text_[position_] != u'"') {
            if (text_[position_] == u'\\') {
                ++position_;
                if (isAtEnd()) {
                    return false;
                }
            }
            item += text_[position_++];
        }
        if (isAtEnd()) {
            return false;
        }
        ++position_;
        return true;
    }

    void readUnquoted(std::u16string& item) {
        while (!isAtEnd() && !isWhiteSpace(text_[position_])) {
            item += text_[position_++];
        }
    }

    std::u16string_view text_;
    std::size_t position_ = 0;
};

}  // namespace

String getExportStringArray(const std::vector<String>& items) {
    std::u16string text;
    for (const String& item : items) {
        if (!text.empty()) {
            text += u',';
        }
        text += u'"';
        for (const char16_t unit : item.view()) {
            if (unit == u'"' || unit == u'\\') {
                text += u'\\';
            }
            text += unit;
        }
        text += u'"';
    }
    return text;
}

Result<std::vector<String>> parseExportStringArray(const String& text) {
    return ExportReader(text.view()).read();
}

}  // namespace Str
}  // namespace foundation
}  // namespace tavrin
