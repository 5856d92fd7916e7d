#pragma once

// For objects that are handed to another thread by a library that is not built with the thread
// sanitizer, which therefore does not see that the hand-over orders what the threads do. Empty in
// other builds.

#ifdef __SANITIZE_THREAD__
#include <sanitizer/tsan_interface.h>

extern "C" {
void AnnotateIgnoreWritesBegin(const char* file, int line);
void AnnotateIgnoreWritesEnd(const char* file, int line);
}
#endif

namespace tavrin {
inline namespace foundation {
namespace threadsanitizer {

/// What this thread has done so far happens before what follows receive(object) on another thread.
inline void send([[maybe_unused]] void* object) {
#ifdef __SANITIZE_THREAD__
    __tsan_release(object);
#endif
}

inline void receive([[maybe_unused]] void* object) {
#ifdef __SANITIZE_THREAD__
    __tsan_acquire(object);
#endif
}

/// While one lives, the thread's writes are taken as synchronised.
class IgnoredWrites {
public:
#ifdef __SANITIZE_THREAD__
    IgnoredWrites() {
        AnnotateIgnoreWritesBegin(__FILE__, __LINE__);
    }
    ~IgnoredWrites() {
        AnnotateIgnoreWritesEnd(__FILE__, __LINE__);
    }
#else
    IgnoredWrites() {}
    ~IgnoredWrites() {}
#endif
    IgnoredWrites(const IgnoredWrites&) = delete;
    IgnoredWrites& operator=(const IgnoredWrites&) = delete;
};

}  // namespace threadsanitizer
}  // namespace foundation
}  // namespace tavrin
