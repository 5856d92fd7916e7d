#pragma once

#include <cstddef>

namespace tavrin::tests {

/// What this process holds of the system, from /proc.
struct ProcessState {
    std::size_t residentBytes = 0;
    std::size_t openFiles = 0;
    std::size_t threads = 0;
};

ProcessState getProcessState();

}  // namespace tavrin::tests
