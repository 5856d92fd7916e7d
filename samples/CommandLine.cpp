#include "samples/CommandLine.h"

#include "foundation/ArgumentParsing.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <limits>

namespace tavrin::samples {
namespace {

constexpr int kMostThreads = 1024;
constexpr int kMostSamples = 1 << 20;
constexpr int kLongestSide = 16384;
constexpr std::int64_t kMostPixels = 7680 * 4320;  // some 6 GB of channels
constexpr std::int64_t kGreatestSeed = std::numeric_limits<std::int64_t>::max();
constexpr int kLeastSamples = 2;  // of a part, so that there is a variance

constexpr const char* kDescription =
    "Renders an evening scene into a TXR image with light selects, denoising data, depth, a mask "
    "and statistics: something to try the editor on.";

constexpr const char* kFooter =
    "Examples:\n"
    "  tavrin-sample -o desk.txr\n"
    "  tavrin-sample -o desk.txr --size 1920x1080 --samples 64\n"
    "  tavrin-sample -o desk_1.txr --samples 64 --part 1/2\n"
    "\n"
    "The parts of an image, merged by their weights, are the image. Equal options give equal\n"
    "files, whatever the number of threads, unless --timing is given.\n"
    "\n"
    "Exit codes:\n"
    "  0  done\n"
    "  1  the work failed\n"
    "  2  the command line is wrong";

struct RawArguments {
    std::string output;
    std::string size;
    std::string part;
    std::int64_t seed = 1;
};

Path toPath(const std::string& argument) {
    return std::filesystem::path(std::u8string(argument.begin(), argument.end()));
}

// Two whole numbers with a separator between them, and nothing else.
Optional<Pixel> parsePair(const std::string& text, char separator) {
    const char* const end = text.data() + text.size();
    Pixel pair;
    const auto first = std::from_chars(text.data(), end, pair.x);
    if (first.ec != std::errc() || first.ptr == end || *first.ptr != separator) {
        return {};
    }
    const auto second = std::from_chars(first.ptr + 1, end, pair.y);
    if (second.ec != std::errc() || second.ptr != end) {
        return {};
    }
    return pair;
}

Pixel parseSize(const std::string& text) {
    const auto size = parsePair(text, 'x');
    if (!size) {
        throw UsageError("--size expects a width and a height, such as 640x360.");
    }
    const auto isSide = [](int side) { return side >= 1 && side <= kLongestSide; };
    if (!isSide(size->x) || !isSide(size->y) || std::int64_t(size->x) * size->y > kMostPixels) {
        throw UsageError(
            "--size expects sides of 1 to 16384 pixels and at most 33177600 pixels altogether.");
    }
    return *size;
}

void parsePart(const std::string& text, CommandLine& line) {
    const auto part = parsePair(text, '/');
    if (!part || part->x < 1 || part->y < part->x) {
        throw UsageError(
            "--part expects the number of a part and how many there are, such as 1/3.");
    }
    line.part = part->x;
    line.parts = part->y;
}

void addOptions(CLI::App& app, RawArguments& raw, CommandLine& line) {
    app.add_option("-o,--output", raw.output, "TXR file to save")->type_name("FILE");
    app.add_option("--size", raw.size, "Width and height in pixels; 640x360 without this option")
        ->type_name("WxH");
    app.add_option("--samples", line.samples,
                   "Samples per pixel, of all parts together; 24 without this option")
        ->type_name("N")
        ->check(CLI::Range(kLeastSamples, kMostSamples).description(""));
    app.add_option("--seed", raw.seed, "Start of the random numbers; 1 without this option")
        ->type_name("N")
        ->check(CLI::Range(std::int64_t{0}, kGreatestSeed).description(""));
    app.add_option("--part", raw.part,
                   "Render only part k of n: its own share of the samples of every pixel")
        ->type_name("k/n");
    app.add_option("--threads", line.threads,
                   "How many threads may work; one per processor without this option")
        ->type_name("N")
        ->check(CLI::Range(1, kMostThreads).description(""));
    app.add_flag("--timing", line.timing,
                 "Store the render time and the rays per second, which are 0 otherwise");
    app.add_flag("--quiet", line.quiet, "Print nothing but errors");
    app.set_version_flag("--version", std::string("tavrin-sample ") + TAVRIN_VERSION,
                         "Print the version");
    app.set_help_flag("-h,--help", "Print this text");
}

void check(const CommandLine& line) {
    if (line.output.isEmpty()) {
        throw UsageError("--output expects the name of a file.");
    }
    const String extension = line.output.extension();
    if (extension != "txr" && extension != "exr") {
        throw UsageError("--output expects a file with the extension .txr or .exr.");
    }
    if (line.samples / line.parts < kLeastSamples) {
        throw UsageError("--samples must leave at least 2 samples to each part.");
    }
}

int shareUpTo(int part, const CommandLine& line) {
    return static_cast<int>(std::int64_t(line.samples) * part / line.parts);
}

}  // namespace

int CommandLine::firstSample() const {
    return shareUpTo(part - 1, *this);
}
int CommandLine::lastSample() const {
    return shareUpTo(part, *this);
}

Optional<CommandLine> parseCommandLine(int argumentCount, const char* const* arguments) {
    CLI::App app(kDescription, "tavrin-sample");
    app.footer(kFooter);
    RawArguments raw;
    CommandLine line;
    addOptions(app, raw, line);
    if (!parseArguments(app, argumentCount, arguments)) {
        return {};
    }
    line.output = toPath(raw.output);
    line.seed = static_cast<std::uint64_t>(raw.seed);
    if (app.count("--size") != 0) {
        line.size = parseSize(raw.size);
    }
    if (app.count("--part") != 0) {
        parsePart(raw.part, line);
    }
    check(line);
    return line;
}

}  // namespace tavrin::samples
