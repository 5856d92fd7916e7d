#pragma once

#include "foundation/BinaryFileInputStream.h"
#include "foundation/BinaryFileOutputStream.h"

#include <ImfIO.h>

#include <exception>

namespace tavrin::image {

/// Lets the OpenEXR library read from our file stream, which outlives the adapter.
class ExrIStreamAdapter final : public Imf::IStream {
public:
    /// `fileName` is UTF-8 and appears in the library's messages.
    ExrIStreamAdapter(const char* fileName, BinaryFileInputStream& stream)
        : Imf::IStream(fileName), stream_(stream) {}

    /// True while the stream is not at its end. Throws when there are fewer than `count` bytes.
    bool read(char buffer[], int count) override {
        stream_.read(buffer, static_cast<std::size_t>(count));
        return !stream_.isAtEnd();
    }
    std::uint64_t tellg() override { return stream_.getPosition(); }
    void seekg(std::uint64_t position) override { stream_.seek(position); }

private:
    BinaryFileInputStream& stream_;
};

/// Lets the OpenEXR library write to our file stream, which outlives the adapter. Remembers the
/// first failure, since the library passes over those that it meets while it closes a file.
class ExrOStreamAdapter final : public Imf::OStream {
public:
    ExrOStreamAdapter(const char* fileName, BinaryFileOutputStream& stream)
        : Imf::OStream(fileName), stream_(stream) {}

    void write(const char buffer[], int count) override {
        remember([&] { stream_.write(buffer, static_cast<std::size_t>(count)); });
    }
    std::uint64_t tellp() override {
        return remember([&] { return stream_.getPosition(); });
    }
    void seekp(std::uint64_t position) override {
        remember([&] { stream_.seek(position); });
    }
    /// Throws the first failure again.
    void checkFailure() const {
        if (failure_) {
            std::rethrow_exception(failure_);
        }
    }

private:
    template <class Action>
    auto remember(const Action& action) -> decltype(action()) {
        try {
            return action();
        } catch (...) {
            if (!failure_) {
                failure_ = std::current_exception();
            }
            throw;
        }
    }

    BinaryFileOutputStream& stream_;
    std::exception_ptr failure_;
};

}  // namespace tavrin::image
