#pragma once

#include "foundation/Path.h"
#include "foundation/platform/TemporaryFile.h"

#include <memory>

namespace tavrin {
inline namespace foundation {

/// Lets a file appear whole or not at all: the caller writes to getPath(), and commit() puts what
/// has been written in the target's place. Without commit nothing of it remains and an existing
/// target is untouched. A target that is a device is written to directly. Failures throw an
/// Exception that names the target. One thread at a time.
class FileReplacement {
public:
    explicit FileReplacement(const Path& target);

    /// Where to write.
    const Path& getPath() const { return temporary_ ? temporary_->getPath() : target_; }
    /// Puts the file that has been written (and closed) in the target's place.
    void commit();

private:
    Path target_;
    std::unique_ptr<platform::TemporaryFile> temporary_;  // null for a device
};

}  // namespace foundation
}  // namespace tavrin
