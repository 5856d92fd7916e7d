#pragma once

#include "foundation/FileReplacement.h"
#include "foundation/platform/File.h"

#include <cstddef>
#include <cstdint>

namespace tavrin {
inline namespace foundation {

/// Writes one file, which appears whole at commit() or not at all. Every failure throws an
/// Exception that names the file. One thread at a time.
class BinaryFileOutputStream {
public:
    explicit BinaryFileOutputStream(const Path& path);

    void write(const void* buffer, std::size_t bytes);
    /// Position from the beginning, in bytes.
    std::uint64_t getPosition();
    void seek(std::uint64_t position);
    /// Closes the file and puts it in place; nothing can be written afterwards.
    void commit();

private:
    FileReplacement replacement_;
    platform::File file_;
};

}  // namespace foundation
}  // namespace tavrin
