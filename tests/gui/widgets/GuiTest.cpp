#include "tests/gui/Gui.h"

#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/panel.h>
#include <wx/textctrl.h>

namespace tavrin::tests {
namespace {

TEST(Gui, MouseAndKeysReachWindows) {
    TestFrame frame;
    auto* panel = new wxPanel(&*frame);
    auto* button = new wxButton(panel, wxID_ANY, "Press", {10, 10});
    auto* text = new wxTextCtrl(panel, wxID_ANY, "", {10, 60}, {200, -1});
    int clicks = 0;
    int turns = 0;
    button->Bind(wxEVT_BUTTON, [&](wxCommandEvent&) { ++clicks; });
    panel->Bind(wxEVT_MOUSEWHEEL,
                [&](wxMouseEvent& event) { turns += event.GetWheelRotation() / 120; });
    frame.show();
    clickMouse(*button, {5, 5});
    EXPECT_TRUE(waitFor([&] { return clicks == 1; }));
    clickMouse(*text, {20, 10});
    typeText("12.5 a");
    pressKey(WXK_BACK);
    EXPECT_TRUE(waitFor([&] { return text->GetValue() == "12.5 "; })) << text->GetValue();
    turnWheel(*panel, {300, 300}, -3);
    EXPECT_TRUE(waitFor([&] { return turns == -3; })) << turns;
    keepScreenshot(*frame, "gui");
}

}  // namespace
}  // namespace tavrin::tests
