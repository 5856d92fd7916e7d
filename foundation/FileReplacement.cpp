#include "foundation/FileReplacement.h"

#include "foundation/platform/File.h"

namespace tavrin {
inline namespace foundation {

FileReplacement::FileReplacement(const Path& target) : target_(target) {
    platform::checkWritable(target);
    if (!platform::isDevice(target)) {
        temporary_ = std::make_unique<platform::TemporaryFile>(target);
    }
}

void FileReplacement::commit() {
    if (temporary_) {
        temporary_->replaceTarget();
    }
}

}  // namespace foundation
}  // namespace tavrin
