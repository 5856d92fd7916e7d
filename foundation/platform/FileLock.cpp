#include "foundation/platform/FileLock.h"

#include "foundation/Exception.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

namespace tavrin {
inline namespace foundation {
namespace platform {

FileLock::FileLock(const Path& path)
    : descriptor_(open(path.std().c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666)) {
    int answer = -1;
    if (descriptor_ >= 0) {
        do {
            answer = flock(descriptor_, LOCK_EX);
        } while (answer != 0 && errno == EINTR);
    }
    if (answer != 0) {
        if (descriptor_ >= 0) {
            close(descriptor_);
        }
        throw Exception("File \"" + path.native() + "\" cannot be locked.");
    }
}

FileLock::~FileLock() {
    close(descriptor_);
}

}  // namespace platform
}  // namespace foundation
}  // namespace tavrin
