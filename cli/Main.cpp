#include "cli/CommandLine.h"
#include "cli/Program.h"
#include "foundation/ProgramMain.h"

int main(int argumentCount, char** arguments) {
    return tavrin::runProgram("tavrin-cli", [&] {
        if (const auto options = tavrin::cli::parseCommandLine(argumentCount, arguments)) {
            tavrin::cli::run(*options);
        }
    });
}
