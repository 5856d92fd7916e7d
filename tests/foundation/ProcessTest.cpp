#include "foundation/Exception.h"
#include "foundation/platform/Process.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <map>

namespace tavrin::tests {
namespace {

using platform::ProcessEnd;
using platform::ProcessGroup;

const Path kShell = std::filesystem::path("/bin/sh");

TEST(Process, TellsHowProgramsEnded) {
    ProcessGroup group;
    group.start(1, kShell, {"-c", "echo kept >&2; echo discarded; cat"});
    group.start(2, kShell, {"-c", "echo \"$1\" >&2; exit 3", "sh", "an argument"});
    group.start(3, kShell, {"-c", "kill -KILL $$"});
    group.start(4, kShell, {"-c", "head -c 100000 /dev/zero | tr '\\0' x >&2"});
    std::map<int, ProcessEnd> ends;
    while (group.size() != 0) {
        const ProcessEnd end = group.waitForOne();
        ends[end.id] = end;
    }
    EXPECT_TRUE(ends[1].hasSucceeded);
    EXPECT_EQ(ends[1].errorOutput, "kept\n");
    EXPECT_FALSE(ends[2].hasSucceeded);
    EXPECT_EQ(ends[2].errorOutput, "an argument\n");
    EXPECT_TRUE(ends[2].interruption.isEmpty());
    EXPECT_FALSE(ends[3].hasSucceeded);
    EXPECT_EQ(ends[3].interruption, String("was ended by signal 9 (Killed)"));
    EXPECT_TRUE(ends[4].hasSucceeded);
    EXPECT_TRUE(ends[4].isErrorOutputCut);
    EXPECT_EQ(ends[4].errorOutput, std::string(ProcessGroup::kLargestErrorOutput, 'x'));
}

TEST(Process, NamesAProgramThatCannotBeStarted) {
    ProcessGroup group;
    try {
        group.start(1, Path(std::filesystem::path("/no/such/program")), {});
        FAIL() << "started";
    } catch (const Exception& exception) {
        EXPECT_EQ(
            exception.message(),
            String("Program \"/no/such/program\" cannot be started: No such file or directory."));
    }
    EXPECT_EQ(group.size(), 0u);
}

/// A pipe whose writing end every process inherits; reading ends when all of them have.
class LifeLine {
public:
    LifeLine() { EXPECT_EQ(pipe(ends_.data()), 0); }
    ~LifeLine() { close(ends_[0]); }

    /// Without the calling process.
    void waitForOthers() {
        close(ends_[1]);
        char byte = 0;
        EXPECT_EQ(read(ends_[0], &byte, 1), 0);
    }

private:
    std::array<int, 2> ends_{};
};

// Were a process left over, these would wait until the test's time is up.

TEST(Process, NoneOutlivesItsGroup) {
    LifeLine line;
    {
        ProcessGroup group;
        group.start(1, kShell, {"-c", "exec sleep 1000"});
        group.start(2, kShell, {"-c", "exec sleep 1000"});
    }
    line.waitForOthers();
}

TEST(Process, NoneOutlivesTheProcessThatStartedIt) {
    LifeLine line;
    const pid_t pid = fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
        ProcessGroup group;
        group.start(1, kShell, {"-c", "exec sleep 1000"});
        _exit(0);  // without the group's destructor
    }
    waitpid(pid, nullptr, 0);
    line.waitForOthers();
}

}  // namespace
}  // namespace tavrin::tests
