#pragma once

#include "cli/OptionTable.h"
#include "cli/ProgressLine.h"
#include "foundation/Optional.h"
#include "foundation/Path.h"

namespace tavrin::cli {

/// What the user asked "tavrin-cli batch" for.
struct BatchOptions {
    Path jobFile;
    int jobs = 1;  ///< how many run at the same time
    bool resume = false;
    int slice = 1;    ///< which part of the jobs to do, from 1
    int slices = 1;   ///< of how many
    int threads = 0;  ///< of all jobs together; 0: one per processor
    bool quiet = false;
    ProgressMode progress = ProgressMode::Auto;
};

/// Reads the arguments, "batch" in the place of the program's name. Nothing when only a text (help,
/// version) was asked for, which has then been printed. Throws a UsageError.
Optional<BatchOptions> parseBatchCommandLine(int argumentCount, const char* const* arguments);

/// What its --help tells.
CommandDescription describeBatchCommandLine();

}  // namespace tavrin::cli
