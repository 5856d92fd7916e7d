#pragma once

#include "foundation/String.h"

#include <utility>
#include <vector>

namespace tavrin {
inline namespace foundation {

/// Whether the program runs for those who develop it: the environment variable TAVRIN_DEVELOPMENT
/// is set. Decided at the first call. Any thread.
bool isDevelopmentEnviro();

/// Tells developers, on standard error, what a part of the program does. Any thread.
class DebugLogger {
public:
    /// Names with their values, in the order in which they are told.
    using Record = std::vector<std::pair<String, String>>;

    /// `source` names the class or function that tells.
    explicit DebugLogger(const char* source) : source_(source) {}

    void debug(const String& message, const Record& record = {}) const;

private:
    const char* source_;
};

}  // namespace foundation
}  // namespace tavrin
