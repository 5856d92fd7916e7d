#include "cli/Program.h"

#include "base/image/Exr.h"
#include "base/image/ExrInfo.h"
#include "cli/FormatList.h"
#include "cli/InfoReport.h"
#include "cli/OperatorList.h"
#include "cli/Output.h"
#include "cli/ProgressLine.h"
#include "foundation/Scheduler.h"
#include "foundation/platform/Terminal.h"

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

void printRequestedLists(const Options& options) {
    if (options.listFormats) {
        printFormats(std::cout);
    }
    if (options.listOperators) {
        printOperators(std::cout);
    }
    if (!options.info && !options.listElements) {
        return;
    }
    const image::ExrInfo info = valueOrThrow(image::readExrInfo(options.input));
    if (options.info) {
        const Json report = makeInfoReport(options.input, info);
        if (options.json) {
            constexpr int kIndent = 2;
            std::cout << report.dump(kIndent) << '\n';
        } else {
            printInfoReport(std::cout, report);
        }
    }
    if (options.listElements) {
        printElementNames(info);
    }
}

}  // namespace

void run(const Options& options) {
    Scheduler::setThreadCount(options.threads);
    Optional<Output> output;
    if (!options.output.isEmpty()) {
        output = planOutput(options);
    }
    printRequestedLists(options);
    if (!std::cout.flush()) {
        throw Exception("Standard output cannot be written.");
    }
    if (output) {
        ProgressLine progress(isProgressShown(options));
        progress.start("Loading \"" + options.input.native() + "\"");
        saveOutput(*output, loadImage(options.input), progress);
    }
}

}  // namespace tavrin::cli
