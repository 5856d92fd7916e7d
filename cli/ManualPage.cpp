#include "cli/ManualPage.h"

#include "foundation/Text.h"

#include <ostream>
#include <sstream>
#include <string>

namespace tavrin::cli {
namespace {

/// Text as it stands: no character of it is a command of the formatter, and a dash is the one that
/// is typed.
std::string escape(const String& text) {
    return text.replaced("\\", "\\e")
        .replaced("-", "\\-")
        .replaced("'", "\\(aq")
        .replaced("`", "\\(ga")
        .replaced("^", "\\(ha")
        .replaced("~", "\\(ti")
        .toUtf8();
}

/// A line of text; a dot at its start would be a command.
void printLine(std::ostream& out, const String& line) {
    out << (line.startsWith(".") ? "\\&" : "") << escape(line) << '\n';
}

void printOption(std::ostream& out, const OptionDescription& option) {
    out << ".TP\n";
    if (!option.shortName.isEmpty()) {
        out << "\\fB" << escape("-" + option.shortName) << "\\fR, ";
    }
    out << "\\fB" << escape("--" + option.name) << "\\fR";
    if (!option.value.isEmpty()) {
        out << " \\fI" << escape(option.value) << "\\fR";
    }
    out << '\n';
    printLine(out, option.help + ".");
}

/// The parts of a command: sections of the page for the program, else parts of a section.
void printHeading(std::ostream& out, const String& heading, bool isSection) {
    out << (isSection ? ".SH " : ".SS ") << escape(isSection ? Str::toUpperCase(heading) : heading)
        << '\n';
}

/// Lines that are shown as they are, such as examples; those that introduce what follows, such as
/// "Examples:", are headings.
void printFooter(std::ostream& out, const String& footer, bool isSection) {
    std::istringstream lines(footer.toUtf8());
    for (std::string text; std::getline(lines, text);) {
        const String line = String::fromUtf8(text);
        if (line.endsWith(":") && !line.startsWith(" ")) {
            out << ".fi\n";
            printHeading(out, line.substring(0, line.size() - 1), isSection);
            out << ".nf\n";
        } else {
            printLine(out, line);
        }
    }
    out << ".fi\n";
}

void printSynopsis(std::ostream& out, const CommandDescription& command) {
    out << "\\fB" << escape(command.name) << "\\fR [\\fIOPTIONS\\fR] \\fI"
        << escape(command.operand) << "\\fR\n";
}

void printCommand(std::ostream& out, const CommandDescription& command, bool isSection) {
    printLine(out, command.description);
    printHeading(out, "Options", isSection);
    for (const OptionDescription& option : command.options) {
        printOption(out, option);
    }
    printFooter(out, command.footer, isSection);
}

}  // namespace

void printManualPage(std::ostream& out, const CommandDescription& program,
                     const std::vector<CommandDescription>& commands) {
    out << ".TH TAVRIN\\-CLI 1 \"\" \"Tavrin " << TAVRIN_VERSION << "\"\n";
    out << ".SH NAME\n" << escape(program.name) << " \\- post\\-processes finished renders\n";
    out << ".SH SYNOPSIS\n";
    printSynopsis(out, program);
    for (const CommandDescription& command : commands) {
        out << ".br\n";
        printSynopsis(out, command);
    }
    out << ".SH DESCRIPTION\n";
    printCommand(out, program, true);
    for (const CommandDescription& command : commands) {
        out << ".SH \"" << escape(command.name) << "\"\n";
        printCommand(out, command, false);
    }
}

}  // namespace tavrin::cli
