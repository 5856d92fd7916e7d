#pragma once

#include "cli/ProgressLine.h"
#include "foundation/String.h"

#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace tavrin::cli {

/// One option, as the parser knows it.
struct OptionDescription {
    String name;       ///< without dashes, such as "output"
    String shortName;  ///< "o"; empty without one
    String value;      ///< what the help calls its value, such as "FILE"; empty: a switch
    String help;
    bool isRepeatable = false;

    /// The words that it takes, of a value such as "auto|always|never"; else none.
    std::vector<String> getChoices() const;
};

/// One command with all its options, as the parser knows them.
struct CommandDescription {
    String name;  ///< such as "tavrin-cli batch"
    String description;
    String operand;  ///< what comes beside options, such as "[IMAGE...]"
    std::vector<OptionDescription> options;
    String footer;  ///< examples and exit codes, in lines
};

/// The options in the order of the help.
std::vector<OptionDescription> describeOptions(const CLI::App& app);
CommandDescription describeCommand(const CLI::App& app);

/// Makes an option take only these words.
void setChoices(CLI::Option& option, const std::vector<std::string>& words);

/// Adds the options of all commands: --threads, --quiet, --progress, --version and --help. The
/// places where they are stored have to outlive the parsing.
void addProgramOptions(CLI::App& app, int& threads, bool& isQuiet, ProgressMode& progress);

}  // namespace tavrin::cli
