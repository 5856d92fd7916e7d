#pragma once

#include "foundation/Path.h"

#include <OpenImageIO/imageio.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

namespace tavrin::imageio {

/// A file as OpenImageIO reads it, with the colours as they are stored.
struct ReadPicture {
    OIIO::ImageSpec spec;
    std::vector<float> samples;

    float at(std::size_t pixel, int channel) const {
        return samples[pixel * static_cast<std::size_t>(spec.nchannels) +
                       static_cast<std::size_t>(channel)];
    }
    int getBits() const {
        return spec.get_int_attribute("oiio:BitsPerSample",
                                      static_cast<int>(spec.format.size()) * 8);
    }
};

/// Fails the test when the file cannot be read.
inline ReadPicture readPicture(const Path& path) {
    OIIO::ImageSpec hints;
    hints.attribute("oiio:UnassociatedAlpha", 1);
    const auto input = OIIO::ImageInput::open(path.std().string(), &hints);
    if (!input) {
        ADD_FAILURE() << OIIO::geterror();
        return {};
    }
    ReadPicture picture{input->spec(), {}};
    picture.samples.resize(picture.spec.image_pixels() *
                           static_cast<std::size_t>(picture.spec.nchannels));
    EXPECT_TRUE(input->read_image(0, 0, 0, picture.spec.nchannels, OIIO::TypeDesc::FLOAT,
                                  picture.samples.data()));
    return picture;
}

}  // namespace tavrin::imageio
