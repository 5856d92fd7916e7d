#include "gui/widgets/ComboBox.h"
#include "tests/gui/Gui.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wx/dialog.h>
#include <wx/panel.h>

#include <vector>

namespace tavrin::widgets {
namespace {

using namespace tests;
using testing::ElementsAre;
using testing::Optional;

class ComboBoxTest : public testing::Test {
protected:
    ComboBox& make(wxWindow* parent, int y, bool selectsClosed = true) {
        auto* const box = new ComboBox(
            parent, wxID_ANY, 150, [this](int id) { chosen_.push_back(id); }, {}, selectsClosed);
        box->SetPosition({40, y});
        box->SetSize(box->GetBestSize());
        box->setData({{"Apple", 10}, {"Banana", 11}, {"Blackberry", 12}, {"Cherry", 13}});
        return *box;
    }

    TestFrame frame_;
    wxPanel* panel_ = new wxPanel(&*frame_);
    std::vector<int> chosen_;
};

TEST_F(ComboBoxTest, IsChosenWithTheMouse) {
    ComboBox& box = make(panel_, 40);
    frame_.show();
    EXPECT_EQ(box.getSelectedId(), std::nullopt);
    clickMouse(box, {20, 10});
    EXPECT_TRUE(box.isOpen());
    // The third of 20 pixels each.
    clickMouse(box, {20, 22 + 50});
    EXPECT_TRUE(waitFor([&] { return box.getSelectedId() == 12; }));
    EXPECT_FALSE(box.isOpen());
    // Pressed, moved to an item and let go.
    dragMouse(box, {20, 10}, {20, 22 + 10});
    EXPECT_TRUE(waitFor([&] { return box.getSelectedIndex() == 0; }));
    EXPECT_FALSE(box.isOpen());
    clickMouse(box, {20, 10});
    clickMouse(*panel_, {500, 400});
    EXPECT_FALSE(box.isOpen()) << "A click elsewhere closes the list.";
    EXPECT_THAT(chosen_, ElementsAre(12, 10));
    EXPECT_EQ(wxWindow::GetCapture(), nullptr);
}

TEST_F(ComboBoxTest, IsChosenWithTheKeyboard) {
    ComboBox& box = make(panel_, 40);
    make(panel_, 80);
    frame_.show();
    box.SetFocus();
    pressKey(WXK_SPACE);
    EXPECT_TRUE(box.isOpen());
    pressKey(WXK_END);
    pressKey(WXK_UP);
    EXPECT_TRUE(chosen_.empty());
    pressKey(WXK_RETURN);
    EXPECT_TRUE(waitFor([&] { return box.getSelectedId() == 12; }));
    pressKey(WXK_SPACE);
    pressKey(WXK_HOME);
    pressKey(WXK_ESCAPE);
    EXPECT_FALSE(box.isOpen());
    EXPECT_THAT(box.getSelectedId(), Optional(12));
    // Without the list: arrows, and first letters, the same again for the next.
    pressKey(WXK_DOWN);
    pressKey(WXK_DOWN);
    EXPECT_THAT(box.getSelectedId(), Optional(13));
    typeText("b");
    EXPECT_THAT(box.getSelectedId(), Optional(11));
    typeText("b");
    EXPECT_THAT(box.getSelectedId(), Optional(12));
    pressKey(WXK_TAB);
    EXPECT_FALSE(box.HasFocus());
    turnWheel(box, {20, 10}, 1);
    EXPECT_THAT(chosen_, ElementsAre(12, 13, 11, 12));
    box.SetFocus();
    handleEvents();
    turnWheel(box, {20, 10}, 1);
    EXPECT_TRUE(waitFor([&] { return box.getSelectedId() == 11; }));
}

TEST_F(ComboBoxTest, ShowsLongListsWithinTheDisplay) {
    ComboBox& box = make(panel_, 40);
    std::vector<ComboBoxItem> items;
    for (int i = 0; i < 200; ++i) {
        items.push_back({String("Item ") + String(std::to_string(i).c_str()), i});
    }
    box.setData(items);
    frame_.show();
    clickMouse(box, {20, 10});
    turnWheel(box, {20, 100}, -4);
    clickMouse(box, {20, 22 + 10});
    EXPECT_TRUE(waitFor([&] { return box.getSelectedIndex() == 12; }));
    // Near the lower edge, it shows above: the last item is next to the box.
    frame_->Move(0, wxGetDisplaySize().y - 100);
    // The window manager takes its time.
    moveMouse(*panel_, {500, 20});
    moveMouse(*panel_, {501, 20});
    clickMouse(box, {20, 10});
    pressKey(WXK_END);
    clickMouse(box, {20, -10});
    EXPECT_TRUE(waitFor([&] { return box.getSelectedIndex() == 199; }));
}

TEST_F(ComboBoxTest, MayEndWhileItIsOpen) {
    for (const bool disables : {true, false}) {
        ComboBox& box = make(panel_, 40);
        frame_.show();
        clickMouse(box, {20, 10});
        ASSERT_TRUE(box.isOpen());
        if (disables) {
            box.Disable();
            EXPECT_FALSE(box.isOpen());
        }
        box.Destroy();
        clickMouse(*panel_, {20, 22 + 50});
        EXPECT_EQ(wxWindow::GetCapture(), nullptr);
    }
    EXPECT_TRUE(chosen_.empty());
}

TEST_F(ComboBoxTest, WorksInModalDialogs) {
    frame_.show();
    wxDialog dialog(&*frame_, wxID_ANY, "Dialog", {100, 100}, {300, 200});
    auto* const panel = new wxPanel(&dialog);
    ComboBox& box = make(panel, 20, false);
    dialog.CallAfter([&] {
        waitFor([&] { return dialog.IsActive(); });
        clickMouse(box, {20, 10});
        // Escape is for the list, not yet for the dialog.
        pressKey(WXK_ESCAPE);
        EXPECT_FALSE(box.isOpen());
        EXPECT_TRUE(dialog.IsModal());
        clickMouse(box, {20, 10});
        clickMouse(box, {20, 22 + 30});
        EXPECT_TRUE(waitFor([&] { return box.getSelectedId() == 11; }));
        clickMouse(box, {20, 10});
        clickMouse(*panel, {250, 150});
        EXPECT_FALSE(box.isOpen());
        dialog.EndModal(1);
    });
    EXPECT_EQ(dialog.ShowModal(), 1);
}

}  // namespace
}  // namespace tavrin::widgets
