#include "foundation/BinaryFileInputStream.h"

#include "foundation/Exception.h"

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

}  // namespace foundation
}  // namespace tavrin
