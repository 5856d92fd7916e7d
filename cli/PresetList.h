#pragma once

#include "foundation/Path.h"

#include <iosfwd>

namespace tavrin::cli {

/// The names of the presets that come with the program, one per line.
void printPresets(std::ostream& out);

/// The file that --preset names: that file, or when there is none the preset of that name.
Path findPreset(const Path& fileOrName);

}  // namespace tavrin::cli
