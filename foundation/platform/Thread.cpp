#include "foundation/platform/Thread.h"

#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

#include <string>

namespace tavrin {
inline namespace foundation {
namespace platform {
namespace {

thread_local String threadName;

}  // namespace

void setThreadName(const String& name) {
    // pthread_setname_np(3): 16 bytes with the terminating zero.
    constexpr std::size_t kSystemNameLength = 15;
    threadName = name;
    const std::string bytes = name.toUtf8();
    const std::size_t start =
        bytes.size() > kSystemNameLength ? bytes.size() - kSystemNameLength : 0;
    pthread_setname_np(pthread_self(), bytes.c_str() + start);
}

const String& getThreadName() {
    return threadName;
}

void setThreadPriority(int priority) {
    // Of a thread and not of the process, other than POSIX has it. Without the right to raise it,
    // it stays.
    setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), -priority);
}

}  // namespace platform
}  // namespace foundation
}  // namespace tavrin
