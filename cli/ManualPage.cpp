#include "cli/ManualPage.h"

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

/// Lines that are shown as they are, such as examples.
void printLines(std::ostream& out, const String& text) {
    out << ".PP\n.nf\n";
    std::istringstream lines(text.toUtf8());
    for (std::string line; std::getline(lines, line);) {
        printLine(out, String::fromUtf8(line));
    }
    out << ".fi\n";
}

void printSynopsis(std::ostream& out, const CommandDescription& command) {
    out << "\\fB" << escape(command.name) << "\\fR [\\fIOPTIONS\\fR] \\fI"
        << escape(command.operand) << "\\fR\n";
}

void printCommand(std::ostream& out, const CommandDescription& command) {
    printLine(out, command.description);
    for (const OptionDescription& option : command.options) {
        printOption(out, option);
    }
    printLines(out, command.footer);
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
    printCommand(out, program);
    for (const CommandDescription& command : commands) {
        out << ".SH \"" << escape(command.name) << "\"\n";
        printCommand(out, command);
    }
}

}  // namespace tavrin::cli
