#include "tests/gui/Gui.h"

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/filefn.h>
#include <wx/filename.h>
#include <wx/stopwatch.h>
#include <wx/uiaction.h>
#include <wx/utils.h>

#include <cstdlib>

namespace tavrin::tests {
namespace {

constexpr long kPatience = 20000;  // milliseconds; a machine may be busy
constexpr int kStep = 5;           // milliseconds
// The display tells of the mouse and of keys through another process.
constexpr int kEcho = 30;  // milliseconds
constexpr int kDragSteps = 8;

void act(const Function<void(wxUIActionSimulator&)>& action) {
    wxUIActionSimulator simulator;
    action(simulator);
    const wxStopWatch watch;
    while (watch.Time() < kEcho) {
        handleEvents();
        wxMilliSleep(kStep);
    }
    handleEvents();
}

/// Writes a PNG of what the display shows of the window.
void importScreen(const wxWindow& window, const std::string& file) {
    const int scale = static_cast<int>(window.GetContentScaleFactor());
    const wxRect place = window.GetScreenRect();
    const std::string command = "import -window root -crop " + std::to_string(place.width * scale) +
                                "x" + std::to_string(place.height * scale) + "+" +
                                std::to_string(place.x * scale) + "+" +
                                std::to_string(place.y * scale) + " +repage 'png:" + file + "'";
    EXPECT_EQ(std::system(command.c_str()), 0);
}

}  // namespace

void handleEvents() {
    while (wxTheApp->HasPendingEvents() || wxEventLoopBase::GetActive()->Pending()) {
        wxTheApp->ProcessPendingEvents();
        wxEventLoopBase::GetActive()->YieldFor(wxEVT_CATEGORY_ALL);
    }
    wxTheApp->ProcessIdle();
    wxEventLoopBase::GetActive()->YieldFor(wxEVT_CATEGORY_ALL);
}

bool waitFor(const Function<bool()>& condition) {
    const wxStopWatch watch;
    while (!condition()) {
        if (watch.Time() > kPatience) {
            return false;
        }
        handleEvents();
        wxMilliSleep(kStep);
    }
    return true;
}

TestFrame::TestFrame(wxSize size) : frame_(new wxFrame(nullptr, wxID_ANY, "Test", {0, 0}, size)) {}

TestFrame::~TestFrame() {
    frame_->Destroy();
    handleEvents();
}

void TestFrame::show() {
    frame_->Layout();
    frame_->Show();
    frame_->Raise();
    EXPECT_TRUE(waitFor([this] { return frame_->IsShownOnScreen() && frame_->IsActive(); }));
    // The window manager may still move it.
    act([](wxUIActionSimulator&) {});
    // GTK forgets to lay out the first window of a program once it has its decorations.
    frame_->SetMinSize({1, 1});
}

void moveMouse(const wxWindow& window, wxPoint position) {
    const wxPoint target = window.ClientToScreen(position);
    act([&](wxUIActionSimulator& simulator) { simulator.MouseMove(target); });
}

void clickMouse(const wxWindow& window, wxPoint position, int button) {
    moveMouse(window, position);
    act([&](wxUIActionSimulator& simulator) { simulator.MouseClick(button); });
}

void doubleClickMouse(const wxWindow& window, wxPoint position) {
    moveMouse(window, position);
    act([&](wxUIActionSimulator& simulator) { simulator.MouseDblClick(); });
}

void dragMouse(const wxWindow& window, wxPoint from, wxPoint to, int button) {
    moveMouse(window, from);
    pressMouse(button);
    for (int step = 1; step <= kDragSteps; ++step) {
        moveMouse(window, {from.x + (to.x - from.x) * step / kDragSteps,
                           from.y + (to.y - from.y) * step / kDragSteps});
    }
    releaseMouse(button);
}

void pressMouse(int button) {
    act([&](wxUIActionSimulator& simulator) { simulator.MouseDown(button); });
}

void releaseMouse(int button) {
    act([&](wxUIActionSimulator& simulator) { simulator.MouseUp(button); });
}

void turnWheel(const wxWindow& window, wxPoint position, int steps) {
    moveMouse(window, position);
    // Buttons 4 and 5 of X are the wheel, which the simulator does not have.
    const std::string click = "xdotool click --delay 10 --repeat " +
                              std::to_string(std::abs(steps)) + (steps > 0 ? " 4" : " 5");
    act([&](wxUIActionSimulator&) { EXPECT_EQ(std::system(click.c_str()), 0); });
}

void pressKey(int key, int modifiers) {
    act([&](wxUIActionSimulator& simulator) { simulator.Char(key, modifiers); });
}

void typeText(const std::string& text) {
    act([&](wxUIActionSimulator& simulator) { simulator.Text(text.c_str()); });
}

wxImage readScreen(const wxWindow& window) {
    handleEvents();
    // What GTK reads back from the screen is what it has read first.
    const wxString file = wxFileName::CreateTempFileName("tavrin-screen");
    importScreen(window, file.utf8_string());
    wxImage image(file, wxBITMAP_TYPE_PNG);
    wxRemoveFile(file);
    return image;
}

void keepScreenshot(const wxWindow& window, const std::string& name) {
    const char* folder = std::getenv("TAVRIN_SCREENSHOTS");
    if (folder == nullptr) {
        return;
    }
    handleEvents();
    importScreen(window, std::string(folder) + "/" + name + ".png");
}

}  // namespace tavrin::tests
