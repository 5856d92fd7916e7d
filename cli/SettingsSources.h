#pragma once

#include "base/settings/Settings.h"
#include "cli/CommandLine.h"
#include "cli/WarningPrinter.h"
#include "foundation/EntityHolder.h"
#include "services/colorkit/ColorMapping.h"

#include <utility>

namespace tavrin::cli {

/// The settings that the command line asks for: --settings, --lightmix, --preset, --set and
/// --no-tone-mapping; where two set the same, the later of this list counts. They are read and
/// checked before the image is opened, and applied to the settings that it brings.
class SettingsSources {
public:
    /// Throws a UsageError about a --set, an Exception about a file.
    SettingsSources(const Options& options, WarningPrinter& warnings);

    void apply(settings::Settings& settings, colorkit::ColorMapping& colorMapping) const;

private:
    std::vector<std::pair<int, postcore::Property>> values_;  ///< in the order of writing
    Optional<EntityHolder<colorkit::IColorMappingOperator>> pipeline_;
    Optional<bool> isToneMappingEnabled_;
};

/// Saves all settings, the tone mapping among them. Throws an Exception that names the file.
void saveSettings(const Path& path, const settings::Settings& settings,
                  const colorkit::ColorMapping& colorMapping);

}  // namespace tavrin::cli
