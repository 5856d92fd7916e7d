#include "samples/CommandLine.h"
#include "samples/Program.h"

#include <cstdlib>
#include <iostream>

namespace {

void printError(const tavrin::String& message) {
    std::cerr << message.toUtf8() << '\n';
}

}  // namespace

int main(int argumentCount, char** arguments) {
    constexpr int kWrongCommandLine = 2;
    try {
        if (const auto line = tavrin::samples::parseCommandLine(argumentCount, arguments)) {
            tavrin::samples::run(*line);
        }
        return EXIT_SUCCESS;
    } catch (const tavrin::samples::UsageError& error) {
        printError(error.message());
        return kWrongCommandLine;
    } catch (const std::exception& exception) {
        printError(tavrin::exceptionToString(exception));
        return EXIT_FAILURE;
    }
}
