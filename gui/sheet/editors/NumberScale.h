#pragma once

#include "foundation/Optional.h"
#include "foundation/data/PropertyDefinition.h"

#include <QString>

namespace tavrin::sheet {

/// How a number is shown and changed.
struct NumberScale {
    double minimum = 0.0;  ///< numbers beyond are not accepted
    double maximum = 0.0;
    double softMinimum = 0.0;  ///< the ends of a slider
    double softMaximum = 0.0;
    double defaultValue = 0.0;
    int decimals = 0;  ///< the least that are shown
    bool hasSlider = false;
    bool isInteger = false;

    /// What an arrow key changes.
    double getStep() const;
    double limit(double number) const;
    /// On the grid of the decimals, for numbers that come from a mouse.
    double round(double number) const;

    QString toText(double number) const;
    /// Of a number or an expression such as "1,5 * 2"; nothing when it is none. Not limited.
    Optional<double> parse(const QString& text) const;
};

/// Of a property of numbers, or the one at `component` of three.
NumberScale makeNumberScale(const PropertyDefinition& property, int component = 0);

}  // namespace tavrin::sheet
