#pragma once

#include "foundation/BinaryFileInputStream.h"
#include "foundation/BinaryFileOutputStream.h"

#include <ImfIO.h>

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

/// Lets the OpenEXR library write to our file stream, which outlives the adapter.
class ExrOStreamAdapter final : public Imf::OStream {
public:
    ExrOStreamAdapter(const char* fileName, BinaryFileOutputStream& stream)
        : Imf::OStream(fileName), stream_(stream) {}

    void write(const char buffer[], int count) override {
        stream_.write(buffer, static_cast<std::size_t>(count));
    }
    std::uint64_t tellp() override { return stream_.getPosition(); }
    void seekp(std::uint64_t position) override { stream_.seek(position); }

private:
    BinaryFileOutputStream& stream_;
};

}  // namespace tavrin::image
