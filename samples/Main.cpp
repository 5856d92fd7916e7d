#include "foundation/ProgramMain.h"
#include "samples/CommandLine.h"
#include "samples/Program.h"

int main(int argumentCount, char** arguments) {
    return tavrin::runProgram("tavrin-sample", [&] {
        if (const auto line = tavrin::samples::parseCommandLine(argumentCount, arguments)) {
            tavrin::samples::run(*line);
        }
    });
}
