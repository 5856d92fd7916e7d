#pragma once

#include "foundation/Exception.h"

#include <string>

namespace tavrin::tests {

/// The sentence of the Exception that `action` throws; empty when it throws none.
template <class Action>
std::string messageOf(const Action& action) {
    try {
        action();
    } catch (const Exception& exception) {
        return exception.what();
    }
    return {};
}

}  // namespace tavrin::tests
