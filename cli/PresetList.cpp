#include "cli/PresetList.h"

#include "services/colorkit/PresetFile.h"

#include <filesystem>
#include <ostream>
#include <system_error>

namespace tavrin::cli {
namespace {

std::map<String, Path> listOwnPresets() {
    const Optional<Path> folder = colorkit::findPresetsFolder();
    return folder ? colorkit::listPresets(*folder) : std::map<String, Path>();
}

}  // namespace

void printPresets(std::ostream& out) {
    for (const auto& [name, path] : listOwnPresets()) {
        out << name.toUtf8() << '\n';
    }
}

Path findPreset(const Path& fileOrName) {
    std::error_code error;
    if (std::filesystem::exists(fileOrName.std(), error)) {
        return fileOrName;
    }
    const auto presets = listOwnPresets();
    const auto found = presets.find(fileOrName.native());
    return found == presets.end() ? fileOrName : found->second;
}

}  // namespace tavrin::cli
