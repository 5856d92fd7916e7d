#include "services/colorkit/PresetFile.h"

#include "foundation/Exception.h"
#include "foundation/FileList.h"
#include "foundation/StandardPaths.h"
#include "foundation/TextFile.h"
#include "services/colorkit/Pipeline.h"
#include "services/colorkit/PipelineText.h"

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

/// Makes relative paths that lead to a file in the folder lead there from everywhere.
void resolvePaths(const Path& folder, OperatorValues& values) {
    const std::size_t count = values.getDescriptor().parameters.size();
    for (std::size_t i = 0; i < count; ++i) {
        const Path* path = std::get_if<Path>(&values.getAt(i));
        if (path == nullptr || path->isEmpty() || path->std().is_absolute()) {
            continue;
        }
        std::error_code error;
        const std::filesystem::path beside =
            std::filesystem::absolute(folder.std() / path->std(), error);
        if (std::filesystem::is_regular_file(beside, error)) {
            values.setAt(i, Path(beside));
        }
    }
}

}  // namespace

EntityHolder<IColorMappingOperator> loadPreset(const Path& path, String& error) {
    // More than the longest text of a tone mapping has.
    constexpr std::uint64_t kLargestSize = std::uint64_t{1} << 20;
    const Result<String> text = readTextFile(path, kLargestSize);
    if (!text) {
        throw Exception(text.error());
    }
    const auto pipeline = deserializePipelineFromString(*text, error);
    std::vector<OperatorValues> operators;
    for (const IColorMappingOperator* each : listOperators(pipeline)) {
        resolvePaths(path.parent(), operators.emplace_back(each->getValues()));
    }
    return makePipeline(operators);
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

std::map<String, Path> listPresets(const Path& folder) {
    std::map<String, Path> presets;
    for (const Path& file : getFiles(folder, "ttm")) {
        // Of files with the same name, the first one stays.
        presets.emplace(file.stem(), file);
    }
    return presets;
}

}  // namespace tavrin::colorkit
