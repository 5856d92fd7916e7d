#pragma once

#include "services/imageio/BitDepth.h"
#include "services/imageio/ImageFormat.h"

#include <cstddef>
#include <cstdint>

/// The one function of the module that holds OpenImageIO, and what program and module say to each
/// other: plain data and functions that do not throw. The program provides the pixels and stores
/// the bytes of the file, so that the module touches neither pictures nor files.
namespace tavrin::imageio {

struct WritePictureRequest {
    ImageFormat format;
    /// In pixels, at least 1 × 1.
    int width;
    int height;
    /// 3 (red, green, blue) or 4 (and alpha).
    int channels;
    BitDepth bitDepth;
    /// Tags the file as sRGB where the format can say so.
    bool isSrgb;
    /// 1 to 100; only for formats that have a quality.
    int quality;
    /// UTF-8; empty for formats that have no choice.
    const char* compression;
    /// How many threads may work on the compression, at least 1.
    int threads;

    /// The first argument of the functions below.
    void* host;
    /// Fills `samples` with the rows [begin, end), top to bottom without gaps, as SampleEncoder
    /// lays them out. Rows are asked for once, in order. False ends the work.
    bool (*provideRows)(void* host, int begin, int end, void* samples) noexcept;
    /// Stores bytes of the file at a position from its beginning. False ends the work.
    bool (*storeBytes)(void* host, std::uint64_t position, const void* bytes,
                       std::size_t count) noexcept;
    /// Receives the reason (UTF-8, no full stop) of a failure that was not the host's.
    void (*receiveReason)(void* host, const char* reason) noexcept;
};

/// True when the whole file has been stored. May be called from any thread.
using WritePicture = bool (*)(const WritePictureRequest& request) noexcept;

/// The name under which the module exports it. The number counts changes of the request, so that a
/// module of another version is refused.
inline constexpr const char* kWritePictureSymbol = "tavrinWritePicture1";

}  // namespace tavrin::imageio
