#include "services/imageio/ImageSaveSettings.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace tavrin::imageio {
namespace {

String join(const std::vector<String>& words) {
    String text;
    for (const String& word : words) {
        text += (text.isEmpty() ? "" : ", ") + word;
    }
    return text;
}

Failure notAllowed(const ImageFormatInfo& info, const String& key, const String& value,
                   const String& allowed) {
    return Failure("Format \"" + info.name + "\" does not accept " + key + "=" + value +
                   "; it accepts " + allowed + ".");
}

Result<void> checkBitDepth(const ImageFormatInfo& info, Optional<BitDepth> depth,
                           const String& text) {
    std::vector<String> allowed;
    for (const BitDepth candidate : info.bitDepths) {
        if (candidate == depth) {
            return {};
        }
        allowed.push_back(toString(candidate));
    }
    return notAllowed(info, "bitdepth", text, join(allowed));
}

Result<void> checkQuality(const ImageFormatInfo& info, Optional<int> quality, const String& text) {
    if (info.quality && quality && *quality >= kLowestQuality && *quality <= kHighestQuality) {
        return {};
    }
    return notAllowed(info, "quality", text, info.quality ? "1 to 100" : "no quality");
}

Result<void> checkCompression(const ImageFormatInfo& info, const String& compression) {
    if (std::ranges::find(info.compressions, compression) != info.compressions.end()) {
        return {};
    }
    return notAllowed(info, "compression", compression,
                      info.compressions.empty() ? "no compression" : join(info.compressions));
}

Optional<int> parseInteger(const String& text) {
    const std::string utf8 = text.toUtf8();
    int value = 0;
    const auto [end, error] = std::from_chars(utf8.data(), utf8.data() + utf8.size(), value);
    if (error != std::errc() || end != utf8.data() + utf8.size()) {
        return {};
    }
    return value;
}

std::vector<String> getKeys(const ImageFormatInfo& info) {
    std::vector<String> keys;
    std::ranges::transform(getImageSaveChoices(info), std::back_inserter(keys),
                           &ImageSaveChoice::key);
    return keys;
}

Failure unknownKey(const ImageFormatInfo& info, const String& key) {
    const std::vector<String> keys = getKeys(info);
    return Failure("Format \"" + info.name + "\" has no option \"" + key + "\"; it has " +
                   (keys.empty() ? "none" : join(keys)) + ".");
}

}  // namespace

std::vector<ImageSaveChoice> getImageSaveChoices(const ImageFormatInfo& format) {
    std::vector<ImageSaveChoice> choices;
    if (format.bitDepths.size() > 1) {
        std::vector<String> words;
        std::ranges::transform(format.bitDepths, std::back_inserter(words), toString);
        choices.push_back({"bitdepth", std::move(words)});
    }
    if (format.quality) {
        choices.push_back({"quality", {}});
    }
    if (!format.compressions.empty()) {
        choices.push_back({"compression", format.compressions});
    }
    return choices;
}

Result<void> checkImageSaveSettings(const ImageSaveSettings& settings, ImageFormat format) {
    const ImageFormatInfo& info = getImageFormatInfo(format);
    Result<void> checked;
    if (settings.bitDepth) {
        checked = checkBitDepth(info, settings.bitDepth, toString(*settings.bitDepth));
    }
    if (checked && settings.quality) {
        checked = checkQuality(info, settings.quality,
                               String::fromUtf8(std::to_string(*settings.quality)));
    }
    if (checked && settings.compression) {
        checked = checkCompression(info, *settings.compression);
    }
    return checked;
}

Result<void> setImageSaveOption(ImageSaveSettings& settings, ImageFormat format,
                                const String& option) {
    const std::size_t equals = option.find("=");
    if (equals == String::kNotFound) {
        return Failure("Format option \"" + option + "\" is not of the form KEY=VALUE.");
    }
    const String key = option.substring(0, equals).trimmed();
    const String value = option.substring(equals + 1).trimmed();
    const ImageFormatInfo& info = getImageFormatInfo(format);
    const std::vector<String> keys = getKeys(info);
    if (std::ranges::find(keys, key) == keys.end()) {
        return unknownKey(info, key);
    }
    if (key == "bitdepth") {
        const Optional<BitDepth> depth = parseBitDepth(value);
        return checkBitDepth(info, depth, value).map([&] { settings.bitDepth = depth; });
    }
    if (key == "quality") {
        const Optional<int> quality = parseInteger(value);
        return checkQuality(info, quality, value).map([&] { settings.quality = quality; });
    }
    return checkCompression(info, value).map([&] { settings.compression = value; });
}

}  // namespace tavrin::imageio
