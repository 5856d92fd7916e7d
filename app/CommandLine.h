#pragma once

#include "foundation/String.h"

#include <exception>
#include <vector>

namespace tavrin::app {

/// Ends the program with an exit code.
class ExitApplicationException : public std::exception {
public:
    explicit ExitApplicationException(int exitCode) : exitCode_(exitCode) {}
    int getExitCode() const { return exitCode_; }

private:
    int exitCode_;
};

/// The arguments without the program's own name. Answers --help and --version, and then throws an
/// ExitApplicationException. Throws a UsageError for other options.
std::vector<String> prepareCommandLine(int argumentCount, const char* const* arguments);

}  // namespace tavrin::app
