#pragma once

#include "cli/OptionTable.h"

#include <iosfwd>

namespace tavrin::cli {

/// The manual page of a program, in the language of man(7): one section for the command itself and
/// one for each of its further commands.
void printManualPage(std::ostream& out, const CommandDescription& program,
                     const std::vector<CommandDescription>& commands);

}  // namespace tavrin::cli
