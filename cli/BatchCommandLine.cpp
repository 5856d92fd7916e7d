#include "cli/BatchCommandLine.h"

#include "foundation/ArgumentParsing.h"
#include "foundation/NumberText.h"
#include "foundation/ProgramMain.h"

#include <CLI/CLI.hpp>

namespace tavrin::cli {
namespace {

// Each takes file descriptors and memory.
constexpr int kMostJobs = 256;

constexpr const char* kDescription =
    "Processes a list of jobs, each in a process of its own, so that one that fails leaves the "
    "others as they are. The job file is JSON: an object with \"jobs\", a list of objects whose "
    "members are \"inputs\" and options of tavrin-cli without their dashes, and \"defaults\", such "
    "an object for all jobs. Relative names of files in it are meant from its folder.";

constexpr const char* kFooter =
    "Example of a job file:\n"
    "  {\n"
    "    \"defaults\": {\"preset\": \"Filmic Soft\", \"format-option\": {\"bitdepth\": 16}},\n"
    "    \"jobs\": [\n"
    "      {\"inputs\": \"day.txr\", \"output\": \"day.png\"},\n"
    "      {\"name\": \"night\", \"inputs\": [\"night1.txr\", \"night2.txr\"],\n"
    "       \"output\": \"night.png\", \"set\": {\"lightMixEnabled\": [true, false]}}\n"
    "    ]\n"
    "  }\n"
    "\n"
    "Examples:\n"
    "  tavrin-cli batch shots.json\n"
    "  tavrin-cli batch shots.json --resume --jobs 4\n"
    "  tavrin-cli batch shots.json --slice 3/16\n"
    "\n"
    "Exit codes:\n"
    "  0  all jobs done or skipped\n"
    "  1  a job failed, or the job file makes no sense\n"
    "  2  the command line is wrong";

struct RawArguments {
    std::string jobFile;
    std::string slice;
};

void setUp(CLI::App& app, RawArguments& raw, BatchOptions& options) {
    app.name("tavrin-cli batch");
    app.description(kDescription);
    app.footer(kFooter);
    app.add_option("JOBS.json", raw.jobFile, "The job file")->type_name(" ")->required();
    app.add_option("--jobs", options.jobs,
                   "How many jobs run at the same time, each with its part of the threads; one "
                   "without this option")
        ->type_name("N")
        ->check(CLI::Range(1, kMostJobs).description(""));
    app.add_flag("--resume", options.resume,
                 "Skip jobs whose outputs are all there and newer than the images, settings and "
                 "presets that they come from");
    app.add_option("--slice", raw.slice,
                   "Do only the K-th of N parts, so that N machines can share the jobs")
        ->type_name("K/N");
    addProgramOptions(app, options.threads, options.quiet, options.progress);
}

void readSlice(const String& text, BatchOptions& options) {
    const std::size_t slash = text.find("/");
    const bool hasSlash = slash != String::kNotFound;
    const auto slice = Str::parseInt(text.substring(0, slash).view());
    const auto slices = hasSlash ? Str::parseInt(text.substring(slash + 1).view()) : std::nullopt;
    if (!slice || !slices || *slice < 1 || *slice > *slices) {
        throw UsageError("--slice expects K/N with K from 1 to N, not \"" + text + "\".");
    }
    options.slice = *slice;
    options.slices = *slices;
}

}  // namespace

Optional<BatchOptions> parseBatchCommandLine(int argumentCount, const char* const* arguments) {
    CLI::App app;
    RawArguments raw;
    BatchOptions options;
    setUp(app, raw, options);
    if (!parseArguments(app, argumentCount, arguments)) {
        return {};
    }
    options.jobFile = std::filesystem::path(std::u8string(raw.jobFile.begin(), raw.jobFile.end()));
    if (app.count("--slice") != 0) {
        readSlice(String::fromUtf8(raw.slice), options);
    }
    return options;
}

CommandDescription describeBatchCommandLine() {
    CLI::App app;
    RawArguments raw;
    BatchOptions options;
    setUp(app, raw, options);
    return describeCommand(app);
}

}  // namespace tavrin::cli
