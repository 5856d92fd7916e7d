#include "gui/components/AuiDockArt.h"
#include "gui/components/AuiManager.h"
#include "gui/components/AuiNotebook.h"
#include "gui/components/AuiTabArt.h"
#include "gui/components/PassToMainThreadMixin.h"
#include "tests/gui/Gui.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wx/aui/floatpane.h>
#include <wx/dcmemory.h>
#include <wx/frame.h>
#include <wx/panel.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tavrin::components {
namespace {

using namespace tests;
using testing::ElementsAre;
using widgets::GuiSkin;

const wxColour kEdge(54, 54, 54);
const wxColour kShadow(37, 37, 37);

GuiSkin makeSkin() {
    GuiSkin skin = GuiSkin::DEFAULT();
    skin.base = wxColour(10, 60, 10);
    skin.highlight = wxColour(240, 200, 120);
    return skin;
}

/// The canvas, a notebook beside it, and a pane that can be dragged by its caption.
class DockingTest : public testing::Test {
protected:
    DockingTest() : manager_(std::make_unique<AuiManager>(&*frame_)) {
        frame_->Bind(paneDockChanged, [this](wxAuiManagerEvent& event) {
            EXPECT_EQ(event.GetManager(), manager_.get());
            told_.emplace_back(event.GetPane()->name.ToStdString(), event.GetPane()->IsFloating());
        });
        const auto makePanel = [&](wxWindow* parent) {
            auto* const panel = new wxPanel(parent);
            panel->SetBackgroundColour(GuiSkin::DEFAULT().base);
            return panel;
        };
        wxPanel* const canvas = makePanel(&*frame_);
        canvas->SetBackgroundColour(GuiSkin::DEFAULT().canvas);
        manager_->AddPane(canvas, wxAuiPaneInfo().CenterPane().Name("canvas").PaneBorder(false));
        notebook_ = new AuiNotebook(&*frame_);
        notebook_->AddPage(makePanel(notebook_), "Post", true);
        notebook_->AddPage(makePanel(notebook_), "LightMix");
        manager_->AddPane(notebook_, wxAuiPaneInfo()
                                         .Name("side")
                                         .Right()
                                         .CaptionVisible(false)
                                         .PaneBorder(false)
                                         .BestSize(235, 400)
                                         .Fixed());
        manager_->AddPane(
            makePanel(&*frame_),
            wxAuiPaneInfo().Name("tools").Caption("Tools").Left().BestSize(150, 300).Gripper());
        manager_->Update();
        frame_.show();
    }
    ~DockingTest() override {
        if (manager_) {
            manager_->UnInit();
        }
    }
    void keep(const std::string& name) {
        const int scale = static_cast<int>(frame_->GetContentScaleFactor());
        keepScreenshot(*frame_, name + "-" + std::to_string(scale));
    }

