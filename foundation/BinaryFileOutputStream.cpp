#include "foundation/BinaryFileOutputStream.h"

namespace tavrin {
inline namespace foundation {

BinaryFileOutputStream::BinaryFileOutputStream(const Path& path)
    : replacement_(path), file_(platform::File::create(replacement_.getPath(), path)) {}

void BinaryFileOutputStream::write(const void* buffer, std::size_t bytes) {
    file_.write(buffer, bytes);
}

std::uint64_t BinaryFileOutputStream::getPosition() {
    return file_.getPosition();
}

void BinaryFileOutputStream::seek(std::uint64_t position) {
    file_.seek(position);
}

void BinaryFileOutputStream::commit() {
    file_.close();
    replacement_.commit();
}

}  // namespace foundation
}  // namespace tavrin
