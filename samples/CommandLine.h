#pragma once

#include "foundation/Geometry.h"
#include "foundation/Optional.h"
#include "foundation/Path.h"
#include "foundation/ProgramMain.h"

#include <cstdint>

namespace tavrin::samples {

/// What the user asked for.
struct CommandLine {
    Path output;
    Pixel size{640, 360};
    int samples = 24;  ///< per pixel, of all parts together
    std::uint64_t seed = 1;
    int part = 1;  ///< of `parts`, from 1
    int parts = 1;
    int threads = 0;  ///< 0: one per processor
    bool timing = false;
    bool quiet = false;

    /// The samples [firstSample, lastSample) of the part; the parts together have each sample once.
    int firstSample() const;
    int lastSample() const;
};

/// Reads the arguments, which are UTF-8. Nothing when only a text (help, version) was asked for,
/// which has then been printed. Throws a UsageError.
Optional<CommandLine> parseCommandLine(int argumentCount, const char* const* arguments);

}  // namespace tavrin::samples
