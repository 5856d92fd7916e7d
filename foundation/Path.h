#pragma once

#include "foundation/String.h"

#include <filesystem>

namespace tavrin {
inline namespace foundation {

/// A file-system path. Keeps the operating system's own bytes, so that every existing file can be
/// named, also one whose name is not valid UTF-8; such bytes show as U+FFFD in the texts.
class Path {
public:
    Path() = default;
    Path(std::filesystem::path path) : path_(std::move(path)) {}
    explicit Path(const String& text);

    bool isEmpty() const { return path_.empty(); }
    /// The text with the system's own separators, as users know it.
    String native() const;
    /// The text with forward slashes.
    String generic() const;
    /// The last component with its extension ("render.v2.exr"), empty for a folder's path.
    String fileName() const;
    /// The file name without its extension ("render.v2").
    String stem() const;
    /// The text after the file name's last dot, without the dot ("exr"), empty without one.
    String extension() const;
    /// The folder part, empty for a bare file name.
    Path parent() const { return path_.parent_path(); }
    Path operator/(const String& component) const;
    /// The same folder with another file name.
    Path withFileName(const String& fileName) const;

    /// For calls of the standard library.
    const std::filesystem::path& std() const { return path_; }

    friend bool operator==(const Path&, const Path&) = default;

private:
    std::filesystem::path path_;
};

}  // namespace foundation
}  // namespace tavrin
