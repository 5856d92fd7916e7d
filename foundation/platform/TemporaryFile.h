#pragma once

#include "foundation/Path.h"

namespace tavrin {
inline namespace foundation {
namespace platform {

/// A new file in the folder of a target, with the access rights that the target has or would get,
/// which takes the target's place or is gone at the end. Where the file system can do that it has
/// no name until then, so that nothing of it remains even if the program is killed. A target that
/// is a symbolic link stands for the file that it points to. Failures throw an Exception that names
/// the target. One thread at a time.
class TemporaryFile {
public:
    explicit TemporaryFile(const Path& target);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    /// What to open for writing.
    const Path& getPath() const { return path_; }
    /// Puts the file in the target's place, in one step.
    void replaceTarget();

private:
    bool createUnnamed(unsigned mode);
    void createNamed(unsigned mode);
    void giveName();
    Path makeName() const;
    [[noreturn]] void fail() const;

    Path shownTarget_;
    Path target_;
    Path path_;
    int descriptor_ = -1;
    bool isNamed_ = false;
    bool isReplacing_ = false;  // a file that is there
};

}  // namespace platform
}  // namespace foundation
}  // namespace tavrin
