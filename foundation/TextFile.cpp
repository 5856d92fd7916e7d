#include "foundation/TextFile.h"

#include "foundation/BinaryFileInputStream.h"
#include "foundation/Exception.h"

#include <string>
#include <string_view>

namespace tavrin {
inline namespace foundation {

Result<String> readTextFile(const Path& path, std::uint64_t largestSize) try {
    BinaryFileInputStream stream(path);
    if (stream.getSize() > largestSize) {
        return Failure("File \"" + path.native() + "\" is too long for a text of its kind.");
    }
    std::string text(stream.getSize(), '\0');
    stream.read(text.data(), text.size());
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    const std::size_t start = text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
    return String::fromUtf8(std::string_view(text).substr(start));
} catch (const Exception& exception) {
    return Failure(exception.message());
}

}  // namespace foundation
}  // namespace tavrin
