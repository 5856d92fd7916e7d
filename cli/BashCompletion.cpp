#include "cli/BashCompletion.h"

#include "services/imageio/ImageSaveSettings.h"
#include "services/postcore/PropertyDescriptor.h"
#include "services/postcore/PropertyText.h"

#include <algorithm>
#include <iterator>
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

# The option that the current word belongs to, in $option, and the key of a KEY=VALUE, in $key. Bash
# takes the "=" of these and of "--option=value" for words.
_tavrin_cli_find_option() {
    local -i i=COMP_CWORD
    key=
    if [[ $current == = ]]; then
        current=
    else
        i=i-1
    fi
    if [[ ${COMP_WORDS[i]} == = && ${COMP_WORDS[i - 1]} != -* ]]; then
        key=${COMP_WORDS[i - 1]}
        i=i-2
    fi
    [[ ${COMP_WORDS[i]} != = ]] || i=i-1
    option=${COMP_WORDS[i]}
}
)bash";

constexpr const char* kMain = R"bash(
_tavrin_cli() {
    local current=${COMP_WORDS[COMP_CWORD]} option key
    COMPREPLY=()
    _tavrin_cli_find_option
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

/// The functions that offer what an option takes, where its files or words are not all.
const std::map<String, String> kOfferings = {{"element", "_tavrin_cli_offer_elements"},
                                             {"format-option", "_tavrin_cli_offer_format_options"},
                                             {"preset", "_tavrin_cli_offer_presets"},
                                             {"set", "_tavrin_cli_offer_properties"}};

/// A key of an option that takes KEY=VALUE.
struct Key {
    String name;
    std::vector<String> values;  ///< none where they are too many
};

std::vector<Key> getPropertyKeys() {
    std::vector<Key> keys;
    for (const postcore::PropertyDescriptor& property : postcore::PropertyDescriptor::list()) {
        Key key{property.name, {}};
        if (property.type == postcore::PropertyType::Bool) {
            key.values = {postcore::getConfSerialization(true),
                          postcore::getConfSerialization(false)};
        }
        std::ranges::transform(property.choices, std::back_inserter(key.values),
                               &postcore::PropertyChoice::name);
        keys.push_back(std::move(key));
    }
    return keys;
}

/// Those of all formats.
std::vector<Key> getFormatKeys() {
    std::vector<Key> keys;
    for (const imageio::ImageFormatInfo& format : imageio::getImageFormats()) {
        for (const imageio::ImageSaveChoice& choice : imageio::getImageSaveChoices(format)) {
            auto key = std::ranges::find(keys, choice.key, &Key::name);
            if (key == keys.end()) {
                key = keys.insert(key, {choice.key, {}});
            }
            for (const String& word : choice.words) {
                if (std::ranges::find(key->values, word) == key->values.end()) {
                    key->values.push_back(word);
                }
            }
        }
    }
    return keys;
}

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

/// The command that offers these words.
String offer(const std::vector<String>& words) {
    return "_tavrin_cli_offer <<<$'" + join(words, "\\n") + "'";
}

/// A function that offers the keys of an option, or the values of the current key.
void printKeys(std::ostream& out, const char* function, const std::vector<Key>& keys) {
    std::vector<String> starts;
    std::ranges::transform(keys, std::back_inserter(starts),
                           [](const Key& key) { return key.name + "="; });
    out << '\n' << function << "() {\n    case $key in\n";
    out << "    '')\n        compopt -o nospace\n        " << offer(starts).toUtf8()
        << "\n        ;;\n";
    for (const Key& key : keys) {
        if (!key.values.empty()) {
            out << "    " << key.name.toUtf8() << ") " << offer(key.values).toUtf8() << " ;;\n";
        }
    }
    out << "    esac\n}\n";
}

/// The command that offers what an option takes; nothing is offered where anything may come.
String getOffering(const OptionDescription& option) {
    const auto offering = kOfferings.find(option.name);
    if (offering != kOfferings.end()) {
        return offering->second;
    }
    if (!option.getChoices().empty()) {
        return offer(option.getChoices());
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
    out << "    *)\n        if [[ $current == -* ]]; then\n            "
        << offer(spellings).toUtf8()
        << "\n        else\n            _tavrin_cli_offer_files\n        fi\n        ;;\n"
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
    printKeys(out, "_tavrin_cli_offer_format_options", getFormatKeys());
    printKeys(out, "_tavrin_cli_offer_properties", getPropertyKeys());
    printValueTest(out, program);
    printCommand(out, "_tavrin_cli_complete", program);
    printCommand(out, "_tavrin_cli_complete_batch", batch);
    out << kMain;
}

}  // namespace tavrin::cli
