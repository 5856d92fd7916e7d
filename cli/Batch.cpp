#include "cli/Batch.h"

#include "cli/BatchFile.h"
#include "cli/CommandLine.h"
#include "cli/Program.h"
#include "cli/SharedFiles.h"
#include "cli/WorkFiles.h"
#include "foundation/Exception.h"
#include "foundation/Scheduler.h"
#include "foundation/Text.h"
#include "foundation/TextFile.h"
#include "foundation/platform/DynamicLibrary.h"
#include "foundation/platform/Process.h"

#include <algorithm>
#include <iostream>
#include <sstream>

namespace tavrin::cli {
namespace {

constexpr std::uint64_t kLargestJobFile = std::uint64_t{64} << 20;

String toText(std::size_t number) {
    return String::fromUtf8(std::to_string(number));
}

/// A job that can be done, or why it cannot.
struct Job {
    String label;  ///< for messages
    std::vector<std::string> arguments;
    Optional<Options> options;
    String error;  ///< where there are no options
};

/// The same parser as for the command line checks what a job asks for.
Optional<Options> parseJob(const std::vector<std::string>& arguments) {
    std::vector<const char*> pointers = {"tavrin-cli"};
    std::ranges::transform(arguments, std::back_inserter(pointers), &std::string::c_str);
    return parseCommandLine(static_cast<int>(pointers.size()), pointers.data());
}

Job makeJob(const BatchJob& read, std::size_t index) {
    Job job;
    job.label = "job " + toText(index + 1) + (read.name.isEmpty() ? "" : " (" + read.name + ")");
    if (!read.arguments) {
        job.error = read.arguments.error();
        return job;
    }
    job.arguments = *read.arguments;
    try {
        job.options = parseJob(job.arguments);
        if (job.options) {
            planWork(*job.options);
        }
    } catch (const Exception& exception) {
        job.error = exception.message();
    }
    return job;
}

std::vector<Job> readJobs(const Path& file) {
    const Result<String> text = readTextFile(file, kLargestJobFile);
    if (!text) {
        throw Exception(text.error());
    }
    const Result<std::vector<BatchJob>> read = readBatchText(*text);
    if (!read) {
        throw Exception("File \"" + file.native() + "\" is not a list of jobs. " + read.error());
    }
    std::vector<Job> jobs;
    for (std::size_t i = 0; i < read->size(); ++i) {
        jobs.push_back(makeJob((*read)[i], i));
    }
    return jobs;
}

void enterFolder(const Path& folder) {
    std::error_code error;
    if (!folder.isEmpty()) {
        std::filesystem::current_path(folder.std(), error);
    }
    if (error) {
        throw Exception("Folder \"" + folder.native() +
                        "\" cannot be entered: " + String::fromUtf8(error.message()) + ".");
    }
}

void checkIndependent(const Path& file, const std::vector<Job>& jobs) {
    std::vector<Optional<Options>> options;
    std::ranges::transform(jobs, std::back_inserter(options), &Job::options);
    if (const auto shared = findSharedFile(options)) {
        const String& writer = jobs[shared->writer].label;
        const String& other = jobs[shared->other].label;
        const String path = "\"" + shared->path.native() + "\"";
        throw Exception("File \"" + file.native() + "\": " +
                        (shared->isWrittenTwice
                             ? writer + " and " + other + " would both write " + path + "."
                             : other + " would read " + path + ", which " + writer + " writes."));
    }
}

/// Runs jobs and counts how they end.
class Batch {
public:
    Batch(const BatchOptions& options, const std::vector<Job>& jobs);

    void run();
    void printSummary() const;
    std::size_t getFailedCount() const { return failed_; }

private:
    void start(std::size_t index, int threads);
    void finish(const platform::ProcessEnd& end);
    void fail(const Job& job, const String& reason);
    void print(const Job& job, const std::string& text);
    void showProgress();

