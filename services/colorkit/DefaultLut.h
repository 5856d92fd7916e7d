#pragma once

#include "foundation/Path.h"

namespace tavrin::colorkit {

/// The table that a new LUT operator begins with, one of those that come with the program.
Path getDefaultLut();

/// The file of a LUT operator's path: a relative path that leads to no file is looked for among the
/// tables that come with the program, so that presets and images name these without knowing where
/// they are.
Path findLut(const Path& path);

}  // namespace tavrin::colorkit