    TestFrame frame_;
    std::unique_ptr<AuiManager> manager_;
    AuiNotebook* notebook_ = nullptr;
    std::vector<std::pair<std::string, bool>> told_;
};

TEST_F(DockingTest, TellsWhenPanesFloatAndDock) {
    EXPECT_EQ(manager_->GetFlags(), 201u);
    EXPECT_EQ(notebook_->GetWindowStyle() & 0xFF, 33);
    keep("docking");
    wxAuiPaneInfo& tools = manager_->GetPane("tools");
    tools.Float().FloatingPosition(300, 200);
    manager_->Update();
    EXPECT_THAT(told_, ElementsAre(std::pair("tools", true)));
    handleEvents();
    keep("docking-floating");
    auto* const floating = dynamic_cast<wxAuiFloatingFrame*>(tools.frame);
    ASSERT_NE(floating, nullptr);
    wxAuiDockArt* const art = floating->GetAuiManager().GetArtProvider();
    EXPECT_NE(dynamic_cast<AuiDockArt*>(art), nullptr);
    EXPECT_NE(art, manager_->GetArtProvider());

    tools.Dock();
    manager_->Update();
    handleEvents();
    told_.clear();
    // By its caption to the right edge: it floats on the way, and is docked there.
    const wxPoint start = tools.window->GetPosition() + wxPoint(60, -8);
    moveMouse(*frame_, start);
    pressMouse();
    const wxSize size = frame_->GetClientSize();
    for (const int x : {start.x + 20, size.x / 2, size.x - 20, size.x - 5, size.x - 4}) {
        moveMouse(*frame_, {x, size.y / 2});
    }
    keep("docking-hint");
    releaseMouse();
    EXPECT_TRUE(waitFor([&] { return tools.dock_direction == wxAUI_DOCK_RIGHT; }));
    EXPECT_FALSE(tools.IsFloating());
    EXPECT_THAT(told_, ElementsAre(std::pair("tools", true), std::pair("tools", false)));
}

TEST_F(DockingTest, TabsAreChosenByMouseAndKeyboard) {
    wxWindow* tabs = nullptr;
    for (wxWindow* const child : notebook_->GetChildren()) {
        tabs = dynamic_cast<wxAuiTabCtrl*>(child) != nullptr ? child : tabs;
    }
    ASSERT_NE(tabs, nullptr);
    clickMouse(*tabs, {70, 10});
    EXPECT_EQ(notebook_->GetSelection(), 1);
    tabs->SetFocus();
    pressKey(WXK_LEFT);
    EXPECT_EQ(notebook_->GetSelection(), 0);
    keep("docking-tabs-focus");
}

TEST_F(DockingTest, TakesSkins) {
    const GuiSkin skin = makeSkin();
    wxAuiPaneInfo& tools = manager_->GetPane("tools");
    manager_->applySkin(skin);
    widgets::applySkin(*notebook_, skin);
    tools.Float();
    manager_->Update();
    wxAuiDockArt* const floating =
        dynamic_cast<wxAuiFloatingFrame&>(*tools.frame).GetAuiManager().GetArtProvider();
    for (wxAuiDockArt* const art :
         {manager_->GetArtProvider(), notebook_->GetAuiManager().GetArtProvider(), floating}) {
        // What the system's colours become does not matter.
        art->UpdateColoursFromSystem();
        EXPECT_EQ(art->GetColour(wxAUI_DOCKART_BACKGROUND_COLOUR), skin.base);
        EXPECT_EQ(art->GetColour(wxAUI_DOCKART_GRIPPER_COLOUR), skin.base);
        EXPECT_EQ(art->GetMetric(wxAUI_DOCKART_PANE_BORDER_SIZE), 0);
    }
    handleEvents();
    keep("docking-skin");
}

TEST_F(DockingTest, CallsOutliveTheManagerThatIsPushedOnTheWindow) {
    class Frame final : public PassToMainThreadMixin<wxFrame> {
    public:
        Frame() : PassToMainThreadMixin(nullptr, wxID_ANY, "Frame") {}
    };
    auto* const frame = new Frame;
    auto manager = std::make_unique<AuiManager>(frame);
    int calls = 0;
    frame->doPassToMainThread(Function<void(float)>([&](float) { ++calls; }))(1.0f);
    manager->UnInit();
    manager.reset();
    handleEvents();
    EXPECT_EQ(calls, 1);
    frame->Destroy();
}

TEST(TabArt, DrawsTabsOverThreeLines) {
    TestFrame frame;
    const GuiSkin skin = makeSkin();
    AuiTabArt original(skin);
    const std::unique_ptr<wxAuiTabArt> art(original.Clone());
    ASSERT_NE(dynamic_cast<AuiTabArt*>(art.get()), nullptr);
    wxBitmap bitmap(120, 40);
    wxMemoryDC dc(bitmap);
    const auto getColor = [&](int x, int y) {
        wxColour color;
        dc.GetPixel(x, y, &color);
        return color;
    };
    wxAuiNotebookPage page;
    page.caption = "LightMix";
    for (const bool isActive : {false, true}) {
        page.active = isActive;
        art->DrawBackground(dc, &*frame, {0, 0, 120, 40});
        EXPECT_EQ(getColor(5, 36), skin.base);
        EXPECT_EQ(getColor(5, 37), kEdge);
        EXPECT_EQ(getColor(5, 38), kShadow);
        EXPECT_EQ(getColor(5, 39), skin.highlight);
        wxRect tab;
        wxRect button;
        int extent = 0;
        art->DrawTab(dc, &*frame, page, {0, 0, 120, 40}, 0, &tab, &button, &extent);
        EXPECT_EQ(tab.x, 10);
        EXPECT_EQ(tab.y + tab.height, 39);
        EXPECT_EQ(extent, tab.width + 1);
        dc.SetFont(skin.getFont());
        EXPECT_EQ(tab.GetSize(), dc.GetTextExtent(page.caption) + wxSize(8, 4));
        const wxColour fill = isActive ? skin.highlight : skin.base;
        EXPECT_EQ(getColor(tab.x + 2, tab.y + tab.height - 2), fill);
        EXPECT_EQ(getColor(tab.x, tab.y), skin.base) << "The corner is cut.";
        EXPECT_EQ(getColor(tab.x + tab.width, tab.y + 5), kEdge);
        EXPECT_EQ(getColor(tab.x + 5, 39), skin.highlight);
    }
    // Where all tabs have the same width, a caption that does not fit is cut.
    art->SetFlags(wxAUI_NB_TAB_FIXED_WIDTH);
    art->SetSizingInfo({120, 40}, 5, &*frame);
    int extent = 0;
    const wxSize size = art->GetTabSize(dc, &*frame, page.caption, {}, true, 0, &extent);
    EXPECT_EQ(extent, size.x + 1);
    page.caption = wxString('m', 200);
    art->DrawBackground(dc, &*frame, {0, 0, 120, 40});
    wxRect tab;
    wxRect button;
    art->DrawTab(dc, &*frame, page, {0, 0, 120, 40}, 0, &tab, &button, &extent);
    EXPECT_EQ(tab.width, size.x);
    for (int y = 0; y < 37; ++y) {
        EXPECT_EQ(getColor(tab.x + tab.width + 3, y), skin.base);
    }
}

}  // namespace
}  // namespace tavrin::components
