#include "gui/widgets/AutoSizedButton.h"
#include "gui/widgets/CheckBox.h"
#include "gui/widgets/CollapsiblePanel.h"
#include "gui/widgets/ColorPickerButton.h"
#include "gui/widgets/ComboBox.h"
#include "gui/widgets/Conversions.h"
#include "gui/widgets/Spinner.h"
#include "gui/widgets/TextField.h"
#include "gui/widgets/Tooltip.h"
#include "tests/gui/Gui.h"

#include <gtest/gtest.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <limits>
#include <string>

namespace tavrin::widgets {
namespace {

using namespace tests;

/// One frame with all controls, for people who look at its pictures; what is tested is that
/// nothing is cut off.
class Gallery {
public:
    Gallery() : panel_(new wxPanel(&*frame_)) {
        auto* const columns = new wxBoxSizer(wxHORIZONTAL);
        columns->Add(makeSection("ENABLED", true), wxSizerFlags(1).Expand().Border(wxALL, 10));
        columns->Add(makeSection("DISABLED", false), wxSizerFlags(1).Expand().Border(wxALL, 10));
        panel_->SetSizer(columns);
        applySkin(*panel_, GuiSkin::DEFAULT());
        frame_.show();
    }

    void keep(const std::string& name) {
        const int scale = static_cast<int>(frame_->GetContentScaleFactor());
        keepScreenshot(*frame_, name + "-" + std::to_string(scale));
    }

    TestFrame frame_{wxSize(560, 420)};
    wxPanel* panel_;
    Spinner* spinner_ = nullptr;
    ComboBox* combo_ = nullptr;
    AutoSizedButton* button_ = nullptr;
    CheckBox* check_ = nullptr;

private:
    wxWindow* makeSection(const char* title, bool enabled) {
        auto* const body = new wxPanel(panel_);
        auto* const grid = new wxFlexGridSizer(2, wxSize(8, 6));
        grid->AddGrowableCol(0, 1);
        const auto add = [&](const char* label, wxWindow* control) {
            grid->Add(new wxStaticText(body, wxID_ANY, label), wxSizerFlags().CenterVertical());
            grid->Add(control, wxSizerFlags().CenterVertical().Right());
            control->Enable(enabled);
        };
        constexpr float kInfinity = std::numeric_limits<float>::infinity();
        auto* const spinner = new Spinner(body, wxID_ANY, 60, 0, 1, 0.35f, 3, 0);
        add("Threshold:", spinner);
        add("Streak count:", new Spinner(body, wxID_ANY, 60, 1, 16, 7, 0, 0));
        add("No limits:", new Spinner(body, wxID_ANY, 60, -kInfinity, kInfinity, 12.5f, 3, 0));
        auto* const narrow = new Spinner(body, wxID_ANY, 35, 0, 100000, 1, 3, 0);
        narrow->setValue(1234.567f, false);
        add("Narrow:", narrow);
        const auto makeCombo = [&] {
            auto* const combo = new ComboBox(body, wxID_ANY, 110, {}, {}, true);
            combo->setData({{"Beauty", 0, ComboBoxItem::kStrong | ComboBoxItem::kColored},
                            {"Alpha", 1, ComboBoxItem::kStrong | ComboBoxItem::kColored},
                            {"LightMix Interactive", 2, ComboBoxItem::kColored},
                            {"Diffuse direct illumination", 3},
                            {"Reflection [Denoised]", 4}});
            combo->selectIndex(0, false);
            return combo;
        };
        auto* const combo = makeCombo();
        add("Element:", combo);
        auto* const checked = new CheckBox(body, wxID_ANY, "Delay render");
        checked->setValue(true, false);
        add("Checked:", checked);
        auto* const unchecked = new CheckBox(body, wxID_ANY, "Delay render");
        add("Unchecked:", unchecked);
        auto* const button = new AutoSizedButton(body, wxID_ANY, "Custom denoise...", 24, 75);
        add("Button:", button);
        add("Color:", new ColorPickerButton(body, wxID_ANY, "Color", {35, 18}, {1, 0.4f, 0.1f}));
        auto* const text = new TextField(body, wxID_ANY, 110);
        text->setText("Typed text");
        add("Text:", text);
        add("Primary:",
            new AutoSizedButton(body, wxID_ANY, "Denoise", 24, 75, AutoSizedButton::Look::Primary));
        body->SetSizer(grid);
        if (enabled) {
            spinner_ = spinner;
            combo_ = combo;
            button_ = button;
            check_ = checked;
        }
        auto* const box = new CheckBox(panel_, wxID_ANY, "");
        box->setValue(enabled, false);
        auto* const section =
            new CollapsiblePanel(panel_, GuiSkin::DEFAULT(), title, body, box, 0, {-1, 16});
        section->Enable(enabled);
        return section;
    }
};

TEST(WidgetGallery, ShowsAllStates) {
    Gallery gallery;
    gallery.keep("gallery");
    gallery.spinner_->SetFocus();
    moveMouse(*gallery.button_, {20, 10});
    gallery.keep("gallery-hover");
    clickMouse(*gallery.spinner_, {20, 10});
    gallery.keep("gallery-typing");
    pressKey(WXK_ESCAPE);
    clickMouse(*gallery.combo_, {20, 10});
    moveMouse(*gallery.combo_, {20, 70});
    gallery.keep("gallery-list");
    pressKey(WXK_ESCAPE);
    moveMouse(*gallery.button_, {20, 10});
    pressMouse();
    gallery.keep("gallery-pressed");
    releaseMouse();
    Tooltip tooltip(*gallery.check_,
                    "Linear scaling of the bloom effect (large, soft glow around bright areas). "
                    "Values greater than 0.0 enable the effect.");
    gallery.check_->SetFocus();
    moveMouse(*gallery.check_, {10, 8});
    EXPECT_TRUE(waitFor([&] { return tooltip.isShown(); }));
    gallery.keep("gallery-tooltip");
}

}  // namespace
}  // namespace tavrin::widgets
