#include "foundation/ProgramMain.h"

#include "foundation/Text.h"
#include "foundation/platform/File.h"

#include <cstdlib>
#include <iostream>

namespace tavrin {
inline namespace foundation {

namespace {

void printError(const std::exception& exception) {
    std::cerr << Str::escapeControls(exceptionToString(exception)).toUtf8() << '\n';
}

}  // namespace

int runProgram(const char* program, const Function<void()>& body) {
    constexpr int kWrongCommandLine = 2;
    platform::reportFileSizeLimitAsError();
    try {
        body();
        return EXIT_SUCCESS;
    } catch (const UsageError& error) {
        printError(error);
        std::cerr << program << " --help tells more.\n";
        return kWrongCommandLine;
    } catch (const std::exception& exception) {
        printError(exception);
        return EXIT_FAILURE;
    }
}

}  // namespace foundation
}  // namespace tavrin
