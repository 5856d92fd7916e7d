#include "tests/soak/ProcessState.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace tavrin::tests {
namespace {

namespace fs = std::filesystem;

std::size_t getResidentBytes() {
    std::ifstream file("/proc/self/statm");
    std::size_t all = 0;
    std::size_t resident = 0;
    file >> all >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

std::size_t countEntries(const char* folder) {
    const fs::directory_iterator entries(folder);
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

}  // namespace

ProcessState getProcessState() {
    return {getResidentBytes(), countEntries("/proc/self/fd"), countEntries("/proc/self/task")};
}

}  // namespace tavrin::tests
