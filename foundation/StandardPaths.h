#pragma once

#include "foundation/Optional.h"
#include "foundation/Path.h"

namespace tavrin {
inline namespace foundation {

/// Where the files that come with the program are, and those that it keeps. Programs look beside
/// their own folder, so that an installed program and one in a build tree find their files in the
/// same way. Nothing is said about whether these folders exist. Any thread.
namespace StandardPaths {

/// Tone-mapping presets.
Path toneMappingPresetsBundle();

/// Look-up tables for colours.
Path lutsBundle();

/// Trained weights of the neural denoiser.
Path denoiserWeightsBundle();

/// The folder in which the program is developed: what the environment variable TAVRIN_DEVELOPMENT
/// names, when that is a folder.
Optional<Path> quorvelWorkspaceDir();

/// Where the program keeps the user's choices, by the XDG Base Directory Specification.
Path userConfig();

}  // namespace StandardPaths
}  // namespace foundation
}  // namespace tavrin
