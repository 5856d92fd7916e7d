#include "foundation/ArgumentParsing.h"

#include "foundation/ProgramMain.h"

#include <CLI/CLI.hpp>

#include <iostream>

namespace tavrin {
inline namespace foundation {
namespace {

/// The parser's messages, as sentences.
String toSentence(const std::string& message) {
    const String text = String::fromUtf8(message).trimmed();
    return text.endsWith(".") ? text : text + ".";
}

}  // namespace

bool parseArguments(CLI::App& app, int argumentCount, const char* const* arguments) {
    try {
        app.parse(argumentCount, arguments);
        return true;
    } catch (const CLI::Success& request) {
        app.exit(request, std::cout, std::cerr);
        if (!std::cout.flush()) {
            throw Exception("Standard output cannot be written.");
        }
        return false;
    } catch (const CLI::ParseError& error) {
        throw UsageError(toSentence(error.what()));
    }
}

}  // namespace foundation
}  // namespace tavrin
