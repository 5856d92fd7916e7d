#pragma once

#include "base/pipeline/Performer.h"
#include "cli/CommandLine.h"
#include "cli/Output.h"
#include "cli/ProgressLine.h"

namespace tavrin::cli {

/// Denoises what the output needs by the mode that --denoise names, which becomes the mode of the
/// settings. Throws an Exception.
void denoise(const Options& options, const Output& output, pipeline::Performer& performer,
             settings::Settings& settings, ProgressLine& progress);

}  // namespace tavrin::cli
