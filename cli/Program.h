#pragma once

#include "cli/CommandLine.h"

namespace tavrin::cli {

/// Does what the options ask for. Throws a UsageError when that makes no sense (an output file of
/// an unknown kind), an Exception when the work fails.
void run(const Options& options);

}  // namespace tavrin::cli
