#include "cli/SharedFiles.h"

#include "cli/WorkFiles.h"
#include "foundation/Exception.h"

#include <filesystem>
#include <map>

namespace tavrin::cli {
namespace {

/// Without those that only the image tells, when it cannot be read: the job will fail.
std::vector<Path> getKnownOutputs(const Options& options) {
    try {
        return getOutputs(options);
    } catch (const Exception&) {
        return getNamedOutputs(options);
    }
}

}  // namespace

Optional<SharedFile> findSharedFile(const std::vector<Optional<Options>>& jobs) {
    std::map<std::filesystem::path, std::size_t> writers;
    const auto findOther = [&writers](const Path& path, std::size_t job) -> Optional<std::size_t> {
        const auto writer = writers.find(toCanonical(path));
        const bool isOther = writer != writers.end() && writer->second != job;
        return isOther ? Optional<std::size_t>(writer->second) : std::nullopt;
    };
    for (std::size_t job = 0; job < jobs.size(); ++job) {
        for (const Path& path : jobs[job] ? getKnownOutputs(*jobs[job]) : std::vector<Path>()) {
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
