#pragma once

#include "foundation/Optional.h"
#include "foundation/Result.h"
#include "services/imageio/ImageFormat.h"

namespace tavrin::imageio {

/// The range of qualities: the smallest file, and the best picture.
inline constexpr int kLowestQuality = 1;
inline constexpr int kHighestQuality = 100;

/// What the user chose about a picture file. What is not set takes the format's default, so that
/// empty settings suit every format.
struct ImageSaveSettings {
    Optional<BitDepth> bitDepth;
    /// From kLowestQuality to kHighestQuality.
    Optional<int> quality;
    /// One of the format's compressions.
    Optional<String> compression;

    friend bool operator==(const ImageSaveSettings&, const ImageSaveSettings&) = default;
};

/// Something that a format gives a choice about, as setImageSaveOption takes it.
struct ImageSaveChoice {
    String key;                 ///< such as "bitdepth"
    std::vector<String> words;  ///< that it takes, the default first; none of a number
};

std::vector<ImageSaveChoice> getImageSaveChoices(const ImageFormatInfo& format);

/// Success when the format has everything that is set, or a sentence about the first thing that it
/// does not have.
Result<void> checkImageSaveSettings(const ImageSaveSettings& settings, ImageFormat format);

/// Sets one thing from text such as "bitdepth=16", "quality=90" or "compression=zip". A text that
/// the format does not accept changes nothing and fails with a sentence that says what it accepts.
Result<void> setImageSaveOption(ImageSaveSettings& settings, ImageFormat format,
                                const String& option);

}  // namespace tavrin::imageio
