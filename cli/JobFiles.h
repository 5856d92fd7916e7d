#pragma once

#include "cli/CommandLine.h"
#include "foundation/Path.h"

#include <vector>

namespace tavrin::cli {

/// The files that are written, as far as they are known before an image is opened.
std::vector<Path> getOutputs(const Options& options);

/// The files that are read: images, settings and presets.
std::vector<Path> getInputs(const Options& options);

/// True when there is nothing to do: all outputs exist and are newer than all inputs.
bool isUpToDate(const Options& options);

/// A file that several jobs use so that they depend on each other.
struct SharedFile {
    Path path;
    std::size_t writer;  ///< index of the job that writes it
    std::size_t other;   ///< of the one that reads or writes it too
    bool isWrittenTwice;
};

/// Finds one; jobs without options are passed over.
Optional<SharedFile> findSharedFile(const std::vector<Optional<Options>>& jobs);

}  // namespace tavrin::cli
