#include "gui/sheet/WrappedQtWidget.h"
#include "tests/gui/sheet/QtGui.h"

#include <gtest/gtest.h>
#include <wx/aui/framemanager.h>
#include <wx/dialog.h>
#include <wx/panel.h>
#include <wx/scrolwin.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>

#include <QApplication>
#include <QLineEdit>
#include <QPointer>
#include <QVBoxLayout>

namespace tavrin::tests {
namespace {

using sheet::WrappedQtWidget;

/// Two fields below each other.
class Fields final : public QWidget {
public:
    Fields() {
        auto* layout = new QVBoxLayout(this);
        for (QLineEdit*& field : all) {
            field = new QLineEdit(this);
            layout->addWidget(field);
        }
    }

    QLineEdit* all[2] = {};
};

TEST(Embedding, KeysGoWhereTabGoes) {
    TestFrame frame;
    auto* panel = new wxPanel(&*frame);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    auto* before = new wxTextCtrl(panel, wxID_ANY);
    auto* host = new WrappedQtWidget<Fields>(panel);
    auto* after = new wxTextCtrl(panel, wxID_ANY);
    for (wxWindow* window : std::initializer_list<wxWindow*>{before, host, after}) {
        sizer->Add(window, 0, wxEXPAND | wxALL, 10);
    }
    panel->SetSizer(sizer);
    frame.show();
    const Fields& fields = *host->getWidget();
    EXPECT_TRUE(fields.property("Orvix.WrappedQtWidget").toBool());
    ASSERT_TRUE(waitUntilShown(*fields.all[0]));
    clickMouse(*before, {5, 5});
    ASSERT_TRUE(waitFor([&] { return before->HasFocus(); }));
    for (const char* text : {"a", "b", "c"}) {
        typeText(text);
        pressKey(WXK_TAB);
    }
    typeText("d");
    EXPECT_TRUE(waitFor([&] { return after->GetValue() == "d"; }));
    pressKey(WXK_TAB, wxMOD_SHIFT);
    typeText("C");
    EXPECT_TRUE(waitFor([&] { return fields.all[1]->text() == "cC"; }));
    EXPECT_EQ(before->GetValue(), "a");
    EXPECT_EQ(fields.all[0]->text(), "b");
    int returns = 0;
    QObject::connect(fields.all[1], &QLineEdit::returnPressed, [&] { ++returns; });
    pressKey(WXK_RETURN);
    EXPECT_TRUE(waitFor([&] { return returns == 1; }));
    host->Disable();
    EXPECT_FALSE(fields.isEnabled());
    host->Hide();
    EXPECT_FALSE(fields.isVisible());
}

TEST(Embedding, KeysThatNobodyWantsReachTheMenu) {
    TestFrame frame;
    auto* host = new WrappedQtWidget<Fields>(&*frame);
    int commands = 0;
    frame->Bind(
        wxEVT_MENU, [&](wxCommandEvent&) { ++commands; }, 123);
    wxAcceleratorEntry entry(wxACCEL_NORMAL, WXK_F9, 123);
    frame->SetAcceleratorTable(wxAcceleratorTable(1, &entry));
    frame.show();
    QLineEdit& field = *host->getWidget()->all[0];
    ASSERT_TRUE(waitUntilShown(field));
    clickMouse(*host, field);
    ASSERT_TRUE(waitFor([&] { return field.hasFocus(); }));
    pressKey(WXK_F9);
    EXPECT_TRUE(waitFor([&] { return commands == 1; })) << commands;
}

TEST(Embedding, FieldsHaveTheirKeysBeforeTheFrame) {
    TestFrame frame;
    auto* host = new WrappedQtWidget<Fields>(&*frame);
    std::vector<int> keys;
    frame->Bind(wxEVT_CHAR_HOOK, [&](wxKeyEvent& event) {
        if (event.ControlDown() && event.GetKeyCode() != WXK_CONTROL) {
            keys.push_back(event.GetKeyCode());
        } else {
            event.Skip();
        }
    });
    frame.show();
    QLineEdit& field = *host->getWidget()->all[0];
    ASSERT_TRUE(waitUntilShown(field));
    clickMouse(*host, field);
    ASSERT_TRUE(waitFor([&] { return field.hasFocus(); }));
    typeText("one two");
    pressKey(WXK_LEFT, wxMOD_CONTROL);
    EXPECT_TRUE(waitFor([&] { return field.cursorPosition() == 4; })) << field.cursorPosition();
    pressKey('A', wxMOD_CONTROL);
    EXPECT_TRUE(waitFor([&] { return field.selectedText() == "one two"; }));
    EXPECT_TRUE(keys.empty());
    pressKey('1', wxMOD_CONTROL);
    EXPECT_TRUE(waitFor([&] { return keys == std::vector<int>{'1'}; }));
}

TEST(Embedding, GrowsScrollsAndFollowsTheKeyboard) {
    TestFrame frame({400, 200});
    auto* scrolled = new wxScrolledWindow(&*frame);
    scrolled->SetScrollRate(10, 10);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->AddSpacer(150);
    auto* host = new WrappedQtWidget<Fields>(scrolled);
    sizer->Add(host, 0, wxEXPAND);
    scrolled->SetSizer(sizer);
    frame.show();
    Fields& fields = *host->getWidget();
    ASSERT_TRUE(waitUntilShown(*fields.all[0]));
    turnWheel(*scrolled, {20, 20}, -3);
    EXPECT_TRUE(waitFor([&] { return scrolled->GetViewStart().y > 0; }));
    const int start = scrolled->GetViewStart().y;
    // On the Qt widget, up again.
    const QPoint place(fields.all[0]->geometry().left() + 2, fields.all[0]->geometry().top() - 2);
    turnWheel(*host, toWindow(*host, fields, place), 1);
    EXPECT_TRUE(waitFor([&] { return scrolled->GetViewStart().y < start; }));
    const int virtualHeight = scrolled->GetVirtualSize().y;
    fields.all[1]->setFixedHeight(400);
    EXPECT_TRUE(waitFor([&] { return scrolled->GetVirtualSize().y > virtualHeight + 300; }));
    scrolled->Scroll(0, 0);
    handleEvents();
    ASSERT_TRUE(waitUntilShown(*fields.all[0]));
    fields.all[0]->setFocus();
    fields.all[1]->setFocus();
    EXPECT_TRUE(waitFor([&] { return scrolled->GetViewStart().y > 5; }));
    // What comes into being with the keyboard is shown once there is room for it.
    scrolled->Scroll(0, 0);
    auto* added = new QLineEdit(&fields);
    fields.layout()->addWidget(added);
    added->show();
    added->setFocus();
    EXPECT_TRUE(waitFor([&] {
        const int top = host->GetPosition().y + added->geometry().top();
        return added->geometry().top() > 400 && top > 0 &&
               top + added->height() <= scrolled->GetClientSize().y;
    }));
}

TEST(Embedding, SurvivesDockingAndEveryOrderOfEnding) {
    TestFrame frame;
    wxAuiManager manager(&*frame);
    auto* panel = new wxPanel(&*frame);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    auto* host = new WrappedQtWidget<Fields>(panel);
    sizer->Add(host, 1, wxEXPAND);
    panel->SetSizer(sizer);
    manager.AddPane(panel, wxAuiPaneInfo().Name("pane").Right().BestSize(250, 300));
    manager.Update();
    frame.show();
    QLineEdit& field = *host->getWidget()->all[0];
    QString expected;
    for (const bool isFloating : {false, true, false, true}) {
        wxAuiPaneInfo& pane = manager.GetPane("pane");
        isFloating ? pane.Float().FloatingPosition(100, 100) : pane.Dock();
        manager.Update();
        ASSERT_TRUE(waitUntilShown(field));
        clickMouse(*host, field);
        ASSERT_TRUE(waitFor([&] { return field.hasFocus(); })) << isFloating;
        typeText("x");
        expected += "x";
        EXPECT_TRUE(waitFor([&] { return field.text() == expected; })) << isFloating;
    }
    // Qt first, then its window; and the window with Qt in it, by the end of the frame.
    auto* second = new WrappedQtWidget<Fields>(panel);
    sizer->Add(second, 1, wxEXPAND);
    panel->Layout();
    handleEvents();
    const QPointer<Fields> content = host->getWidget();
    host->release();
    EXPECT_TRUE(content.isNull());
    handleEvents();
    host->Destroy();
    handleEvents();
    clickMouse(*second, *second->getWidget()->all[0]);
    typeText("y");
    EXPECT_TRUE(waitFor([&] { return second->getWidget()->all[0]->text() == "y"; }));
    manager.UnInit();
}

TEST(Embedding, DialogsBlockIt) {
    TestFrame frame;
    auto* host = new WrappedQtWidget<Fields>(&*frame);
    frame.show();
    QLineEdit& field = *host->getWidget()->all[0];
    ASSERT_TRUE(waitUntilShown(field));
    const wxPoint place = toWindow(*host, field);
    wxDialog dialog(&*frame, wxID_ANY, "Dialog", {500, 400}, {200, 100});
    dialog.CallAfter([&] {
        clickMouse(*host, place);
        typeText("x");
        dialog.EndModal(wxID_OK);
    });
    dialog.ShowModal();
    handleEvents();
    EXPECT_EQ(field.text(), "");
    clickMouse(*host, place);
    typeText("y");
    EXPECT_TRUE(waitFor([&] { return field.text() == "y"; }));
}

}  // namespace
}  // namespace tavrin::tests
