#include "cli/OptionTable.h"

#include <CLI/CLI.hpp>

namespace tavrin::cli {
namespace {

constexpr int kMostThreads = 1024;

ProgressMode toProgressMode(const std::string& word) {
    if (word == "auto") {
        return ProgressMode::Auto;
    }
    return word == "always" ? ProgressMode::Always : ProgressMode::Never;
}

OptionDescription describeOption(const CLI::Option& option) {
    OptionDescription description;
    description.name = String::fromUtf8(option.get_lnames().front());
    if (!option.get_snames().empty()) {
        description.shortName = String::fromUtf8(option.get_snames().front());
    }
    if (option.get_items_expected_max() > 0) {
        description.value = String::fromUtf8(option.get_type_name());
        description.isRepeatable = option.get_items_expected_max() > 1;
    }
    description.help = String::fromUtf8(option.get_description());
    return description;
}

}  // namespace

std::vector<String> OptionDescription::getChoices() const {
    std::vector<String> words;
    for (std::size_t from = 0; value.contains("|") && from != String::kNotFound;) {
        const std::size_t bar = value.find("|", from);
        const bool isLast = bar == String::kNotFound;
        words.push_back(value.substring(from, isLast ? bar : bar - from));
        from = isLast ? bar : bar + 1;
    }
    return words;
}

std::vector<OptionDescription> describeOptions(const CLI::App& app) {
    std::vector<OptionDescription> descriptions;
    for (const CLI::Option* option : app.get_options()) {
        if (!option->get_positional()) {
            descriptions.push_back(describeOption(*option));
        }
    }
    return descriptions;
}

CommandDescription describeCommand(const CLI::App& app) {
    CommandDescription command;
    command.name = String::fromUtf8(app.get_name());
    command.description = String::fromUtf8(app.get_description());
    command.options = describeOptions(app);
    command.footer = String::fromUtf8(app.get_footer());
    for (const CLI::Option* option : app.get_options()) {
        if (option->get_positional()) {
            const String name = String::fromUtf8(option->get_name(true));
            const bool isList = option->get_items_expected_max() > 1;
            command.operand = isList ? "[" + name + "...]" : name;
        }
    }
    return command;
}

void setChoices(CLI::Option& option, const std::vector<std::string>& words) {
    option.type_name(CLI::detail::join(words, "|"));
    option.check(CLI::IsMember(words).description(""));
}

void addProgramOptions(CLI::App& app, int& threads, bool& isQuiet, ProgressMode& progress) {
    app.add_option("--threads", threads,
                   "How many threads may work; one per processor without this option")
        ->type_name("N")
        ->check(CLI::Range(1, kMostThreads).description(""));
    app.add_flag("--quiet", isQuiet, "Print neither warnings nor progress");
    const auto setProgress = [&progress](const std::string& word) {
        progress = toProgressMode(word);
    };
    setChoices(*app.add_option_function<std::string>(
                   "--progress", setProgress,
                   "When to show progress on standard error; auto: on a terminal"),
               {"auto", "always", "never"});
    app.set_version_flag("--version", std::string("tavrin-cli ") + TAVRIN_VERSION,
                         "Print the version");
    app.set_help_flag("-h,--help", "Print this text");
}

}  // namespace tavrin::cli
