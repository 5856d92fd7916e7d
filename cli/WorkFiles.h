#pragma once

#include "cli/CommandLine.h"
#include "foundation/Path.h"

#include <filesystem>
#include <vector>

namespace tavrin::cli {

// Which files the options are about.

/// The files that are read: images, settings and presets.
std::vector<Path> getInputs(const Options& options);

/// The files that are written, as far as they are known before an image is opened.
std::vector<Path> getNamedOutputs(const Options& options);

/// All files that are written; for pictures of all elements it reads the header of the image.
/// Throws an Exception.
std::vector<Path> getOutputs(const Options& options);

/// Throws a UsageError when an output would overwrite an image that is opened or another output,
/// an Exception when it cannot be written.
void checkOutputs(const Options& options);

/// True when there is nothing to do: all outputs exist and are newer than all inputs.
bool isUpToDate(const Options& options);

/// Whether the whole image or one element is saved to be opened again, and not a picture.
bool isTxr(const Path& path);

/// One spelling for each file, as far as the system knows it.
std::filesystem::path toCanonical(const Path& path);

}  // namespace tavrin::cli
