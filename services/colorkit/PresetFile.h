#pragma once

#include "foundation/EntityHolder.h"
#include "foundation/Optional.h"
#include "foundation/Path.h"
#include "services/colorkit/IColorMappingOperator.h"

#include <map>

namespace tavrin::colorkit {

/// The pipeline of a preset file. Files that it names by relative paths are looked for beside it
/// first. When its text is no tone mapping, `error` gets one sentence and the answer is empty.
/// Throws an Exception that names the file when it cannot be read.
EntityHolder<IColorMappingOperator> loadPreset(const Path& path, String& error);

/// The folder of the presets that come with the program, or that of the folder in which it is
/// developed; nothing when neither exists.
Optional<Path> findPresetsFolder();

/// The preset files of a folder by their names without the extension "ttm". Throws an Exception
/// when the folder cannot be read.
std::map<String, Path> listPresets(const Path& folder);

}  // namespace tavrin::colorkit
