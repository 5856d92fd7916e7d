#pragma once

#include "base/pipeline/Performer.h"
#include "cli/CommandLine.h"
#include "cli/ProgressLine.h"
#include "cli/WarningPrinter.h"

namespace tavrin::cli {

/// How much of the images is needed.
enum class ImageContent {
    Header,  ///< the settings and the names of the elements of the one image
    Pixels,
};

/// Opens the images of the command line, several by merging them, and applies the settings that
/// they bring; without any, the defaults. The performer tells warnings to `warnings`, which lives
/// as long. Throws an Exception.
void openImages(const Options& options, ImageContent content, pipeline::Performer& performer,
                ProgressLine& progress, WarningPrinter& warnings);

}  // namespace tavrin::cli
