#include "cli/BashCompletion.h"

#include <map>
#include <ostream>

namespace tavrin::cli {
namespace {

// The parts that no option changes. A word is completed as the user has typed it, with quotes and
// backslashes; names of the program's may have spaces.
constexpr const char* kFunctions = R"bash(# Completion of tavrin-cli for bash.

# The word without the quoting that it was typed with, in $unquoted.
_tavrin_cli_unquote() {
    unquoted=${1//[\\\"\']/}
    unquoted=${unquoted/#\~\//$HOME/}
}

# Offers those of the lines that begin with the current word, quoted like it.
_tavrin_cli_offer() {
    local line unquoted quoted
    _tavrin_cli_unquote "$current"
    while IFS= read -r line; do
        if [[ $line == "$unquoted"* ]]; then
            quoted=$line
            [[ $current == [\"\']* ]] || printf -v quoted %q "$line"
            COMPREPLY+=("$quoted")
        fi
    done
}

# Offers the names of files.
_tavrin_cli_offer_files() {
    compopt -o default
}

_tavrin_cli_ask() {
    local unquoted
    _tavrin_cli_unquote "${COMP_WORDS[0]}"
    "$unquoted" "$@" 2>/dev/null </dev/null
}

# The elements of the first image of the command line.
_tavrin_cli_offer_elements() {
    local i unquoted
    for ((i = 1; i < COMP_CWORD; ++i)); do
        _tavrin_cli_unquote "${COMP_WORDS[i]}"
        if [[ ${COMP_WORDS[i]} != -* && -f $unquoted ]] &&
            ! _tavrin_cli_takes_value "${COMP_WORDS[i - 1]}"; then
            _tavrin_cli_offer < <(_tavrin_cli_ask --list-elements -- "$unquoted")
            return
        fi
    done
}

_tavrin_cli_offer_presets() {
    _tavrin_cli_offer < <(_tavrin_cli_ask --list-presets)
    _tavrin_cli_offer_files
}

_tavrin_cli_offer_properties() {
    compopt -o nospace
    _tavrin_cli_offer < <(_tavrin_cli_ask --list-properties --json |
        sed -n 's/^ *"name": "\(.*\)",$/\1=/p')
}
)bash";

constexpr const char* kMain = R"bash(
_tavrin_cli() {
    local current=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    # Bash takes the "=" of "--option=value" and "name=value" for a word.
    if [[ $current == = ]]; then
        current=
    elif [[ $option == = ]]; then
        option=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    if ((COMP_CWORD > 1)) && [[ ${COMP_WORDS[1]} == batch ]]; then
        _tavrin_cli_complete_batch "$option"
        return
    fi
    if ((COMP_CWORD == 1)) && [[ -n $current ]]; then
        _tavrin_cli_offer <<<batch
    fi
    _tavrin_cli_complete "$option"
}

complete -F _tavrin_cli tavrin-cli
)bash";

/// The functions above that offer what an option takes, where its files or words are not all.
const std::map<String, String> kOfferings = {{"element", "_tavrin_cli_offer_elements"},
                                             {"preset", "_tavrin_cli_offer_presets"},
                                             {"set", "_tavrin_cli_offer_properties"}};

String join(const std::vector<String>& words, const char* separator) {
    String text;
    for (const String& word : words) {
        text += (text.isEmpty() ? "" : separator) + word;
    }
    return text;
}

std::vector<String> getSpellings(const OptionDescription& option) {
    std::vector<String> spellings = {"--" + option.name};
    if (!option.shortName.isEmpty()) {
        spellings.push_back("-" + option.shortName);
    }
    return spellings;
}

/// The command that offers what an option takes; nothing is offered where anything may come.
String getOffering(const OptionDescription& option) {
    const auto offering = kOfferings.find(option.name);
    if (offering != kOfferings.end()) {
        return offering->second;
    }
    if (!option.getChoices().empty()) {
        return "_tavrin_cli_offer <<<$'" + join(option.getChoices(), "\\n") + "'";
    }
    return option.value == "FILE" ? "_tavrin_cli_offer_files" : ":";
}

/// A function that completes the current word after `option`, the word before it.
void printCommand(std::ostream& out, const String& function, const CommandDescription& command) {
    std::vector<String> spellings;
    out << '\n' << function.toUtf8() << "() {\n    case $1 in\n";
    for (const OptionDescription& option : command.options) {
        for (const String& spelling : getSpellings(option)) {
            spellings.push_back(spelling);
        }
        if (!option.value.isEmpty()) {
            out << "    " << join(getSpellings(option), " | ").toUtf8() << ") "
                << getOffering(option).toUtf8() << " ;;\n";
        }
    }
    out << "    *)\n        if [[ $current == -* ]]; then\n            _tavrin_cli_offer <<<$'"
        << join(spellings, "\\n").toUtf8()
        << "'\n        else\n            _tavrin_cli_offer_files\n        fi\n        ;;\n"
        << "    esac\n}\n";
}

/// A function that tells whether a word is an option that takes the next word.
void printValueTest(std::ostream& out, const CommandDescription& command) {
    std::vector<String> spellings;
    for (const OptionDescription& option : command.options) {
        if (!option.value.isEmpty()) {
            const std::vector<String> own = getSpellings(option);
            spellings.insert(spellings.end(), own.begin(), own.end());
        }
    }
    out << "\n_tavrin_cli_takes_value() {\n    [[ $1 == @(" << join(spellings, "|").toUtf8()
        << ") ]]\n}\n";
}

}  // namespace

void printBashCompletion(std::ostream& out, const CommandDescription& program,
                         const CommandDescription& batch) {
    out << kFunctions;
    printValueTest(out, program);
    printCommand(out, "_tavrin_cli_complete", program);
    printCommand(out, "_tavrin_cli_complete_batch", batch);
    out << kMain;
}

}  // namespace tavrin::cli
