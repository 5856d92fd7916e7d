#pragma once

namespace tavrin {
inline namespace foundation {
namespace Io {

/// A kind of files that a file dialog offers.
struct FileFilter {
    const char* description;
    const char* extension;  ///< without the dot

    static const FileFilter TAVRIN_SETTINGS_FILE;
};

inline constexpr FileFilter FileFilter::TAVRIN_SETTINGS_FILE{"Tavrin settings", "tvpost"};

}  // namespace Io
}  // namespace foundation
}  // namespace tavrin
