#pragma once

#include "foundation/Path.h"

namespace tavrin {
inline namespace foundation {

/// Lets a file appear whole or not at all: the caller writes to getPath(), a new file with the same
/// extension in the target's folder, and commit() moves it to the target's place. Without commit
/// nothing of it remains and an existing target is untouched. A target that is a device is
/// written to directly. Failures throw an Exception that names the target. One thread at a time.
class FileReplacement {
public:
    explicit FileReplacement(const Path& target);

    /// Where to write.
    const Path& getPath() const { return written_; }
    /// Puts the file that has been written (and closed) in the target's place.
    void commit();

    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;
    ~FileReplacement();

private:
    Path target_;
    Path written_;
    bool pending_;
};

}  // namespace foundation
}  // namespace tavrin
