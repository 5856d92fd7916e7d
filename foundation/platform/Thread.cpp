#include "foundation/platform/Thread.h"

#include <pthread.h>

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

}  // namespace platform
}  // namespace foundation
}  // namespace tavrin
