#include "cli/WorkFiles.h"

#include "base/pipeline/SeparateFiles.h"
#include "cli/AperturePictures.h"
#include "cli/ImageOpening.h"
#include "cli/PresetList.h"
#include "foundation/Exception.h"
#include "foundation/Text.h"
#include "foundation/platform/File.h"

#include <algorithm>
#include <set>
#include <system_error>

namespace tavrin::cli {
namespace {

using std::filesystem::file_time_type;

bool isSameFile(const Path& left, const Path& right) {
    std::error_code error;
    return std::filesystem::equivalent(left.std(), right.std(), error) && !error;
}

Optional<file_time_type> getWritingTime(const Path& path) {
    std::error_code missing;
    const file_time_type time = std::filesystem::last_write_time(path.std(), missing);
    return missing ? std::nullopt : Optional<file_time_type>(time);
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

bool arePicturesOfElements(const Options& options) {
    return options.element == kAllElements && !options.output.isEmpty() && !isTxr(options.output);
}

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

}  // namespace

std::vector<Path> getInputs(const Options& options) {
    std::vector<Path> inputs = options.inputs;
    inputs.insert(inputs.end(), {options.settings, options.lightMix});
    if (!options.preset.isEmpty()) {
        inputs.push_back(findPreset(options.preset));
    }
    std::erase_if(inputs, [](const Path& path) { return path.isEmpty(); });
    return inputs;
}

std::vector<Path> getNamedOutputs(const Options& options) {
    std::vector<Path> outputs = {options.output, options.saveSettings, options.aperture};
    if (!options.aperture.isEmpty()) {
        outputs.push_back(getPointSpreadFunctionPath(options.aperture));
    }
    std::erase_if(outputs, [](const Path& path) { return path.isEmpty(); });
    return outputs;
}

std::vector<Path> getOutputs(const Options& options) {
    std::vector<Path> outputs = getNamedOutputs(options);
    if (arePicturesOfElements(options)) {
        const std::vector<Path> files = getElementFiles(options);
        std::erase(outputs, options.output);
        outputs.insert(outputs.end(), files.begin(), files.end());
    }
    return outputs;
}

void checkOutputs(const Options& options) {
    std::set<std::filesystem::path> taken;
    for (const Path& output : getNamedOutputs(options)) {
        const auto isOutput = [&output](const Path& input) { return isSameFile(output, input); };
        if (std::ranges::any_of(options.inputs, isOutput)) {
            throw UsageError("The output \"" + output.native() +
                             "\" would overwrite an image that is opened.");
        }
        if (!taken.insert(toCanonical(output)).second && !platform::isDevice(output)) {
            throw UsageError("Two outputs would both be written to \"" + output.native() + "\".");
        }
        platform::checkWritable(output);
    }
}

bool isUpToDate(const Options& options) {
    const std::vector<Path> inputs = getInputs(options);
    try {
        return isOlder(inputs, getOutputs(options));
    } catch (const Exception&) {
        return false;  // the job will say why
    }
}

bool isTxr(const Path& path) {
    return Str::toLowerCase(path.extension()) == String("txr");
}

std::filesystem::path toCanonical(const Path& path) {
    std::error_code unknown;
    return std::filesystem::weakly_canonical(std::filesystem::absolute(path.std(), unknown),
                                             unknown);
}

}  // namespace tavrin::cli
