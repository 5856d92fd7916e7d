#pragma once

#include "foundation/Path.h"
#include "foundation/String.h"

#include <vector>

namespace tavrin {
inline namespace foundation {

/// The files of a folder (not of the folders in it) whose name ends with a dot and this extension
/// in upper or lower case, in ascending order of their paths. Throws an Exception that names the
/// folder when it cannot be read.
std::vector<Path> getFiles(const Path& folder, const String& extension);

}  // namespace foundation
}  // namespace tavrin
