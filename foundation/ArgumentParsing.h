#pragma once

namespace CLI {
class App;
}

namespace tavrin {
inline namespace foundation {

/// Reads the arguments of a program, which are UTF-8, as `app` describes them. False when only a
/// text (help, version) was asked for, which has then been printed. Throws a UsageError of one
/// sentence.
bool parseArguments(CLI::App& app, int argumentCount, const char* const* arguments);

}  // namespace foundation
}  // namespace tavrin
