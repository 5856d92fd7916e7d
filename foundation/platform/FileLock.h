#pragma once

#include "foundation/Path.h"

namespace tavrin {
inline namespace foundation {
namespace platform {

/// Keeps other processes and threads that lock the same file waiting while it lives. The file is
/// made if needed and stays, empty. Throws an Exception that names it.
class FileLock {
public:
    explicit FileLock(const Path& path);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

private:
    int descriptor_;
};

}  // namespace platform
}  // namespace foundation
}  // namespace tavrin
