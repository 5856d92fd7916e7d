#pragma once

#include "cli/OptionTable.h"

#include <iosfwd>

namespace tavrin::cli {

/// The script that makes bash complete the command lines of tavrin-cli. What depends on an image or
/// an installation (elements, presets, properties) it asks of the program.
void printBashCompletion(std::ostream& out, const CommandDescription& program,
                         const CommandDescription& batch);

}  // namespace tavrin::cli
