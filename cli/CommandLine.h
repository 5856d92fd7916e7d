#pragma once

#include "base/image/Weight.h"
#include "cli/OptionTable.h"
#include "cli/ProgressLine.h"
#include "foundation/Optional.h"
#include "foundation/Path.h"
#include "foundation/ProgramMain.h"
#include "foundation/String.h"
#include "services/postcore/denoise/DenoisingMode.h"

#include <vector>

namespace tavrin::cli {

/// What --element calls all of them.
inline const String kAllElements = "*";

/// What the user asked for.
struct Options {
    std::vector<Path> inputs;            ///< several are merged
    std::vector<image::Weight> weights;  ///< of the inputs; empty: the channel that renderers write
    Path output;                         ///< empty: nothing is saved
    /// Display name of the element to save, "*" for all; the beauty without one.
    Optional<String> element;
    std::vector<String> formatOptions;  ///< "key=value"
    Path settings;      ///< settings file to take; empty: none, as in the next three
    Path lightMix;      ///< settings file to take LightMix from
    Path preset;        ///< tone-mapping preset to take: a file, or the name of one of ours
    Path saveSettings;  ///< settings file to save
    Path aperture;      ///< picture of the aperture to save
    std::vector<String> assignments;  ///< "property=value"
    bool toneMapping = true;
    /// How to denoise; nothing: not at all; DenoisingMode::None: in the best way there is.
    Optional<postcore::DenoisingMode> denoise;
    bool info = false;
    bool json = false;
    bool listElements = false;
    bool listFormats = false;
    bool listOperators = false;
    bool listPresets = false;
    bool listProperties = false;
    int threads = 0;  ///< 0: one per processor
    bool quiet = false;
    ProgressMode progress = ProgressMode::Auto;
};

/// Reads the arguments, which are UTF-8. Nothing when only a text (help, version) was asked for,
/// which has then been printed. Throws a UsageError.
Optional<Options> parseCommandLine(int argumentCount, const char* const* arguments);

/// What --help tells.
CommandDescription describeCommandLine();
/// The options that say what is to be done with images, but for lists.
std::vector<OptionDescription> describeWorkOptions();

}  // namespace tavrin::cli
