#include "services/postcore/SettingsText.h"

#include "foundation/NumberText.h"
#include "foundation/Text.h"
#include "services/postcore/PropertyDescriptor.h"
#include "services/postcore/PropertyText.h"

#include <algorithm>
#include <set>

namespace tavrin::postcore {
namespace {

const String kFormat = "Tavrin settings ";
constexpr int kVersion = 1;

Result<void> checkFormat(const String& firstLine) {
    const auto version = firstLine.startsWith(kFormat)
                             ? Str::parseInt(firstLine.substring(kFormat.size()).view())
                             : std::nullopt;
    if (!version || *version < 1) {
        return Failure("is not a settings file");
    }
    if (*version > kVersion) {
        return Failure("was written by a newer version of the program");
    }
    return {};
}

/// Goes through the lines of one text.
class LineReader {
public:
    explicit LineReader(const SettingsReader& reader) : reader_(reader) {}

    /// The answer is what is wrong with the line.
    Result<void> take(const String& line) {
        if (line.isEmpty() || line.startsWith("#")) {
            return {};
        }
        const std::size_t equals = line.find("=");
        const String name = line.substring(0, std::min(equals, line.size())).trimmed();
        if (equals == String::kNotFound || name.isEmpty()) {
            return Failure("The text " + Str::quote(line) + " is not of the form NAME = VALUE.");
        }
        const String value = line.substring(equals + 1).trimmed();
        if (!taken_.insert(name).second) {
            return Failure(Str::quote(name) + " stands here again; its first value counts.");
        }
        const PropertyDescriptor* descriptor = PropertyDescriptor::find(name);
        return descriptor != nullptr ? takeProperty(*descriptor, value) : takeOther(name, value);
    }

private:
    Result<void> takeProperty(const PropertyDescriptor& descriptor, const String& text) {
        if (!reader_.accepts(descriptor.id)) {
            return {};
        }
        const Result<Property> value = parseProperty(descriptor, text);
        if (!value) {
            return Failure(value.error());
        }
        reader_.settings.set(descriptor.id, *value);
        return {};
    }

    Result<void> takeOther(const String& name, const String& value) {
        const auto answer = reader_.takeOther(name, value);
        return answer ? *answer : Failure("There is no property " + Str::quote(name) + ".");
    }

    const SettingsReader& reader_;
    std::set<String> taken_;
};

}  // namespace

SettingsWriter::SettingsWriter() : text_(kFormat + Str::getNumberText(kVersion) + "\n") {}

void SettingsWriter::add(const String& name, const String& value) {
    text_ += name + " =" + (value.isEmpty() ? value : " " + value) + "\n";
}

void SettingsWriter::addProperties(const ISettings& settings, const IdFilter& accepts) {
    for (const PropertyDescriptor& descriptor : PropertyDescriptor::list()) {
        if (accepts(descriptor.id)) {
            add(descriptor.name, getConfSerialization(settings.get(descriptor.id)));
        }
    }
}

Result<void> readSettingsText(const String& text, const SettingsReader& reader) {
    constexpr int kMostWarnings = 20;
    LineReader lines(reader);
    int unusable = 0;
    std::size_t start = 0;
    for (int number = 1; start <= text.size(); ++number) {
        const std::size_t end = std::min(text.find("\n", start), text.size());
        const String line = text.substring(start, end - start).trimmed();
        start = end + 1;
        if (number == 1) {
            if (const Result<void> format = checkFormat(line); !format) {
                return format;
            }
            continue;
        }
        const Result<void> answer = lines.take(line);
        if (!answer && ++unusable <= kMostWarnings && reader.warn) {
            reader.warn("Line " + Str::getNumberText(number) + ": " + answer.error());
        }
    }
    if (unusable > kMostWarnings && reader.warn) {
        reader.warn("Another " + Str::getNumberText(unusable - kMostWarnings) +
                    " lines cannot be used.");
    }
    return {};
}

}  // namespace tavrin::postcore
