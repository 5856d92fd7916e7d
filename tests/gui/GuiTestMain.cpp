#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/image.h>
#include <wx/init.h>

namespace {

class TestApp final : public wxApp {
public:
    /// As the program does it: without the native event loop, which the tests drive themselves.
    bool OnInit() override {
        wxImage::AddHandler(new wxPNGHandler);
        return true;
    }
    /// A test that fails an assertion of the library has failed.
    void OnAssertFailure(const wxChar* file, int line, const wxChar* function,
                         const wxChar* condition, const wxChar* message) override {
        ADD_FAILURE() << wxString(file) << ":" << line << " " << wxString(function) << ": "
                      << wxString(condition) << " " << wxString(message);
    }
};

}  // namespace

int main(int argumentCount, char** arguments) {
    testing::InitGoogleTest(&argumentCount, arguments);
    wxApp::SetInstance(new TestApp);
    if (!wxEntryStart(argumentCount, arguments) || !wxTheApp->CallOnInit()) {
        return 1;
    }
    int result = 0;
    {
        wxGUIEventLoop loop;
        const wxEventLoopActivator activate(&loop);
        result = RUN_ALL_TESTS();
    }
    wxTheApp->OnExit();
    wxEntryCleanup();
    return result;
}
