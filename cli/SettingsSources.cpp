#include "cli/SettingsSources.h"

#include "base/settings/PropertyHelp.h"
#include "cli/PresetList.h"
#include "foundation/NumberText.h"
#include "services/colorkit/PresetFile.h"
#include "services/postcore/Conf.h"
#include "services/postcore/PropertyDescriptor.h"

#include <algorithm>
#include <cmath>

namespace tavrin::cli {
namespace {

using colorkit::IColorMappingOperator;
using postcore::Property;
using postcore::PropertyDescriptor;
using Values = std::vector<std::pair<int, Property>>;

/// Collects what a settings file holds.
class ValueCollector final : public postcore::ISettings {
public:
    explicit ValueCollector(Values& values) : values_(values) {}

    Property get(int) const override { throw Exception("A settings file is only read."); }
    void set(int id, const Property& value) override { values_.emplace_back(id, value); }
    bool isReadOnly() const override { return false; }

private:
    Values& values_;
};

postcore::IdFilter acceptOnly(const std::vector<int>& ids) {
    return [&ids](int id) { return std::ranges::find(ids, id) != ids.end(); };
}

EntityHolder<IColorMappingOperator> loadPreset(const Path& fileOrName) {
    const Path path = findPreset(fileOrName);
    String error;
    auto pipeline = colorkit::loadPreset(path, error);
    if (!error.isEmpty()) {
        throw Exception("File \"" + path.native() + "\" is not a tone-mapping preset. " + error);
    }
    return pipeline;
}

const PropertyDescriptor& findProperty(const String& nameOrId) {
    const auto id = Str::parseInt(nameOrId.view());
    const PropertyDescriptor* descriptor =
        id ? PropertyDescriptor::get(*id) : PropertyDescriptor::find(nameOrId);
    if (descriptor == nullptr) {
        throw UsageError("There is no property \"" + nameOrId +
                         "\"; --list-properties shows those there are.");
    }
    return *descriptor;
}

/// Whether a value's numbers are finite; texts, integers and switches always are.
template <class T>
bool isFinite(const T&) {
    return true;
}
bool isFinite(float number) {
    return std::isfinite(number);
}
bool isFinite(const Vec2& vector) {
    return isFinite(vector.x) && isFinite(vector.y);
}
bool isFinite(const Vec3& vector) {
    return isFinite(vector.x) && isFinite(vector.y) && isFinite(vector.z);
}
template <class T>
bool isFinite(const std::vector<T>& values) {
    return std::ranges::all_of(values, [](const T& value) { return isFinite(value); });
}

/// Reads NAME=VALUE.
std::pair<int, Property> parseAssignment(const String& argument) {
    const std::size_t equals = argument.find("=");
    if (equals == String::kNotFound) {
        throw UsageError("--set expects NAME=VALUE, not \"" + argument + "\".");
    }
    const PropertyDescriptor& descriptor = findProperty(argument.substring(0, equals).trimmed());
    const Result<Property> value = parseProperty(descriptor, argument.substring(equals + 1));
    if (!value) {
        throw UsageError(value.error());
    }
    if (!value->visit([](const auto& held) { return isFinite(held); })) {
        throw UsageError("Property \"" + descriptor.name + "\" expects finite numbers, not \"" +
                         argument.substring(equals + 1) + "\".");
    }
    return {descriptor.id, *value};
}

}  // namespace

SettingsSources::SettingsSources(const Options& options, WarningPrinter& warnings) {
    // First what costs nothing to check.
    Values assignments;
    std::ranges::transform(options.assignments, std::back_inserter(assignments), parseAssignment);

    ValueCollector collector(values_);
    const auto warnAbout = [&warnings](const Path& path) {
        return [&warnings, path](const String& warning) {
            warnings.print("File \"" + path.native() + "\": " + warning);
        };
    };
    if (!options.settings.isEmpty()) {
        const auto mapping = postcore::loadConfigWithColorMapping(
            options.settings, collector, acceptOnly(settings::allPropertyIds()),
            warnAbout(options.settings));
        pipeline_ = mapping.pipeline;
        isToneMappingEnabled_ = mapping.isEnabled;
    }
    if (!options.lightMix.isEmpty()) {
        postcore::Conf::parse(options.lightMix, collector, warnAbout(options.lightMix),
                              acceptOnly(settings::lightMixPropertyIds()),
                              postcore::Conf::isColorMappingKey);
    }
    if (!options.preset.isEmpty()) {
        pipeline_ = loadPreset(options.preset);
    }
    values_.insert(values_.end(), assignments.begin(), assignments.end());
    if (!options.toneMapping) {
        isToneMappingEnabled_ = false;
    }
}

void SettingsSources::apply(settings::Settings& settings,
                            colorkit::ColorMapping& colorMapping) const {
    for (const auto& [id, value] : values_) {
        settings.set(id, value);
    }
    if (pipeline_) {
        colorMapping.setPipeline(*pipeline_);
    }
    if (isToneMappingEnabled_) {
        colorMapping.setEnabled(*isToneMappingEnabled_);
    }
}

void saveSettings(const Path& path, const settings::Settings& settings,
                  const colorkit::ColorMapping& colorMapping) {
    postcore::saveConfigWithColorMapping(settings, colorMapping, path,
                                         acceptOnly(settings::allPropertyIds()));
}

}  // namespace tavrin::cli
