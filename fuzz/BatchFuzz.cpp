// Texts of job files: every job that is read is taken or refused by the command line's own parser,
// and asks for nothing but work.

#include "cli/BatchFile.h"
#include "cli/CommandLine.h"
#include "cli/WorkFiles.h"
#include "foundation/FatalError.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace tavrin::cli {
namespace {

void require(bool condition, const char* reason) {
    if (!condition) {
        fatalError(reason);
    }
}

void checkJob(const std::vector<std::string>& arguments) {
    std::vector<const char*> pointers = {"tavrin-cli"};
    std::ranges::transform(arguments, std::back_inserter(pointers), &std::string::c_str);
    try {
        const auto options = parseCommandLine(static_cast<int>(pointers.size()), pointers.data());
        require(options.has_value(), "A job asks for help.");
        require(!getNamedOutputs(*options).empty(), "A job saves nothing.");
        require(!options->info && !options->listElements && options->threads == 0,
                "A job has an option that is not for jobs.");
    } catch (const UsageError&) {
    }
}

}  // namespace
}  // namespace tavrin::cli

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tavrin;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto jobs = cli::readBatchText(String::fromUtf8(bytes));
    if (!jobs) {
        return 0;
    }
    cli::require(!jobs->empty(), "A list of jobs is empty.");
    for (const cli::BatchJob& job : *jobs) {
        if (job.arguments) {
            cli::checkJob(*job.arguments);
        }
    }
    return 0;
}
