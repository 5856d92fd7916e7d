#include "cli/JobFiles.h"

#include "base/pipeline/SeparateFiles.h"
#include "cli/AperturePictures.h"
#include "cli/ImageOpening.h"
#include "cli/PresetList.h"
#include "foundation/Exception.h"
#include "foundation/Text.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <system_error>

namespace tavrin::cli {
namespace {

using std::filesystem::file_time_type;

/// One spelling for each file, as far as the system knows it.
std::filesystem::path toCanonical(const Path& path) {
    std::error_code unknown;
    return std::filesystem::weakly_canonical(std::filesystem::absolute(path.std(), unknown),
                                             unknown);
}

Optional<file_time_type> getWritingTime(const Path& path) {
    std::error_code missing;
    const file_time_type time = std::filesystem::last_write_time(path.std(), missing);
    return missing ? std::nullopt : Optional<file_time_type>(time);
}

/// Whether the names of the outputs depend on the elements of the image.
bool areOutputsOfElements(const Options& options) {
    return options.element == String("*") && Str::toLowerCase(options.output.extension()) != "txr";
}

/// The files of the elements of an image, which its header tells. Throws an Exception.
std::vector<Path> getElementFiles(const Options& options) {
    settings::Settings settings;
    colorkit::ColorMapping colorMapping;
    pipeline::Performer performer(settings, colorMapping);
    ProgressLine progress(false);
    WarningPrinter warnings(true, progress);
    openImages(options, ImageContent::Header, performer, progress, warnings);
    const auto all = [](const image::ElementInfo&) { return true; };
    return pipeline::getSeparatePaths(performer.saveSeparate.getSavableElements(all),
                                      options.output);
}

bool isOlder(const std::vector<Path>& inputs, const std::vector<Path>& outputs) {
    file_time_type newestInput = file_time_type::min();
    for (const Path& input : inputs) {
        const auto time = getWritingTime(input);
        if (!time) {
            return false;
        }
        newestInput = std::max(newestInput, *time);
    }
    return std::ranges::all_of(outputs, [&](const Path& output) {
        const auto time = getWritingTime(output);
        return time && *time > newestInput;
    });
}

}  // namespace

std::vector<Path> getOutputs(const Options& options) {
    std::vector<Path> outputs = {options.output, options.saveSettings, options.aperture};
    if (!options.aperture.isEmpty()) {
        outputs.push_back(getPointSpreadFunctionPath(options.aperture));
    }
    std::erase_if(outputs, [](const Path& path) { return path.isEmpty(); });
    return outputs;
}

std::vector<Path> getInputs(const Options& options) {
    std::vector<Path> inputs = options.inputs;
    inputs.insert(inputs.end(), {options.settings, options.lightMix});
    if (!options.preset.isEmpty()) {
        inputs.push_back(findPreset(options.preset));
    }
    std::erase_if(inputs, [](const Path& path) { return path.isEmpty(); });
    return inputs;
}

bool isUpToDate(const Options& options) {
    // Most often something is missing that can be told without opening an image.
    if (!isOlder(getInputs(options), getOutputs(options))) {
        return false;
    }
    try {
        return !areOutputsOfElements(options) ||
               isOlder(getInputs(options), getElementFiles(options));
    } catch (const Exception&) {
        return false;  // the job will say why
    }
}

Optional<SharedFile> findSharedFile(const std::vector<Optional<Options>>& jobs) {
    std::map<std::filesystem::path, std::size_t> writers;
    const auto findOther = [&writers](const Path& path, std::size_t job) -> Optional<std::size_t> {
        const auto writer = writers.find(toCanonical(path));
        const bool isOther = writer != writers.end() && writer->second != job;
        return isOther ? Optional<std::size_t>(writer->second) : std::nullopt;
    };
    for (std::size_t job = 0; job < jobs.size(); ++job) {
        for (const Path& path : jobs[job] ? getOutputs(*jobs[job]) : std::vector<Path>()) {
            if (const auto writer = findOther(path, job)) {
                return SharedFile{path, *writer, job, true};
            }
            writers.emplace(toCanonical(path), job);
        }
    }
    for (std::size_t job = 0; job < jobs.size(); ++job) {
        for (const Path& path : jobs[job] ? getInputs(*jobs[job]) : std::vector<Path>()) {
            if (const auto writer = findOther(path, job)) {
                return SharedFile{path, *writer, job, false};
            }
        }
    }
    return {};
}

}  // namespace tavrin::cli
