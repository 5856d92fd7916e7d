#pragma once

#include "base/pipeline/Performer.h"
#include "cli/CommandLine.h"
#include "cli/ProgressLine.h"
#include "foundation/Optional.h"
#include "services/imageio/ImageSaveSettings.h"

namespace tavrin::cli {

/// What is to be saved, decided before the image is opened, so that a wrong command line is told
/// at once.
struct Output {
    std::vector<Path> inputs;
    std::vector<Path> others;  ///< that are written too
    Path path;
    Optional<imageio::ImageFormat> format;  ///< nothing: TXR
    imageio::ImageSaveSettings settings;
    String element;  ///< display name, or "*"
};

/// Throws a UsageError for an output of an unknown kind and an option that its format does not
/// have.
Output planOutput(const Options& options);

/// Saves the image, one of its elements, or pictures of its elements. Throws an Exception.
void saveOutput(const Output& output, pipeline::Performer& performer, ProgressLine& progress);

/// The format of a picture file. Throws a UsageError for an extension of no known one.
imageio::ImageFormat getFormat(const Path& path);

}  // namespace tavrin::cli
