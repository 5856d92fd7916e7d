#include "gui/sheet/editors/NumberScale.h"

#include "foundation/Color.h"
#include "foundation/data/UiAttributes.h"
#include "gui/sheet/SkinColors.h"
#include "gui/widgets/Expression.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tavrin::sheet {
namespace {

constexpr double kWidestSlider = 1e5;

double getDefault(const PropertyDefinition& property, int component) {
    const Value value = property.makeDefault();
    if (const float* number = value.get<float>()) {
        return *number;
    }
    if (const int* number = value.get<int>()) {
        return *number;
    }
    if (const CompressedRgb* color = value.get<CompressedRgb>()) {
        return std::array{color->r, color->g, color->b}[static_cast<std::size_t>(component)];
    }
    return 0.0;
}

/// The next of 1, 2, 5, 10, 20 ... that is not smaller.
double getNiceAbove(double number) {
    const double power = std::pow(10.0, std::floor(std::log10(number)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (factor * power >= number * 0.9999) {
            return factor * power;
        }
    }
    return 10.0 * power;
}

/// A slider over a range of which nearly all is far above what is usual could not be set finely.
void setSlider(NumberScale& scale, bool isDemanded) {
    constexpr double kUsual = 4.0;  // times the default
    scale.softMinimum = scale.minimum;
    scale.softMaximum = scale.maximum;
    const bool isWide = scale.minimum >= 0.0 && scale.defaultValue > 0.0 &&
                        scale.maximum > 2.5 * kUsual * scale.defaultValue;
    if (isWide && !isDemanded) {
        scale.softMaximum = std::min(scale.maximum, getNiceAbove(kUsual * scale.defaultValue));
    }
    scale.hasSlider = isDemanded || scale.softMaximum - scale.softMinimum <= kWidestSlider;
}

int getDecimals(double span) {
    return span > 1000.0 ? 0 : span > 100.0 ? 1 : span > 15.0 ? 2 : 3;
}

}  // namespace

double NumberScale::getStep() const {
    if (isInteger) {
        return 1.0;
    }
    const double span = hasSlider ? softMaximum - softMinimum : 10.0;
    return getNiceAbove(span / 200.0);
}

double NumberScale::limit(double number) const {
    const double inside = std::clamp(number, minimum, maximum);
    return isInteger ? std::round(inside) : inside;
}

double NumberScale::round(double number) const {
    const double scale = std::pow(10.0, decimals);
    return limit(std::round(number * scale) / scale);
}

QString NumberScale::toText(double number) const {
    constexpr int kMostDecimals = 6;
    // As many decimals as it takes to tell it from its neighbours, within reason.
    for (int digits = decimals; digits < kMostDecimals; ++digits) {
        const QString text = QString::number(number, 'f', digits);
        if (std::abs(text.toDouble() - number) <= 1e-4 * std::abs(number)) {
            return text;
        }
    }
    return number == 0.0 ? QString::number(0.0, 'f', decimals) : QString::number(number, 'g', 5);
}

Optional<double> NumberScale::parse(const QString& text) const {
    return widgets::evaluateExpression(fromQt(text));
}

NumberScale makeNumberScale(const PropertyDefinition& property, int component) {
    NumberScale scale;
    scale.isInteger = property.makeDefault().get<int>() != nullptr;
    const double widest = scale.isInteger ? std::numeric_limits<int>::max() : 1e9;
    const auto& limit = property.getLimit();
    const NumberRange range = limit && limit->range ? *limit->range : NumberRange{-widest, widest};
    scale.minimum = range.minimum;
    scale.maximum = range.maximum;
    scale.defaultValue = getDefault(property, component);
    const int* flags = property.getAttributes().get<int>(UiAttributes::kFlags);
    setSlider(scale, flags != nullptr && (*flags & 1) != 0);
    scale.decimals = scale.isInteger   ? 0
                     : scale.hasSlider ? getDecimals(scale.softMaximum - scale.softMinimum)
                                       : 3;
    return scale;
}

}  // namespace tavrin::sheet
