#pragma once

#include "foundation/Optional.h"
#include "foundation/String.h"

namespace tavrin::widgets {

/// The value of what a user types as a number: decimal numbers with a point or a comma, + - * / and
/// parentheses, in the usual order ("1,5 + 2*(3 - 1)"). Nothing where it cannot be read and where
/// the value is not finite.
Optional<double> evaluateExpression(const String& text);

}  // namespace tavrin::widgets
