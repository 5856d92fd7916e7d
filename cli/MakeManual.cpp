// Writes the manual page and the bash completion of tavrin-cli from its own table of options:
//
//     tavrin-cli-make-manual MANUAL_PAGE COMPLETION

#include "cli/BashCompletion.h"
#include "cli/BatchCommandLine.h"
#include "cli/CommandLine.h"
#include "cli/ManualPage.h"
#include "foundation/BinaryFileOutputStream.h"
#include "foundation/ProgramMain.h"

#include <sstream>

namespace {

using namespace tavrin;

void write(const char* file, const std::ostringstream& text) {
    BinaryFileOutputStream stream{Path(String(file))};
    stream.write(text.str().data(), text.str().size());
    stream.commit();
}

void makeManual(const char* manualPage, const char* completion) {
    const cli::CommandDescription program = cli::describeCommandLine();
    const cli::CommandDescription batch = cli::describeBatchCommandLine();
    std::ostringstream page;
    cli::printManualPage(page, program, {batch});
    write(manualPage, page);
    std::ostringstream script;
    cli::printBashCompletion(script, program, batch);
    write(completion, script);
}

}  // namespace

int main(int argumentCount, char** arguments) {
    return tavrin::runProgram("tavrin-cli-make-manual", [&] {
        if (argumentCount != 3) {
            throw tavrin::UsageError(
                "The files for the manual page and the completion are expected.");
        }
        makeManual(arguments[1], arguments[2]);
    });
}
