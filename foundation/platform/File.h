#pragma once

#include "foundation/Path.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>

namespace tavrin {
inline namespace foundation {
namespace platform {

/// An open regular file with buffering and 64-bit positions. Every failure throws an Exception that
/// names the file. One thread at a time.
class File {
public:
    /// Opens an existing file for reading; folders and devices are refused.
    static File openForReading(const Path& path);
    /// Opens for writing and reading, empty; an existing file is emptied. Failures name
    /// `shownPath`, which differs from `path` where a temporary file stands for another.
    static File create(const Path& path, const Path& shownPath);

    /// Reads up to `bytes` and answers how many there were before the end of the file.
    std::size_t read(void* buffer, std::size_t bytes);
    void write(const void* buffer, std::size_t bytes);
    /// From the beginning.
    void seek(std::uint64_t position);
    std::uint64_t getPosition();
    /// In bytes, of the file as it was opened.
    std::uint64_t getSize() const;
    /// Writes out what is buffered and closes; the file object is then of no more use.
    void close();

    File(File&& other) noexcept;
    File& operator=(File&&) = delete;
    ~File();

private:
    File(Path path, std::FILE* handle, const char* failure)
        : path_(std::move(path)), handle_(handle), failure_(failure) {}

    Path path_;
    std::FILE* handle_;
    /// What to say when moving about in the file fails, which may write out what is buffered.
    const char* failure_;
};

/// Throws an Exception that names `target` when a file of that name cannot be written: a folder, a
/// write-protected file, an impossible name, a folder that is missing or write-protected.
void checkWritable(const Path& target);

/// True for an existing thing that is neither a regular file nor a folder (/dev/null, a pipe).
bool isDevice(const Path& path);

/// Lets a write beyond the limit on file sizes fail like one to a full disk, instead of ending the
/// program.
void reportFileSizeLimitAsError();

}  // namespace platform
}  // namespace foundation
}  // namespace tavrin
