#pragma once

#include "services/imageio/openimageio/WritePicture.h"

#include <OpenImageIO/filesystem.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

namespace tavrin::imageio {

/// Hands the bytes of a file to the program. The library only writes pictures from their beginning.
class HostFile : public OIIO::Filesystem::IOProxy {
public:
    HostFile(const std::string& name, const WritePictureRequest& request)
        : IOProxy(name, Write), request_(request) {}

    const char* proxytype() const override { return "tavrin"; }
    bool seek(std::int64_t offset) override {
        m_pos = offset;
        return offset >= 0;
    }
    std::size_t write(const void* bytes, std::size_t count) override {
        const std::size_t written = pwrite(bytes, count, m_pos);
        m_pos += static_cast<std::int64_t>(written);
        return written;
    }
    std::size_t pwrite(const void* bytes, std::size_t count, std::int64_t offset) override {
        // Some writers have nothing to write and no address of it.
        if (count == 0 ||
            !request_.storeBytes(request_.host, static_cast<std::uint64_t>(offset), bytes, count)) {
            return 0;
        }
        size_ = std::max(size_, static_cast<std::size_t>(offset) + count);
        return count;
    }
    std::size_t size() const override { return size_; }

private:
    const WritePictureRequest& request_;
    std::size_t size_ = 0;
};

}  // namespace tavrin::imageio
