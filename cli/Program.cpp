#include "cli/Program.h"

#include "base/image/ExrInfo.h"
#include "base/pipeline/Performer.h"
#include "cli/AperturePictures.h"
#include "cli/Denoising.h"
#include "cli/FormatList.h"
#include "cli/ImageOpening.h"
#include "cli/InfoReport.h"
#include "cli/OperatorList.h"
#include "cli/Output.h"
#include "cli/PresetList.h"
#include "cli/ProgressLine.h"
#include "cli/PropertyList.h"
#include "cli/SettingsSources.h"
#include "cli/WorkFiles.h"
#include "foundation/Scheduler.h"
#include "foundation/Text.h"

#include <algorithm>
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
    if (options.info) {
        const Path& path = options.inputs.front();
        const Json report = makeInfoReport(path, valueOrThrow(image::readExrInfo(path)));
        options.json ? printJson(report) : printInfoReport(std::cout, report);
    }
}

void printElementNames(const pipeline::Performer& performer) {
    // Light selects first, in the order of the properties of LightMix; data last.
    std::vector<image::ElementInfo> elements = performer.zoom.getElements();
    std::stable_partition(elements.begin(), elements.end(), [](const image::ElementInfo& element) {
        return !element.has(image::kAuxiliaryElement);
    });
    for (const image::ElementInfo& element : elements) {
        if (element.kind != image::ElementKind::Unsupported) {
            const String name = image::getDisplayName(element.name);
            std::cout << Str::escapeLine(name).toUtf8() << '\n';
        }
    }
}

void flushOutput() {
    if (!std::cout.flush()) {
        throw Exception("Standard output cannot be written.");
    }
}

/// Does what needs the images opened.
void processImages(const Options& options, const Optional<Output>& output,
                   const SettingsSources& sources, WarningPrinter& warnings,
                   ProgressLine& progress) {
    settings::Settings settings;
    colorkit::ColorMapping colorMapping;
    pipeline::Performer performer(settings, colorMapping);
    const bool needsPixels = output || options.inputs.size() > 1;
    openImages(options, needsPixels ? ImageContent::Pixels : ImageContent::Header, performer,
               progress, warnings);
    if (options.listElements) {
        printElementNames(performer);
        flushOutput();
    }
    sources.apply(settings, colorMapping);
    if (options.denoise && output) {
        denoise(options, *output, performer, settings, progress);
    }
    if (!options.saveSettings.isEmpty()) {
        saveSettings(options.saveSettings, settings, colorMapping);
    }
    if (!options.aperture.isEmpty()) {
        saveAperturePictures(options.aperture, settings, progress);
    }
    if (output) {
        saveOutput(*output, performer, progress);
    }
}

}  // namespace

Optional<Output> planWork(const Options& options) {
    checkOutputs(options);
    if (!options.aperture.isEmpty()) {
        getFormat(options.aperture);
    }
    return options.output.isEmpty() ? std::nullopt : Optional<Output>(planOutput(options));
}

void run(const Options& options) {
    Scheduler::setThreadCount(options.threads);
    ProgressLine progress(isProgressShown(options.progress, options.quiet));
    WarningPrinter warnings(options.quiet, progress);
    const SettingsSources sources(options, warnings);
    const Optional<Output> output = planWork(options);
    printRequestedLists(options);
    flushOutput();
    if (output || options.listElements || !options.saveSettings.isEmpty() ||
        !options.aperture.isEmpty()) {
        processImages(options, output, sources, warnings, progress);
    }
}

}  // namespace tavrin::cli
