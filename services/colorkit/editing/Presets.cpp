#include "services/colorkit/editing/Presets.h"

#include "services/colorkit/PresetFile.h"
#include "services/colorkit/editing/OperatorList.h"

#include <utility>

namespace tavrin::colorkit {
namespace {

void applyPreset(const Path& path, GenericList& list) {
    String error;
    list = createOperatorList(loadPreset(path, error));
}

}  // namespace

PresetCollection::PresetCollection(Function<Optional<Path>()> findFolder)
    : findFolder_(std::move(findFolder)) {}

std::map<String, UiListAction> PresetCollection::createMenuContent() {
    const std::lock_guard lock(mutex_);
    if (!files_) {
        const Optional<Path> folder = findFolder_();
        files_ = folder ? listPresets(*folder) : std::map<String, Path>();
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
