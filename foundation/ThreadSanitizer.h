#pragma once

#ifdef __SANITIZE_THREAD__
extern "C" {
void AnnotateIgnoreWritesBegin(const char* file, int line);
void AnnotateIgnoreWritesEnd(const char* file, int line);
}
#endif

namespace tavrin {
inline namespace foundation {
namespace threadsanitizer {

/// While one lives, the thread sanitizer takes the thread's writes as synchronised: for objects
/// that are handed to another thread by a library that is not built with the sanitizer. Empty in
/// other builds.
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
