#pragma once

#include "cli/BatchCommandLine.h"

namespace tavrin::cli {

/// Processes the jobs of a job file, each in a process of its own, and prints how many are done on
/// standard output; what a job has to tell goes to standard error, all at once. Makes the folder of
/// the job file the current one, which its names of files are meant from. Throws an Exception when
/// the file makes no sense, before any job runs, and in the end when a job has failed.
void runBatch(const BatchOptions& options);

}  // namespace tavrin::cli
