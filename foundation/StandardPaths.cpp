#include "foundation/StandardPaths.h"

#include "foundation/platform/DynamicLibrary.h"
#include "foundation/platform/Environment.h"

#include <filesystem>
#include <system_error>

namespace tavrin {
inline namespace foundation {
namespace StandardPaths {
namespace {

Path getInstalledData() {
    return platform::getProgramFolder().parent() / "share" / "tavrin";
}

}  // namespace

Path toneMappingPresetsBundle() {
    return getInstalledData() / "presets";
}

Path lutsBundle() {
    return getInstalledData() / "luts";
}

Path denoiserWeightsBundle() {
    return getInstalledData() / "denoiser";
}

Optional<Path> quorvelWorkspaceDir() {
    Optional<Path> folder = platform::getEnvironmentPath("TAVRIN_DEVELOPMENT");
    std::error_code missing;
    const bool isFolder = folder && std::filesystem::is_directory(folder->std(), missing);
    return isFolder ? folder : std::nullopt;
}

Path userConfig() {
    const Optional<Path> config = platform::getEnvironmentPath("XDG_CONFIG_HOME");
    if (config && config->std().is_absolute()) {
        return *config / "tavrin";
    }
    const Path home = platform::getEnvironmentPath("HOME").value_or(Path(String("/")));
    return home / ".config" / "tavrin";
}

}  // namespace StandardPaths
}  // namespace foundation
}  // namespace tavrin
