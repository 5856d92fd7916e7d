#include "foundation/FileReplacement.h"

#include "foundation/platform/File.h"

namespace tavrin {
inline namespace foundation {

FileReplacement::FileReplacement(const Path& target) : target_(target), pending_(false) {
    platform::checkWritable(target);
    if (platform::isDevice(target)) {
        written_ = target;
        return;
    }
    written_ = platform::createTemporaryBeside(target);
    pending_ = true;
}

void FileReplacement::commit() {
    if (pending_) {
        platform::replaceFile(written_, target_);
        pending_ = false;
    }
}

FileReplacement::~FileReplacement() {
    if (pending_) {
        platform::removeFile(written_);
    }
}

}  // namespace foundation
}  // namespace tavrin
