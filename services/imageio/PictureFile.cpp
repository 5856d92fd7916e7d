#include "services/imageio/PictureFile.h"

#include "foundation/Exception.h"
#include "foundation/Scheduler.h"

namespace tavrin::imageio {

String tellWriteFailure(const Path& path, const String& reason) {
    return "File \"" + path.native() + "\" cannot be written: " + reason +
           (reason.endsWith(".") ? "" : ".");
}

void PictureFile::write(WritePicture writer, WritePictureRequest request) {
    request.host = this;
    request.provideRows = [](void* host, int begin, int end, void* samples) noexcept {
        auto& file = *static_cast<PictureFile*>(host);
        return file.attempt([&] { file.provideRows(begin, end, samples); });
    };
    request.storeBytes = [](void* host, std::uint64_t position, const void* bytes,
                            std::size_t count) noexcept {
        auto& file = *static_cast<PictureFile*>(host);
        return file.attempt([&] { file.storeBytes(position, bytes, count); });
    };
    request.receiveReason = [](void* host, const char* reason) noexcept {
        auto& file = *static_cast<PictureFile*>(host);
        file.attempt([&] { file.fail(String::fromUtf8(reason).trimmed().replaced("\n", "; ")); });
    };
    const bool isWritten = writer(request);
    if (failure_) {
        std::rethrow_exception(failure_);
    }
    if (!isWritten) {
        fail("the picture library gave no reason");
    }
    stream_.commit();
    progress_.report(1.0f);
}

template <class Step>
bool PictureFile::attempt(const Step& step) noexcept {
    if (!failure_) {
        try {
            step();
        } catch (...) {
            failure_ = std::current_exception();
        }
    }
    return !failure_;
}

void PictureFile::provideRows(int begin, int end, void* samples) {
    if (progress_.isCancelled()) {
        fail("saving was cancelled");
    }
    progress_.report(static_cast<float>(begin) / static_cast<float>(encoder_.getRowCount()));
    const std::size_t rowBytes = encoder_.getRowBytes();
    Scheduler::defaultInstance().parallelFor(begin, end, TaskPriority::Normal, [&](std::int64_t y) {
        encoder_.encodeRow(static_cast<int>(y), static_cast<std::byte*>(samples) +
                                                    static_cast<std::size_t>(y - begin) * rowBytes);
    });
}

void PictureFile::storeBytes(std::uint64_t position, const void* bytes, std::size_t count) {
    if (position != position_) {
        stream_.seek(position);
    }
    stream_.write(bytes, count);
    position_ = position + count;
}

void PictureFile::fail(const String& reason) const {
    throw Exception(tellWriteFailure(path_, reason));
}

}  // namespace tavrin::imageio
