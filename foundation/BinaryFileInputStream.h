#pragma once

#include "foundation/platform/File.h"

#include <cstddef>
#include <cstdint>

namespace tavrin {
inline namespace foundation {

/// Reads the bytes of one file. Every failure throws an Exception that names the file. One thread
/// at a time.
class BinaryFileInputStream {
public:
    /// Opens the file; folders and devices are refused.
    explicit BinaryFileInputStream(const Path& path)
        : path_(path), file_(platform::File::openForReading(path)), size_(file_.getSize()) {}

    /// Reads exactly `bytes`; an end of the file before that is a failure.
    void read(void* buffer, std::size_t bytes);
    /// Position from the beginning, in bytes.
    std::uint64_t getPosition() const { return position_; }
    /// A position past the end of the file is a failure.
    void seek(std::uint64_t position);
    bool isAtEnd() const { return position_ >= size_; }
    /// Length of the file when it was opened, in bytes.
    std::uint64_t getSize() const { return size_; }
    const Path& getPath() const { return path_; }

private:
    [[noreturn]] void failAtEnd() const;

    Path path_;
    platform::File file_;
    std::uint64_t size_;
    std::uint64_t position_ = 0;
};

}  // namespace foundation
}  // namespace tavrin
