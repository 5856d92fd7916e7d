#include "app/ImageEditorApp.h"

#include "base/settings/PropertyHelp.h"
#include "foundation/Exception.h"
#include "foundation/Path.h"
#include "foundation/data/TypeDatabase.h"
#include "gui/sheet/QtRuntime.h"
#include "gui/windows/MainFrame.h"

#include <wx/app.h>
#include <wx/init.h>

#include <cstdlib>
#include <utility>

namespace tavrin::app {
namespace {

/// wxWidgets' own object of the program. It does nothing by itself.
class ToolkitApp final : public wxApp {
public:
    bool OnInit() override { return true; }
    /// Lets the exception end the event loop and reach whoever runs it.
    bool OnExceptionInMainLoop() override { throw; }
};

/// wxWidgets, while it runs.
class Toolkit {
public:
    Toolkit() {
        sheet::QtRuntime::prepareEnvironment();
        wxApp::SetInstance(new ToolkitApp);
        // The arguments are ours.
        int argumentCount = 0;
        char** const noArguments = nullptr;
        isStarted_ = wxEntryStart(argumentCount, noArguments) && wxTheApp->CallOnInit();
    }
    ~Toolkit() {
        if (isStarted_) {
            wxTheApp->OnExit();
            wxEntryCleanup();
        }
    }
    Toolkit(const Toolkit&) = delete;
    Toolkit& operator=(const Toolkit&) = delete;

    bool isStarted() const { return isStarted_; }

private:
    bool isStarted_ = false;
};

/// The types of data objects, while they are registered.
class RegisteredTypes {
public:
    RegisteredTypes() { TypeDatabase::registerCallersTypes(); }
    ~RegisteredTypes() { TypeDatabase::unregisterCallersTypes(); }
    RegisteredTypes(const RegisteredTypes&) = delete;
    RegisteredTypes& operator=(const RegisteredTypes&) = delete;
};

}  // namespace

ImageEditorApp::ImageEditorApp(std::vector<String> arguments)
    : mainFrame_(new windows::MainFrame(nullptr, *settings_, *colorMapping_, performer_,
                                        propertySheetHost_)) {
    wxTheApp->SetTopWindow(mainFrame_);
    // Dialogs of a load are placed over the window, which is on the display only then.
    mainFrame_->Bind(wxEVT_SHOW, [this, names = std::move(arguments)](wxShowEvent& event) mutable {
        event.Skip();
        open(std::exchange(names, {}));
    });
    mainFrame_->Show();
}

ImageEditorApp::~ImageEditorApp() {
    // After an exception: it uses the other objects until its end.
    delete mainFrame_.get();
}

void ImageEditorApp::open(const std::vector<String>& names) {
    if (names.size() == 1) {
        performer_.load.load({}, {Path(names.front())});
    }
}

int run(const std::vector<String>& arguments) {
    const Toolkit toolkit;
    if (!toolkit.isStarted()) {
        throw Exception(
            "The window cannot be opened, as there is no display; tavrin-cli works without one.");
    }
    const sheet::QtRuntime qt;
    const RegisteredTypes types;
    settings::allPropertyIds();
    const ImageEditorApp application(arguments);
    wxTheApp->OnRun();
    return EXIT_SUCCESS;
}

}  // namespace tavrin::app
