#include "foundation/Path.h"

namespace tavrin {
inline namespace foundation {
namespace {

std::filesystem::path toStd(const String& text) {
    const std::string utf8 = text.toUtf8();
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

String toString(const std::u8string& utf8) {
    return String::fromUtf8({reinterpret_cast<const char*>(utf8.data()), utf8.size()});
}

}  // namespace

Path::Path(const String& text) : path_(toStd(text)) {}

String Path::native() const {
    return toString(path_.u8string());
}

String Path::generic() const {
    return toString(path_.generic_u8string());
}

String Path::fileName() const {
    return toString(path_.filename().u8string());
}

String Path::stem() const {
    return toString(path_.stem().u8string());
}

String Path::extension() const {
    const String dotted = toString(path_.extension().u8string());
    return dotted.isEmpty() ? dotted : dotted.substring(1);
}

Path Path::operator/(const String& component) const {
    return path_ / toStd(component);
}

Path Path::withFileName(const String& fileName) const {
    return path_.parent_path() / toStd(fileName);
}

}  // namespace foundation
}  // namespace tavrin
