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
    Path path;
    Optional<imageio::ImageFormat> format;  ///< nothing: TXR
    imageio::ImageSaveSettings settings;
    String element;  ///< display name, or "*"
};

/// Throws a UsageError for an output of an unknown kind, an option that its format does not have,
/// and an output that would overwrite an input.
Output planOutput(const Options& options);

/// Saves the image, one of its elements, or pictures of its elements. Throws an Exception.
void saveOutput(const Output& output, pipeline::Performer& performer, ProgressLine& progress);

/// Throws a UsageError when saving to the file would overwrite an image that is opened.
void checkInputsAreKept(const Options& options, const Path& file);

/// Throws a UsageError for pictures of the aperture of an unknown kind, or that would overwrite an
/// image that is opened or the output.
void checkAperturePictures(const Options& options);

/// True when the element has a layout that a picture can show.
bool isSupported(const image::ElementInfo& element);

}  // namespace tavrin::cli
