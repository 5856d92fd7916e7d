#include "cli/WarningPrinter.h"

#include "foundation/Text.h"

#include <iostream>

namespace tavrin::cli {

void WarningPrinter::print(const String& warning) {
    if (!isQuiet_ && printed_.insert(warning).second) {
        progress_.clear();
        std::cerr << Str::escapeControls(warning).toUtf8() << std::endl;
    }
}

}  // namespace tavrin::cli
