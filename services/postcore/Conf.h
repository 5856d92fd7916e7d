#pragma once

#include "foundation/EntityHolder.h"
#include "foundation/Path.h"
#include "services/colorkit/IColorMappingOperator.h"
#include "services/postcore/SettingsText.h"

namespace tavrin::colorkit {
class ColorMapping;
}

namespace tavrin::postcore {

/// Settings files (see SettingsWriter). Both functions throw an Exception that names the file.
namespace Conf {

using KeyFilter = Function<bool(const String& key)>;

/// Writes the properties whose ids are accepted. The file appears whole or not at all.
void save(const ISettings& settings, const Path& path, const IdFilter& accepts);

/// Writes the values in the file into `settings`. What cannot be used is told to `warn` (which may
/// be empty) and left out; known properties that are not accepted are left out silently, as are
/// keys that are no properties and that `toleratesKey` knows.
void parse(const Path& path, ISettings& settings, const WarningSink& warn, const IdFilter& accepts,
           const KeyFilter& toleratesKey);

/// The keys of the colour mapping in a settings file: "true" or "false", and the pipeline's text.
inline constexpr const char* kColorMapEnabledKey = "colorMap.enabled";
inline constexpr const char* kColorMapPipelineKey = "colorMap.pipeline";

/// The key filter that lets the colour mapping pass.
bool isColorMappingKey(const String& key);

}  // namespace Conf

/// The colour mapping in a settings file, as far as the file has one. An empty holder stands for
/// the pipeline without operators.
struct ConfColorMapping {
    Optional<EntityHolder<colorkit::IColorMappingOperator>> pipeline;
    Optional<bool> isEnabled;
};

/// Conf::parse that also reads the colour mapping.
ConfColorMapping loadConfigWithColorMapping(const Path& path, ISettings& settings,
                                            const IdFilter& accepts, const WarningSink& warn = {});

/// Conf::save that also writes the colour mapping.
void saveConfigWithColorMapping(const ISettings& settings,
                                const colorkit::ColorMapping& colorMapping, const Path& path,
                                const IdFilter& accepts);

}  // namespace tavrin::postcore
