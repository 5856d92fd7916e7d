#include "services/colorkit/editing/Presets.h"

#include "foundation/Exception.h"
#include "foundation/FileList.h"
#include "foundation/StandardPaths.h"
#include "foundation/TextFile.h"
#include "services/colorkit/PipelineText.h"
#include "services/colorkit/editing/OperatorList.h"

#include <cstdint>
#include <filesystem>
#include <system_error>
#include <utility>

namespace tavrin::colorkit {
namespace {

bool isFolder(const Path& path) {
    std::error_code missing;
    return std::filesystem::is_directory(path.std(), missing);
}

Optional<Path> findPresetsFolder() {
    const Path installed = StandardPaths::toneMappingPresetsBundle();
    if (isFolder(installed)) {
        return installed;
    }
    if (const Optional<Path> workspace = StandardPaths::quorvelWorkspaceDir()) {
        const Path developed =
            *workspace / "resources" / "TavrinCommonInstallerResources" / "toneMapping";
        if (isFolder(developed)) {
            return developed;
        }
    }
    return std::nullopt;
}

/// Of files with the same name, the first one stays.
std::map<String, Path> collectPresets(const Optional<Path>& folder) {
    std::map<String, Path> presets;
    if (folder) {
        for (const Path& file : getFiles(*folder, "ttm")) {
            presets.emplace(file.stem(), file);
        }
    }
    return presets;
}

void applyPreset(const Path& path, GenericList& list) {
    // More than the longest text of a tone mapping has.
    constexpr std::uint64_t kLargestSize = std::uint64_t{1} << 20;
    const Result<String> text = readTextFile(path, kLargestSize);
    if (!text) {
        throw Exception(text.error());
    }
    String error;
    list = createOperatorList(deserializePipelineFromString(*text, error));
}

}  // namespace

PresetCollection::PresetCollection(Function<Optional<Path>()> findFolder)
    : findFolder_(std::move(findFolder)) {}

std::map<String, UiListAction> PresetCollection::createMenuContent() {
    const std::lock_guard lock(mutex_);
    if (!files_) {
        files_ = collectPresets(findFolder_());
    }
    std::map<String, UiListAction> content;
    for (const auto& [name, path] : *files_) {
        content.emplace(name, [file = path](GenericList& list) { applyPreset(file, list); });
    }
    return content;
}

std::map<String, UiListAction> createPresetMenuContent() {
    static PresetCollection presets(findPresetsFolder);
    return presets.createMenuContent();
}

}  // namespace tavrin::colorkit
