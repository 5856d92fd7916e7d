#pragma once

#include "base/image/Exr.h"
#include "foundation/Exception.h"

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <string>

namespace tavrin::bench {

inline image::ChannelImage loadOrThrow(const std::string& file) {
    Result<image::ChannelImage> image = image::ExrLoader().load(Path(std::filesystem::path(file)));
    if (!image) {
        throw Exception(image.error());
    }
    return *std::move(image);
}

inline void saveOrThrow(const image::ChannelImage& image, const std::string& file) {
    const Result<void> saved = image::ExrSaver().save(image, Path(std::filesystem::path(file)));
    if (!saved) {
        throw Exception(saved.error());
    }
}

inline std::string getTemporaryFile(const std::string& name) {
    return std::filesystem::temp_directory_path() / name;
}

/// Gives every channel values that compress about as well as those of renders: smooth, with noise
/// in the lower bits. They are not negative, and others for another seed.
inline void fillLikeRender(image::ChannelImage& image, std::uint32_t seed = 1) {
    const Pixel size = image.getDataWindow().size();
    std::uint32_t noise = seed;
    float phase = 0.0f;
    for (const auto& [name, item] : image.getChannels()) {
        phase += 0.7f;
        float* values = image.getChannel<float>(name).getData();
        for (int y = 0; y < size.y; ++y) {
            const float wave = 1.0f + std::sin(phase + 0.003f * float(y));
            for (int x = 0; x < size.x; ++x) {
                noise = noise * 1664525u + 1013904223u;
                *values++ = wave * (1.0f + 1e-3f * float(noise >> 24)) + 0.0005f * float(x);
            }
        }
    }
}

}  // namespace tavrin::bench
