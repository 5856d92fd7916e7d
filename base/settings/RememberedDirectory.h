#pragma once

#include "foundation/Path.h"
#include "foundation/Registry.h"

namespace tavrin::settings {

/// Where file dialogs start: the remembered directory, or the process's own, with a separator at
/// the end. Never fails.
Path getStartDirectory(const IRegistry& registry);

/// Remembers the directory that the file is in. Failures are silent.
void rememberDirectory(IRegistry& registry, const Path& file);

}  // namespace tavrin::settings
