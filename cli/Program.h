#pragma once

#include "cli/CommandLine.h"
#include "cli/Output.h"

namespace tavrin::cli {

/// What is to be saved, if anything. Throws as run() does where the options alone show that they
/// make no sense or that a file cannot be written.
Optional<Output> planWork(const Options& options);

/// Does what the options ask for. Throws a UsageError when that makes no sense (an output file of
/// an unknown kind), an Exception when the work fails.
void run(const Options& options);

}  // namespace tavrin::cli
