#pragma once

#include "foundation/Exception.h"
#include "foundation/Function.h"

namespace tavrin {
inline namespace foundation {

/// A command line that cannot be carried out as it stands.
class UsageError : public Exception {
public:
    using Exception::Exception;
};

/// What `main` of every program does: runs the body and answers the exit code, 0 when
/// it is done, 1 after an exception, 2 after a UsageError. The exception's text goes to standard
/// error; `program` is the name of the program, for the hint at its --help.
int runProgram(const char* program, const Function<void()>& body);

}  // namespace foundation
}  // namespace tavrin
