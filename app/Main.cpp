#include "app/CommandLine.h"
#include "app/ImageEditorApp.h"
#include "foundation/ProgramMain.h"

int main(int argumentCount, char** arguments) {
    using namespace tavrin;
    int exitCode = 0;
    const int failure = runProgram("tavrin-editor", [&] {
        try {
            exitCode = app::run(app::prepareCommandLine(argumentCount, arguments));
        } catch (const app::ExitApplicationException& exit) {
            exitCode = exit.getExitCode();
        }
    });
    return failure != 0 ? failure : exitCode;
}
