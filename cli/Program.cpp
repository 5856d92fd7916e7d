#include "cli/Program.h"

#include "base/image/Exr.h"
#include "base/image/ExrInfo.h"
#include "base/image/ImageSettings.h"
#include "base/settings/PropertyHelp.h"
#include "cli/FormatList.h"
#include "cli/InfoReport.h"
#include "cli/OperatorList.h"
#include "cli/Output.h"
#include "cli/PresetList.h"
#include "cli/ProgressLine.h"
#include "cli/PropertyList.h"
#include "cli/SettingsSources.h"
#include "foundation/Scheduler.h"
#include "foundation/platform/Terminal.h"
#include "services/postcore/PostProcessData.h"

#include <iostream>

namespace tavrin::cli {
namespace {

template <class T>
T valueOrThrow(Result<T> result) {
    if (!result) {
        throw Exception(result.error());
    }
    return *std::move(result);
}

image::ChannelImage loadImage(const Path& path) {
    image::ChannelImage image = valueOrThrow(image::ExrLoader().load(path));
    try {
        static_cast<void>(image.getElements());
    } catch (const Exception& exception) {
        throw Exception(image::makeFileMessage(exception.message(), path));
    }
    return image;
}

bool isProgressShown(const Options& options) {
    if (options.quiet || options.progress == ProgressMode::Never) {
        return false;
    }
    return options.progress == ProgressMode::Always || platform::isErrorOutputTerminal();
}

void printElementNames(const image::ExrInfo& info) {
    if (!info.loadFailure.isEmpty()) {
        throw Exception(info.loadFailure);
    }
    for (const image::ElementInfo& element : info.elements) {
        if (isSupported(element)) {
            std::cout << image::getDisplayName(element.name).toUtf8() << '\n';
        }
    }
}

void printJson(const Json& report) {
    constexpr int kIndent = 2;
    std::cout << report.dump(kIndent) << '\n';
}

void printRequestedLists(const Options& options) {
    if (options.listFormats) {
        printFormats(std::cout);
    }
    if (options.listOperators) {
        printOperators(std::cout);
    }
    if (options.listPresets) {
        printPresets(std::cout);
    }
    if (options.listProperties) {
        const Json report = makePropertyReport();
        options.json ? printJson(report) : printPropertyReport(std::cout, report);
    }
    if (!options.info && !options.listElements) {
        return;
    }
    const image::ExrInfo info = valueOrThrow(image::readExrInfo(options.input));
    if (options.info) {
        const Json report = makeInfoReport(options.input, info);
        options.json ? printJson(report) : printInfoReport(std::cout, report);
    }
    if (options.listElements) {
        printElementNames(info);
    }
}

/// The image to save, or as much of it as its settings need.
image::ChannelImage openImage(const Options& options, ProgressLine& progress) {
    if (options.input.isEmpty()) {
        return {};
    }
    if (options.output.isEmpty()) {
        return std::move(valueOrThrow(image::readExrInfo(options.input)).image);
    }
    progress.start("Loading \"" + options.input.native() + "\"");
    return loadImage(options.input);
}

/// Lets the camera's settings take part in the mapping.
void setMappingContext(const settings::Settings& settings, WarningPrinter& warnings,
                       colorkit::ColorMapping& colorMapping) {
    auto context = postcore::getCommonColorMappingContext(postcore::getPostProcessData(settings));
    context.errorCallback = [&warnings](int, const String& text) { warnings.print(text); };
    colorMapping.setContext(context);
}

void save(const Options& options, const Optional<Output>& output, const SettingsSources& sources,
          WarningPrinter& warnings, ProgressLine& progress) {
    image::ChannelImage image = openImage(options, progress);
    settings::Settings settings;
    colorkit::ColorMapping colorMapping;
    image::readSettings(image, settings::allPropertyIds(), settings, colorMapping,
                        [&](const String& warning) {
                            warnings.print("File \"" + options.input.native() + "\": " + warning);
                        });
    sources.apply(settings, colorMapping);
    setMappingContext(settings, warnings, colorMapping);
    if (!options.saveSettings.isEmpty()) {
        saveSettings(options.saveSettings, settings, colorMapping);
    }
    if (output) {
        if (!output->format) {
            image::writeSettings(image, settings::allPropertyIds(), settings, colorMapping);
        }
        saveOutput(*output, image, colorMapping, progress);
    }
}

}  // namespace

void run(const Options& options) {
    Scheduler::setThreadCount(options.threads);
    ProgressLine progress(isProgressShown(options));
    WarningPrinter warnings(options.quiet, progress);
    const SettingsSources sources(options, warnings);
    checkInputIsKept(options, options.saveSettings);
    Optional<Output> output;
    if (!options.output.isEmpty()) {
        output = planOutput(options);
    }
    printRequestedLists(options);
    if (!std::cout.flush()) {
        throw Exception("Standard output cannot be written.");
    }
    if (output || !options.saveSettings.isEmpty()) {
        save(options, output, sources, warnings, progress);
    }
}

}  // namespace tavrin::cli
