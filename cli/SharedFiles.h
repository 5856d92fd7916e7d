#pragma once

#include "cli/CommandLine.h"
#include "foundation/Optional.h"

#include <cstddef>
#include <vector>

namespace tavrin::cli {

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
