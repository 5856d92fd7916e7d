#include "cli/Batch.h"
#include "cli/BatchCommandLine.h"
#include "cli/CommandLine.h"
#include "cli/Program.h"
#include "foundation/ProgramMain.h"

#include <string_view>

namespace {

using namespace tavrin;

int runBatchCommand(int argumentCount, char** arguments) {
    return runProgram("tavrin-cli batch", [&] {
        if (const auto options = cli::parseBatchCommandLine(argumentCount, arguments)) {
            cli::runBatch(*options);
        }
    });
}

}  // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount > 1 && std::string_view(arguments[1]) == "batch") {
        return runBatchCommand(argumentCount - 1, arguments + 1);
    }
    return runProgram("tavrin-cli", [&] {
        if (const auto options = cli::parseCommandLine(argumentCount, arguments)) {
            cli::run(*options);
        }
    });
}
