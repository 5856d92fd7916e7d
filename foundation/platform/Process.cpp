#include "foundation/platform/Process.h"

#include "foundation/Exception.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <system_error>
#include <utility>

namespace tavrin {
inline namespace foundation {
namespace platform {
namespace {

[[noreturn]] void fail(const Path& program, int error) {
    const std::error_code code(error, std::generic_category());
    throw Exception("Program \"" + program.native() +
                    "\" cannot be started: " + String::fromUtf8(code.message()) + ".");
}

/// A pipe whose ends close with the object and are not inherited.
class Pipe {
public:
    explicit Pipe(const Path& program) {
        if (pipe2(ends_.data(), O_CLOEXEC) != 0) {
            fail(program, errno);
        }
    }
    ~Pipe() {
        close(releaseReadEnd());
        closeWriteEnd();
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    int getReadEnd() const { return ends_[0]; }
    int getWriteEnd() const { return ends_[1]; }
    int releaseReadEnd() { return std::exchange(ends_[0], -1); }
    void closeWriteEnd() { close(std::exchange(ends_[1], -1)); }

private:
    std::array<int, 2> ends_{};
};

ssize_t readRetrying(int descriptor, void* buffer, std::size_t bytes) {
    ssize_t count = 0;
    do {
        count = read(descriptor, buffer, bytes);
    } while (count < 0 && errno == EINTR);
    return count;
}

int waitFor(pid_t pid) {
    int status = 0;
    while (waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

/// Becomes the program, in the child: only calls that are safe after a fork. The number of the
/// error that prevents it goes to `failurePipe`, which closes where nothing does.
[[noreturn]] void becomeProgram(const char* program, char* const* arguments, pid_t parent,
                                int errorPipe, int failurePipe) {
    // The parent may have ended before its end could be heard of.
    bool isReady = prctl(PR_SET_PDEATHSIG, SIGKILL) == 0 && getppid() == parent;
    const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
    isReady = isReady && nothing >= 0 && dup2(nothing, STDIN_FILENO) >= 0 &&
              dup2(nothing, STDOUT_FILENO) >= 0 && dup2(errorPipe, STDERR_FILENO) >= 0;
    if (isReady) {
        execv(program, arguments);
    }
    const int error = errno;
    [[maybe_unused]] const ssize_t written = write(failurePipe, &error, sizeof(error));
    _exit(EXIT_FAILURE);
}

/// Takes what there is; false at the end.
bool readErrorOutput(int pipe, ProcessEnd& end) {
    std::array<char, 4096> buffer{};
    const ssize_t count = readRetrying(pipe, buffer.data(), buffer.size());
    if (count <= 0) {
        return false;
    }
    const std::size_t room = ProcessGroup::kLargestErrorOutput - end.errorOutput.size();
    const std::size_t kept = std::min(room, static_cast<std::size_t>(count));
    end.errorOutput.append(buffer.data(), kept);
    end.isErrorOutputCut = end.isErrorOutputCut || kept < static_cast<std::size_t>(count);
    return true;
}

void readStatus(int status, ProcessEnd& end) {
    end.hasSucceeded = WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS;
    if (WIFSIGNALED(status)) {
        const int signal = WTERMSIG(status);
        end.interruption = "was ended by signal " + String::fromUtf8(std::to_string(signal)) +
                           " (" + String(strsignal(signal)) + ")";
    }
}

}  // namespace

ProcessGroup::~ProcessGroup() {
    for (const Process& process : processes_) {
        kill(process.pid, SIGKILL);
        waitFor(process.pid);
        close(process.errorPipe);
    }
}

void ProcessGroup::start(int id, const Path& program, const std::vector<std::string>& arguments) {
    std::vector<std::string> texts = arguments;
    texts.insert(texts.begin(), program.std().string());
    std::vector<char*> pointers;
    std::ranges::transform(texts, std::back_inserter(pointers),
                           [](std::string& text) { return text.data(); });
    pointers.push_back(nullptr);

    Pipe errors(program);
    Pipe failure(program);
    const pid_t parent = getpid();
    const pid_t pid = fork();
    if (pid < 0) {
        fail(program, errno);
    }
    if (pid == 0) {
        becomeProgram(pointers.front(), pointers.data(), parent, errors.getWriteEnd(),
                      failure.getWriteEnd());
    }
    failure.closeWriteEnd();
    int error = 0;
    if (readRetrying(failure.getReadEnd(), &error, sizeof(error)) == sizeof(error)) {
        waitFor(pid);
        fail(program, error);
    }
    processes_.push_back({pid, errors.releaseReadEnd(), {}});
    processes_.back().end.id = id;
}

ProcessEnd ProcessGroup::waitForOne() {
    while (true) {
        std::vector<pollfd> pipes;
        std::ranges::transform(processes_, std::back_inserter(pipes), [](const Process& process) {
            return pollfd{process.errorPipe, POLLIN, 0};
        });
        if (poll(pipes.data(), pipes.size(), -1) < 0) {
            if (errno == EINTR) {
                continue;
            }
            const std::error_code code(errno, std::generic_category());
            throw Exception("Processes cannot be waited for: " + String::fromUtf8(code.message()) +
                            ".");
        }
        for (std::size_t i = 0; i < pipes.size(); ++i) {
            Process& process = processes_[i];
            if (pipes[i].revents == 0 || readErrorOutput(process.errorPipe, process.end)) {
                continue;
            }
            close(process.errorPipe);
            readStatus(waitFor(process.pid), process.end);
            ProcessEnd end = std::move(process.end);
            processes_.erase(processes_.begin() + static_cast<std::ptrdiff_t>(i));
            return end;
        }
    }
}

}  // namespace platform
}  // namespace foundation
}  // namespace tavrin
