#include "services/postcore/Conf.h"

#include "foundation/BinaryFileOutputStream.h"
#include "foundation/Exception.h"
#include "foundation/TextFile.h"
#include "services/colorkit/ColorMapping.h"
#include "services/colorkit/PipelineText.h"
#include "services/postcore/PropertyText.h"

namespace tavrin::postcore {
namespace {

// More than any pipeline needs in bytes.
constexpr std::uint64_t kLargestFile = std::uint64_t{1} << 20;

void readFile(const Path& path, const SettingsReader& reader) {
    const Result<String> text = readTextFile(path, kLargestFile);
    if (!text) {
        throw Exception(text.error());
    }
    const Result<void> answer = readSettingsText(*text, reader);
    if (!answer) {
        throw Exception("File \"" + path.native() + "\" " + answer.error() + ".");
    }
}

void writeFile(const Path& path, const SettingsWriter& writer) {
    const std::string bytes = writer.getText().toUtf8();
    BinaryFileOutputStream stream(path);
    stream.write(bytes.data(), bytes.size());
    stream.commit();
}

Result<void> readEnabled(const String& text, ConfColorMapping& mapping) {
    const Result<Property> value = parseConfSerialization(PropertyType::Bool, text);
    if (!value) {
        return Failure(value.error());
    }
    mapping.isEnabled = value->get<bool>();
    return {};
}

Result<void> readPipeline(const String& text, ConfColorMapping& mapping) {
    String error;
    const auto pipeline = colorkit::deserializePipelineFromString(text, error);
    if (!error.isEmpty()) {
        return Failure(error);
    }
    mapping.pipeline = pipeline;
    return {};
}

}  // namespace

void Conf::save(const ISettings& settings, const Path& path, const IdFilter& accepts) {
    SettingsWriter writer;
    writer.addProperties(settings, accepts);
    writeFile(path, writer);
}

void Conf::parse(const Path& path, ISettings& settings, const WarningSink& warn,
                 const IdFilter& accepts, const KeyFilter& toleratesKey) {
    const auto passOver = [&](const String& key, const String&) {
        return toleratesKey(key) ? Optional<Result<void>>(Result<void>()) : std::nullopt;
    };
    readFile(path, {settings, accepts, passOver, warn});
}

bool Conf::isColorMappingKey(const String& key) {
    return key == kColorMapEnabledKey || key == kColorMapPipelineKey;
}

ConfColorMapping loadConfigWithColorMapping(const Path& path, ISettings& settings,
                                            const IdFilter& accepts, const WarningSink& warn) {
    ConfColorMapping mapping;
    const auto take = [&](const String& key, const String& value) -> Optional<Result<void>> {
        if (key == Conf::kColorMapEnabledKey) {
            return readEnabled(value, mapping);
        }
        if (key == Conf::kColorMapPipelineKey) {
            return readPipeline(value, mapping);
        }
        return {};
    };
    readFile(path, {settings, accepts, take, warn});
    return mapping;
}

void saveConfigWithColorMapping(const ISettings& settings,
                                const colorkit::ColorMapping& colorMapping, const Path& path,
                                const IdFilter& accepts) {
    SettingsWriter writer;
    writer.addProperties(settings, accepts);
    writer.add(Conf::kColorMapEnabledKey, getConfSerialization(colorMapping.isEnabled()));
    writer.add(Conf::kColorMapPipelineKey,
               colorkit::serializePipelineToString(colorMapping.getPipeline()));
    writeFile(path, writer);
}

}  // namespace tavrin::postcore
