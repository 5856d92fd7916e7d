#pragma once

#include "foundation/Path.h"
#include "foundation/String.h"

#include <cstddef>
#include <string>
#include <vector>

namespace tavrin {
inline namespace foundation {
namespace platform {

/// How a program that ran as a child process ended.
struct ProcessEnd {
    int id = 0;                 ///< what start() was given
    bool hasSucceeded = false;  ///< exit code 0
    /// "was ended by signal 9 (Killed)"; empty for a program that ended by itself.
    String interruption;
    /// What it printed on standard error: the first `kLargestErrorOutput` bytes of it.
    std::string errorOutput;
    bool isErrorOutputCut = false;
};

/// Child processes that run at the same time. They read nothing, what they print on standard output
/// is discarded, and what they print on standard error is kept. None outlives this process, however
/// it ends; interrupting it from the terminal interrupts them too. One thread for all calls, which
/// has to live as long as the processes.
class ProcessGroup {
public:
    static constexpr std::size_t kLargestErrorOutput = std::size_t{64} << 10;

    ProcessGroup() = default;
    ProcessGroup(const ProcessGroup&) = delete;
    ProcessGroup& operator=(const ProcessGroup&) = delete;
    /// Kills those that still run.
    ~ProcessGroup();

    /// Starts a program in the current folder. The arguments are the system's own bytes, without
    /// the program's name. Throws an Exception that names the program when it cannot be started.
    void start(int id, const Path& program, const std::vector<std::string>& arguments);
    std::size_t size() const { return processes_.size(); }
    /// Waits until one of them has ended; there has to be one.
    ProcessEnd waitForOne();

private:
    struct Process {
        int pid;
        int errorPipe;
        ProcessEnd end;
    };

    std::vector<Process> processes_;
};

}  // namespace platform
}  // namespace foundation
}  // namespace tavrin
