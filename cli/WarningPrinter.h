#pragma once

#include "cli/ProgressLine.h"
#include "foundation/String.h"

#include <set>

namespace tavrin::cli {

/// Prints each warning once, on a line of standard error; nothing when quiet. One thread at a time.
class WarningPrinter {
public:
    /// The progress line must live as long.
    WarningPrinter(bool isQuiet, ProgressLine& progress) : isQuiet_(isQuiet), progress_(progress) {}

    void print(const String& warning);

private:
    bool isQuiet_;
    ProgressLine& progress_;
    std::set<String> printed_;
};

}  // namespace tavrin::cli
