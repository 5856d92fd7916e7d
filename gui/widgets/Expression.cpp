#include "gui/widgets/Expression.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>

namespace tavrin::widgets {
namespace {

// Deeper text is not typed by people, and would use up the stack.
constexpr int kDeepest = 100;

/// Reads from left to right; what cannot be read gives NaN, which no calculation undoes.
class Parser {
public:
    explicit Parser(std::string_view text) : rest_(text) {}

    double parse() {
        const double value = parseSum();
        skipSpace();
        return rest_.empty() ? value : kUnreadable;
    }

private:
    static constexpr double kUnreadable = std::numeric_limits<double>::quiet_NaN();

    double parseSum() {
        double value = parseProduct();
        for (;;) {
            if (take('+')) {
                value += parseProduct();
            } else if (take('-')) {
                value -= parseProduct();
            } else {
                return value;
            }
        }
    }

    double parseProduct() {
        double value = parseFactor();
        for (;;) {
            if (take('*')) {
                value *= parseFactor();
            } else if (take('/')) {
                value /= parseFactor();
            } else {
                return value;
            }
        }
    }

    double parseFactor() {
        if (++depth_ > kDeepest) {
            return kUnreadable;
        }
        double value = kUnreadable;
        if (take('-')) {
            value = -parseFactor();
        } else if (take('+')) {
            value = parseFactor();
        } else if (take('(')) {
            value = parseSum();
            value = take(')') ? value : kUnreadable;
        } else {
            value = parseNumber();
        }
        --depth_;
        return value;
    }

    double parseNumber() {
        // std::from_chars would also read "inf" and "nan".
        if (rest_.empty() || !((rest_[0] >= '0' && rest_[0] <= '9') || rest_[0] == '.')) {
            return kUnreadable;
        }
        double value = 0.0;
        const auto read = std::from_chars(rest_.data(), rest_.data() + rest_.size(), value);
        if (read.ec != std::errc()) {
            return kUnreadable;
        }
        rest_.remove_prefix(static_cast<std::size_t>(read.ptr - rest_.data()));
        return value;
    }

    bool take(char sign) {
        skipSpace();
        const bool isThere = !rest_.empty() && rest_[0] == sign;
        if (isThere) {
            rest_.remove_prefix(1);
        }
        skipSpace();
        return isThere;
    }

    void skipSpace() {
        while (!rest_.empty() && isWhiteSpace(static_cast<unsigned char>(rest_[0]))) {
            rest_.remove_prefix(1);
        }
    }

    std::string_view rest_;
    int depth_ = 0;
};

}  // namespace

Optional<double> evaluateExpression(const String& text) {
    const std::string ascii = text.replaced(",", ".").toUtf8();
    const double value = Parser(ascii).parse();
    return std::isfinite(value) ? Optional<double>(value) : std::nullopt;
}

}  // namespace tavrin::widgets
