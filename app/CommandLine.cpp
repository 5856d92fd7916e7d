#include "app/CommandLine.h"

#include "foundation/ProgramMain.h"

#include <cstdlib>
#include <iostream>

namespace tavrin::app {
namespace {

constexpr const char* kHelp =
    R"(Finishes rendered images: tone mapping, mixing of lights, denoising, bloom and glare, sharpening.

Usage: tavrin-editor [IMAGE]

IMAGE is a TXR or OpenEXR file to open; with several, none is opened.

  --help     show this text
  --version  show the version

Environment:
  TAVRIN_DEVELOPMENT  when set, tells developers on standard error what the program does

tavrin-cli does the same work without a window.
)";

}  // namespace

std::vector<String> prepareCommandLine(int argumentCount, const char* const* arguments) {
    std::vector<String> list;
    for (int i = 1; i < argumentCount; ++i) {
        list.push_back(String::fromUtf8(arguments[i]));
    }
    if (list == std::vector<String>{"--help"}) {
        std::cout << kHelp;
        throw ExitApplicationException(EXIT_SUCCESS);
    }
    if (list == std::vector<String>{"--version"}) {
        std::cout << "tavrin-editor " TAVRIN_VERSION "\n";
        throw ExitApplicationException(EXIT_SUCCESS);
    }
    if (!list.empty() && list.front().startsWith("--")) {
        throw UsageError("There is no option \"" + list.front() + "\" that can be used like this.");
    }
    return list;
}

}  // namespace tavrin::app
