#include "foundation/ProgramMain.h"

#include <cstdlib>
#include <iostream>

namespace tavrin {
inline namespace foundation {

int runProgram(const char* program, const Function<void()>& body) {
    constexpr int kWrongCommandLine = 2;
    try {
        body();
        return EXIT_SUCCESS;
    } catch (const UsageError& error) {
        std::cerr << error.what() << '\n' << program << " --help tells more.\n";
        return kWrongCommandLine;
    } catch (const std::exception& exception) {
        std::cerr << exceptionToString(exception).toUtf8() << '\n';
        return EXIT_FAILURE;
    }
}

}  // namespace foundation
}  // namespace tavrin
