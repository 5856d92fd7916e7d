#include "foundation/BinaryFileInputStream.h"

#include "foundation/Exception.h"

#include <string>

namespace tavrin {
inline namespace foundation {

void BinaryFileInputStream::read(void* buffer, std::size_t bytes) {
    if (file_.read(buffer, bytes) != bytes) {
        failAtEnd();
    }
    position_ += bytes;
}

void BinaryFileInputStream::seek(std::uint64_t position) {
    if (position > size_) {
        failAtEnd();
    }
    file_.seek(position);
    position_ = position;
}

void BinaryFileInputStream::failAtEnd() const {
    throw Exception("File \"" + path_.native() + "\" ends before all of its data could be read.");
}

String readTextFile(const Path& path, std::uint64_t limit) {
    BinaryFileInputStream stream(path);
    if (stream.getSize() > limit) {
        throw Exception("File \"" + path.native() + "\" is too long for a text of its kind.");
    }
    std::string text(stream.getSize(), '\0');
    stream.read(text.data(), text.size());
    return String::fromUtf8(text);
}

}  // namespace foundation
}  // namespace tavrin
