#include "cli/CommandLine.h"
#include "cli/Program.h"

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
        if (const auto options = tavrin::cli::parseCommandLine(argumentCount, arguments)) {
            tavrin::cli::run(*options);
        }
        return EXIT_SUCCESS;
    } catch (const tavrin::cli::UsageError& error) {
        printError(error.message());
        std::cerr << "tavrin-cli --help tells more.\n";
        return kWrongCommandLine;
    } catch (const std::exception& exception) {
        printError(tavrin::exceptionToString(exception));
        return EXIT_FAILURE;
    }
}
