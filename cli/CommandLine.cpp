#include "cli/CommandLine.h"

#include "foundation/ArgumentParsing.h"
#include "foundation/FileFilter.h"
#include "foundation/NumberText.h"
#include "foundation/Text.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <map>

namespace tavrin::cli {
namespace {

constexpr const char* kDescription =
    "Post-processes finished renders: opens a multi-layer TXR or OpenEXR image, or merges several "
    "of the same frame, lists what is in it, and saves it as TXR or, tone-mapped, as a picture.";

constexpr const char* kFooter =
    "Examples:\n"
    "  tavrin-cli render.txr --info\n"
    "  tavrin-cli render.txr -o render.png\n"
    "  tavrin-cli render.txr --element '*' -o passes.tif --format-option bitdepth=16\n"
    "  tavrin-cli render.exr -o render.txr\n"
    "  tavrin-cli part1.txr part2.txr part3.txr -o render.txr\n"
    "  tavrin-cli render.txr --element 'LightMix Interactive' -o mix.png \\\n"
    "      --set lightMixEnabled=true,false\n"
    "  tavrin-cli render.txr -o render.png --settings mine.tvpost --set bloomIntensity=0.5\n"
    "  tavrin-cli --aperture aperture.png --set glareStreakCount=8\n"
    "  tavrin-cli batch shots.json\n"
    "\n"
    "tavrin-cli batch processes a list of jobs; its --help tells more.\n"
    "\n"
    "Exit codes:\n"
    "  0  done\n"
    "  1  the work failed\n"
    "  2  the command line is wrong";

/// The arguments as CLI11 stores them, before they become Options.
struct RawArguments {
    std::vector<std::string> inputs;
    std::string weights;
    std::string output;
    std::string element;
    std::vector<std::string> formatOptions;
    std::string settings;
    std::string lightMix;
    std::string preset;
    std::string saveSettings;
    std::string aperture;
    std::vector<std::string> assignments;
    bool noToneMapping = false;
    std::string denoise;
};

/// The modes of --denoise.
const std::map<std::string, postcore::DenoisingMode> kDenoisingModes = {
    {"auto", postcore::DenoisingMode::None},
    {"fireflies", postcore::DenoisingMode::FirefliesOnly},
    {"quality", postcore::DenoisingMode::HighQuality},
    {"neural", postcore::DenoisingMode::IntelAi},
};

/// The system's own bytes are kept, so that any existing file can be named.
Path toPath(const std::string& argument) {
    return std::filesystem::path(std::u8string(argument.begin(), argument.end()));
}

/// The file that an option names; an empty path when it was not given.
Path getFile(const CLI::App& app, const char* option, const std::string& argument) {
    if (app.count(option) != 0 && argument.empty()) {
        throw UsageError(String(option) + " expects the name of a file.");
    }
    return toPath(argument);
}

/// A number, or the name of a channel, which follows a "%" where it looks like a number.
image::Weight parseWeight(const String& text) {
    if (text.startsWith("%")) {
        return text.substring(1);
    }
    if (const auto number = Str::parseFloat(text.view())) {
        return *number;
    }
    const String kStartsOfNumbers = "+-.0123456789";
    if (kStartsOfNumbers.contains(text.substring(0, 1))) {
        throw UsageError("The weight \"" + text + "\" cannot be read as a number; \"%" + text +
                         "\" would be a channel.");
    }
    return text;
}

/// Reads W[,W...].
std::vector<image::Weight> parseWeights(const String& argument) {
    std::vector<image::Weight> weights;
    for (std::size_t from = 0; from != String::kNotFound;) {
        const std::size_t comma = argument.find(",", from);
        const bool isLast = comma == String::kNotFound;
        const String text = argument.substring(from, isLast ? comma : comma - from).trimmed();
        if (text.isEmpty()) {
            throw UsageError("--weights expects numbers or names of channels between the commas.");
        }
        weights.push_back(parseWeight(text));
        from = isLast ? comma : comma + 1;
    }
    return weights;
}

std::vector<String> toTexts(const std::vector<std::string>& arguments) {
    std::vector<String> texts;
    std::ranges::transform(arguments, std::back_inserter(texts), String::fromUtf8);
    return texts;
}

void addSettingsOptions(CLI::App& app, RawArguments& raw) {
    app.add_option("--settings", raw.settings,
                   "Settings file to take all settings from, tone mapping included")
        ->type_name("FILE");
    app.add_option("--lightmix", raw.lightMix, "Settings file to take LightMix from")
        ->type_name("FILE");
    app.add_option("--preset", raw.preset,
                   "Tone-mapping preset to take: a file, or a name from --list-presets")
        ->type_name("FILE");
    app.add_option("--set", raw.assignments,
                   "Value of a property, by its name or id in --list-properties; repeatable")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
    std::vector<std::string> modes;
    std::ranges::transform(kDenoisingModes, std::back_inserter(modes),
                           [](const auto& mode) { return mode.first; });
    setChoices(*app.add_option(
                   "--denoise", raw.denoise,
                   "Denoise what is saved: auto (the best mode for the image), fireflies (only "
                   "isolated bright pixels), quality (guided by variances and features), neural "
                   "(a trained network)"),
               modes);
    app.add_flag("--no-tone-mapping", raw.noToneMapping,
                 "Map colours only by the display's encoding; negative values become 0");
    app.add_option("--save-settings", raw.saveSettings,
                   "Settings file (.tvpost) to save, with all settings as they are then")
        ->type_name("FILE");
}

void addApertureOption(CLI::App& app, RawArguments& raw) {
    app.add_option("--aperture", raw.aperture,
                   "Picture to save of the aperture that glare comes from, and beside it, with "
                   "_psf after the name, of the light that it spreads, on a logarithmic scale")
        ->type_name("FILE");
}

/// The options that say what is to be done with images, but for lists.
void addWorkOptions(CLI::App& app, RawArguments& raw) {
    app.add_option("IMAGE", raw.inputs,
                   "The TXR or OpenEXR image to open; several of the same frame are merged")
        ->type_name(" ");
    app.add_option(
           "-o,--output", raw.output,
           "File to save: .txr holds the image, to be opened and edited again, any other known "
           "extension a picture")
        ->type_name("FILE");
    app.add_option(
           "--element", raw.element,
           "Element to save, by its name in --list-elements; without this option BEAUTY as a "
           "picture, all elements as .txr; '*' saves every image element, pictures each "
           "to a file of its own")
        ->type_name("NAME");
    app.add_option("--format-option", raw.formatOptions,
                   "A choice of the picture's format, such as bitdepth=16; see --list-formats; "
                   "repeatable")
        ->type_name("KEY=VALUE")
        ->allow_extra_args(false);
    app.add_option("--weights", raw.weights,
                   "How much the merged images count: a number, or the name of the channel that "
                   "holds a weight for each pixel (after a % to tell it from a number); one for "
                   "all, or one for each; the channel TAVRIN_FB_WEIGHTS without this option")
        ->type_name("W[,W...]");
    addSettingsOptions(app, raw);
    addApertureOption(app, raw);
}

void addListOptions(CLI::App& app, Options& options) {
    app.add_flag("--info", options.info,
                 "Print the windows, elements, channels, attributes and statistics of the image");
    app.add_flag("--json", options.json, "Print --info or --list-properties as JSON");
    app.add_flag("--list-elements", options.listElements,
                 "Print the names of the image's elements, one per line");
    app.add_flag("--list-formats", options.listFormats,
                 "Print the picture formats with their extensions and options");
    app.add_flag("--list-operators", options.listOperators,
                 "Print the operators that tone-mapping presets are made of");
    app.add_flag("--list-presets", options.listPresets,
                 "Print the names of the tone-mapping presets that come with the program");
    app.add_flag("--list-properties", options.listProperties,
                 "Print the properties that --set takes");
}

void setUp(CLI::App& app, RawArguments& raw, Options& options) {
    app.name("tavrin-cli");
    app.description(kDescription);
    app.footer(kFooter);
    addWorkOptions(app, raw);
    addListOptions(app, options);
    addProgramOptions(app, options.threads, options.quiet, options.progress);
}

void check(const Options& options) {
    if (options.json && options.info == options.listProperties) {
        throw UsageError("--json goes with one of --info and --list-properties.");
    }
    if (options.element && options.output.isEmpty()) {
        throw UsageError("--element goes with --output.");
    }
    if (options.denoise && options.output.isEmpty()) {
        throw UsageError("--denoise goes with --output.");
    }
    if (options.element && options.element->isEmpty()) {
        throw UsageError("--element expects the name of an element.");
    }
    if (!options.formatOptions.empty() && options.output.isEmpty()) {
        throw UsageError("--format-option goes with --output.");
    }
    const bool hasSettings = !options.settings.isEmpty() || !options.lightMix.isEmpty() ||
                             !options.preset.isEmpty() || !options.assignments.empty() ||
                             !options.toneMapping;
    const bool usesSettings =
        !options.output.isEmpty() || !options.saveSettings.isEmpty() || !options.aperture.isEmpty();
    if (hasSettings && !usesSettings) {
        throw UsageError("Settings go with --output, --save-settings or --aperture.");
    }
    // So that no image or preset is overwritten by mistake.
    if (!options.saveSettings.isEmpty() && Str::toLowerCase(options.saveSettings.extension()) !=
                                               Io::FileFilter::TAVRIN_SETTINGS_FILE.extension) {
        throw UsageError("--save-settings expects a file with the extension .tvpost.");
    }
    const bool asksOfImage = options.info || options.listElements || !options.output.isEmpty();
    if (asksOfImage && options.inputs.empty()) {
        throw UsageError("An image to open is expected.");
    }
    if (options.info && options.inputs.size() > 1) {
        throw UsageError("--info goes with one image.");
    }
    if (!options.weights.empty() && options.inputs.size() < 2) {
        throw UsageError("--weights goes with images to merge.");
    }
    const bool asksForList = options.listFormats || options.listOperators || options.listPresets ||
                             options.listProperties;
    if (!asksOfImage && !asksForList && !usesSettings) {
        throw UsageError(
            "There is nothing to do: --output, --info, --save-settings, --aperture or one of the "
            "--list options is expected.");
    }
}

}  // namespace

Optional<Options> parseCommandLine(int argumentCount, const char* const* arguments) {
    CLI::App app;
    RawArguments raw;
    Options options;
    setUp(app, raw, options);
    if (!parseArguments(app, argumentCount, arguments)) {
        return {};
    }
    std::ranges::transform(raw.inputs, std::back_inserter(options.inputs), toPath);
    if (app.count("--weights") != 0) {
        options.weights = parseWeights(String::fromUtf8(raw.weights));
    }
    options.output = getFile(app, "--output", raw.output);
    options.settings = getFile(app, "--settings", raw.settings);
    options.lightMix = getFile(app, "--lightmix", raw.lightMix);
    options.preset = getFile(app, "--preset", raw.preset);
    options.saveSettings = getFile(app, "--save-settings", raw.saveSettings);
    options.aperture = getFile(app, "--aperture", raw.aperture);
    if (app.count("--element") != 0) {
        options.element = String::fromUtf8(raw.element);
    }
    options.formatOptions = toTexts(raw.formatOptions);
    options.assignments = toTexts(raw.assignments);
    options.toneMapping = !raw.noToneMapping;
    if (app.count("--denoise") != 0) {
        options.denoise = kDenoisingModes.at(raw.denoise);
    }
    check(options);
    return options;
}

CommandDescription describeCommandLine() {
    CLI::App app;
    RawArguments raw;
    Options options;
    setUp(app, raw, options);
    return describeCommand(app);
}

std::vector<OptionDescription> describeWorkOptions() {
    CLI::App app;
    app.set_help_flag();
    RawArguments raw;
    addWorkOptions(app, raw);
    return describeOptions(app);
}

}  // namespace tavrin::cli