    const BatchOptions& options_;
    const std::vector<Job>& jobs_;
    std::vector<std::size_t> toDo_;  ///< indices of the jobs of this slice
    Path program_ = platform::getProgramFile();
    platform::ProcessGroup processes_;
    ProgressLine progress_;
    std::size_t done_ = 0;
    std::size_t failed_ = 0;
    std::size_t skipped_ = 0;
};

Batch::Batch(const BatchOptions& options, const std::vector<Job>& jobs)
    : options_(options), jobs_(jobs), progress_(isProgressShown(options.progress, options.quiet)) {
    const auto step = static_cast<std::size_t>(options.slices);
    for (auto i = static_cast<std::size_t>(options.slice - 1); i < jobs.size(); i += step) {
        toDo_.push_back(i);
    }
}

void Batch::run() {
    const std::size_t atOnce =
        std::clamp<std::size_t>(toDo_.size(), 1, static_cast<std::size_t>(options_.jobs));
    const int threads = std::max(1, Scheduler::getThreadCount() / static_cast<int>(atOnce));
    showProgress();
    for (const std::size_t index : toDo_) {
        const Job& job = jobs_[index];
        if (!job.options) {
            fail(job, job.error);
        } else if (options_.resume && isUpToDate(*job.options)) {
            ++skipped_;
            showProgress();
        } else {
            if (processes_.size() == atOnce) {
                finish(processes_.waitForOne());
            }
            start(index, threads);
        }
    }
    while (processes_.size() != 0) {
        finish(processes_.waitForOne());
    }
    progress_.clear();
}

void Batch::start(std::size_t index, int threads) {
    const Job& job = jobs_[index];
    std::vector<std::string> arguments = {"--threads", std::to_string(threads), "--progress",
                                          "never"};
    if (options_.quiet) {
        arguments.emplace_back("--quiet");
    }
    arguments.insert(arguments.end(), job.arguments.begin(), job.arguments.end());
    try {
        processes_.start(static_cast<int>(index), program_, arguments);
    } catch (const Exception& exception) {
        fail(job, exception.message());
    }
}

void Batch::finish(const platform::ProcessEnd& end) {
    const Job& job = jobs_[static_cast<std::size_t>(end.id)];
    print(job, end.errorOutput);
    if (end.isErrorOutputCut) {
        print(job, "It had more to tell than is kept.");
    }
    if (!end.interruption.isEmpty()) {
        fail(job, "Its process " + end.interruption + ".");
        return;
    }
    ++(end.hasSucceeded ? done_ : failed_);  // a job that failed has said why
    showProgress();
}

void Batch::fail(const Job& job, const String& reason) {
    ++failed_;
    print(job, reason.toUtf8());
    showProgress();
}

void Batch::print(const Job& job, const std::string& text) {
    const std::string start = (options_.jobFile.native() + ", " + job.label + ": ").toUtf8();
    std::istringstream lines(text);
    std::string message;
    for (std::string line; std::getline(lines, line);) {
        message += line.empty() ? "" : start + line + '\n';
    }
    if (!message.empty()) {
        progress_.clear();
        std::cerr << Str::escapeControls(String::fromUtf8(message)).toUtf8() << std::flush;
    }
}

void Batch::showProgress() {
    const std::size_t finished = done_ + failed_ + skipped_;
    progress_.start(toText(finished) + " of " + toText(toDo_.size()) + " jobs");
}

void Batch::printSummary() const {
    std::cout << done_ << " done, " << failed_ << " failed, " << skipped_ << " skipped\n";
    if (!std::cout.flush()) {
        throw Exception("Standard output cannot be written.");
    }
}

}  // namespace

void runBatch(const BatchOptions& options) {
    const std::vector<Job> jobs = readJobs(options.jobFile);
    enterFolder(options.jobFile.parent());
    checkIndependent(options.jobFile, jobs);
    Scheduler::setThreadCount(options.threads);
    Batch batch(options, jobs);
    batch.run();
    batch.printSummary();
    if (batch.getFailedCount() != 0) {
        throw Exception("Of the jobs in \"" + options.jobFile.native() + "\", " +
                        toText(batch.getFailedCount()) + " failed.");
    }
}

}  // namespace tavrin::cli
