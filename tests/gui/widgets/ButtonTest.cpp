#include "gui/widgets/AutoSizedButton.h"
#include "gui/widgets/CheckBox.h"
#include "gui/widgets/CollapsiblePanel.h"
#include "gui/widgets/Tooltip.h"
#include "tests/gui/Gui.h"

#include <gtest/gtest.h>
#include <wx/panel.h>
#include <wx/scrolwin.h>
#include <wx/sizer.h>

#include <memory>
#include <vector>

namespace tavrin::widgets {
namespace {

using namespace tests;

class ButtonTest : public testing::Test {
protected:
    template <class T, class... Arguments>
    T& make(Arguments... arguments) {
        auto* const control = new T(panel_, wxID_ANY, arguments...);
        control->Move(40, 40 * static_cast<int>(panel_->GetChildren().size()));
        control->SetSize(control->GetBestSize());
        return *control;
    }

    TestFrame frame_;
    wxPanel* panel_ = new wxPanel(&*frame_);
};

TEST_F(ButtonTest, CheckBoxIsSwitchedByMouseAndSpaceBar) {
    auto& box = make<CheckBox>("Switch");
    std::vector<bool> reported;
    box.callOnChange([&](bool value) { reported.push_back(value); });
    frame_.show();
    clickMouse(box, {8, 8});
    // On the label, and twice fast.
    clickMouse(box, {40, 8});
    pressKey(WXK_SPACE);
    EXPECT_EQ(reported, (std::vector<bool>{true, false, true}));
    box.setValue(false, false);
    box.setValue(false, true);
    EXPECT_EQ(reported.size(), 4u);
    // Let go elsewhere, or disabled in between, it does nothing.
    dragMouse(box, {8, 8}, {8, 200});
    moveMouse(box, {8, 8});
    pressMouse();
    box.Disable();
    releaseMouse();
    clickMouse(box, {8, 8});
    EXPECT_EQ(reported.size(), 4u);
    EXPECT_EQ(wxWindow::GetCapture(), nullptr);
}

TEST_F(ButtonTest, ButtonFitsItsLabelAndMayEndInItsCallback) {
    auto& small = make<AutoSizedButton>("OK", 24, 75);
    auto& wide = make<AutoSizedButton>("A rather long label of a button", 24, 75);
    EXPECT_EQ(small.GetBestSize(), wxSize(75, 24));
    EXPECT_GT(wide.GetBestSize().x, wide.GetTextExtent(wide.GetLabel()).x);
    int clicks = 0;
    wide.callOnClick([&] {
        ++clicks;
        wide.CallAfter([&wide] { wide.Destroy(); });
    });
    small.callOnClick([&] { ++clicks; });
    frame_.show();
    small.SetFocus();
    pressKey(WXK_RETURN);
    pressKey(WXK_SPACE);
    EXPECT_EQ(clicks, 2);
    clickMouse(wide, {20, 12});
    EXPECT_EQ(clicks, 3);
    EXPECT_EQ(panel_->GetChildren().size(), 1u);
}

TEST_F(ButtonTest, TooltipShowsWhileThePointerRests) {
    auto& button = make<AutoSizedButton>("Rest", 24, 0);
    button.setTooltip("Unused");
    auto tooltip = std::make_unique<Tooltip>(*panel_, "A text");
    frame_.show();
    moveMouse(*panel_, {300, 300});
    EXPECT_TRUE(waitFor([&] { return tooltip->isShown(); }));
    pressMouse();
    releaseMouse();
    EXPECT_FALSE(tooltip->isShown());
    moveMouse(*frame_, {-1, -1});
    moveMouse(*panel_, {300, 300});
    EXPECT_TRUE(waitFor([&] { return tooltip->isShown(); }));
    tooltip.reset();
    moveMouse(*panel_, {310, 300});
}

TEST(CollapsiblePanel, MovesWhatIsBelowIt) {
    TestFrame frame;
    auto* const scrolled = new wxScrolledWindow(&*frame);
    scrolled->SetScrollRate(10, 10);
    auto* const body = new wxPanel(scrolled, wxID_ANY, wxDefaultPosition, {-1, 900});
    auto* const box = new CheckBox(scrolled, wxID_ANY, "");
    auto* const panel =
        new CollapsiblePanel(scrolled, GuiSkin::DEFAULT(), "SECTION", body, box, 0, {-1, 16});
    auto* const below = new AutoSizedButton(scrolled, wxID_ANY, "Below", 24);
    auto* const sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(panel, wxSizerFlags().Expand());
    sizer->Add(below);
    scrolled->SetSizer(sizer);
    scrolled->FitInside();
    std::vector<bool> reported;
    panel->callOnCollapse([&](bool collapsed) { reported.push_back(collapsed); });
    frame.show();
    EXPECT_GT(below->GetPosition().y, 900);
    EXPECT_GT(scrolled->GetVirtualSize().y, 900);
    clickMouse(*panel, {60, 8});
    EXPECT_TRUE(waitFor([&] { return below->GetPosition().y < 100; }));
    EXPECT_TRUE(panel->isCollapsed());
    // The check box in the header is its own.
    clickMouse(*box, {7, 7});
    EXPECT_TRUE(box->getValue());
    EXPECT_TRUE(panel->isCollapsed());
    pressKey(WXK_TAB, wxMOD_SHIFT);
    pressKey(WXK_SPACE);
    EXPECT_TRUE(waitFor([&] { return below->GetPosition().y > 900; }));
    EXPECT_EQ(reported, (std::vector<bool>{true, false}));
}

}  // namespace
}  // namespace tavrin::widgets
