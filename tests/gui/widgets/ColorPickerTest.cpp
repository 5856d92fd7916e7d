#include "gui/widgets/ColorPickerButton.h"
#include "gui/widgets/ColorPickerDialog.h"
#include "tests/gui/Gui.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wx/modalhook.h>
#include <wx/panel.h>

#include <vector>

namespace tavrin::widgets {
namespace {

using namespace tests;

void expectNear(const Rgb& color, const Rgb& expected, float tolerance) {
    EXPECT_NEAR(color.r, expected.r, tolerance);
    EXPECT_NEAR(color.g, expected.g, tolerance);
    EXPECT_NEAR(color.b, expected.b, tolerance);
}

TEST(ColorCoding, KnowsHuesAndTheTransferFunction) {
    const struct {
        Rgb color;
        Hsv hsv;
    } cases[] = {{{1, 0, 0}, {0, 1, 1}},
                 {{0, 1, 0}, {1.0f / 3, 1, 1}},
                 {{0, 0, 1}, {2.0f / 3, 1, 1}},
                 {{0.5f, 0.5f, 0.5f}, {0, 0, 0.5f}},
                 {{1, 0.5f, 0}, {1.0f / 12, 1, 1}},
                 {{0.2f, 0.1f, 0.2f}, {5.0f / 6, 0.5f, 0.2f}}};
    for (const auto& [color, hsv] : cases) {
        EXPECT_NEAR(toHsv(color).hue, hsv.hue, 1e-5);
        EXPECT_NEAR(toHsv(color).saturation, hsv.saturation, 1e-5);
        EXPECT_NEAR(toHsv(color).value, hsv.value, 1e-5);
        expectNear(toRgb(hsv), color, 1e-5f);
    }
    // 18 % grey is coded as 0.4614.
    EXPECT_NEAR(encodeForDisplay({0.18f, 0, 0}).r, 0.4614f, 1e-4);
    const Rgb wide{0.001f, 12.5f, -0.3f};
    expectNear(decodeFromDisplay(encodeForDisplay(wide)), wide, 1e-4f);
}

TEST(ColorCoding, ReadsHexText) {
    EXPECT_EQ(getHexText({1.0f, 0.5f, 0.0f}), "#FF8000");
    EXPECT_EQ(parseHexText(" #fF0033 "), (Rgb{1.0f, 0.0f, 0.2f}));
    EXPECT_EQ(parseHexText("f03"), (Rgb{1.0f, 0.0f, 0.2f}));
    for (const char* text : {"", "#", "12345", "1234567", "gg0000", "-10000"}) {
        EXPECT_EQ(parseHexText(text), std::nullopt) << text;
    }
}

/// Acts on the dialog of a button.
class DialogActions final : public wxModalDialogHook {
public:
    explicit DialogActions(Function<void(wxWindow&)> action) : action_(std::move(action)) {
        Register();
    }

protected:
    int Enter(wxDialog* dialog) override {
        dialog->CallAfter([this, dialog] {
            EXPECT_TRUE(waitFor([&] { return dialog->IsActive(); }));
            action_(*dialog);
        });
        return wxID_NONE;
    }

private:
    Function<void(wxWindow&)> action_;
};

template <class T>
T& find(wxWindow& dialog, const char* name) {
    return dynamic_cast<T&>(*wxWindow::FindWindowByName(name, &dialog));
}

class ColorPickerTest : public testing::Test {
protected:
    ColorPickerTest() {
        button_->Move(20, 20);
        button_->callOnChange([this](const Rgb& color) { reported_.push_back(color); });
        frame_.show();
    }
    void pick(Function<void(wxWindow&)> action) {
        const DialogActions actions(std::move(action));
        clickMouse(*button_, {10, 8});
    }

    TestFrame frame_;
    ColorPickerButton* button_ = new ColorPickerButton(
        new wxPanel(&*frame_), wxID_ANY, "Lamp light color", {35, 18}, {4.0f, 2.0f, 1.0f, 1.0f});
    std::vector<Rgb> reported_;
};

TEST_F(ColorPickerTest, TellsOfColorsWhileTheyAreTriedOut) {
    pick([&](wxWindow& dialog) {
        EXPECT_EQ(find<Spinner>(dialog, "Linear R").getValue(), 4.0f);
        EXPECT_EQ(find<Spinner>(dialog, "sRGB R").getValue(), 255.0f);
        auto& wheel = find<ColorWheel>(dialog, "ColorWheel");
        // Along the disc to its right edge, which is red, at the brightness of before.
        dragMouse(wheel, {100, 84}, {300, 84});
        EXPECT_GT(reported_.size(), 4u);
        expectNear(reported_.back(), {4.0f, 0.0f, 0.0f}, 0.02f);
        auto& green = find<Spinner>(dialog, "Linear G");
        green.SetFocus();
        typeText("2*3");
        pressKey(WXK_RETURN);
        expectNear(reported_.back(), {4.0f, 6.0f, 0.0f}, 0.03f);
        // Return in the field is for the field, here it is for the dialog.
        wheel.SetFocus();
        // Darker and as bright again.
        for (const int key : {WXK_PAGEDOWN, WXK_PAGEDOWN, WXK_PAGEUP, WXK_PAGEUP, WXK_PAGEUP}) {
            pressKey(key);
        }
        expectNear(reported_.back(), {4.0f, 6.0f, 0.0f}, 0.03f);
        keepScreenshot(dialog, "color-picker");
        pressKey(WXK_RETURN);
    });
    expectNear(button_->getColor(), {4.0f, 6.0f, 0.0f}, 0.03f);
    // Among the recent ones now, after the eight fixed ones.
    pick([&](wxWindow& dialog) {
        find<Spinner>(dialog, "sRGB R").SetFocus();
        typeText("128");
        pressKey(WXK_TAB);
        // Of the brightness that the colour has.
        expectNear(button_->getColor(), {6.0f * 0.2159f, 6.0f, 0.0f}, 0.03f);
        int swatches = 0;
        for (wxWindow* const child : dialog.GetChildren()) {
            swatches += child->GetName() == "Swatch";
            if (swatches == 9) {
                clickMouse(*child, {9, 9});
                break;
            }
        }
        expectNear(button_->getColor(), {4.0f, 6.0f, 0.0f}, 0.03f);
        pressKey(WXK_RETURN);
    });
}

TEST_F(ColorPickerTest, CancellingRestores) {
    const Rgb before = button_->getColor();
    pick([&](wxWindow& dialog) {
        auto& hex = find<TextField>(dialog, "TextField");
        hex.SetFocus();
        typeText("#00ff00");
        pressKey(WXK_RETURN);
        EXPECT_EQ(button_->getColor(), (Rgb{0, 1, 0}));
        typeText("what");
        pressKey(WXK_RETURN);
        EXPECT_EQ(hex.getText(), "#00FF00");
        pressKey(WXK_ESCAPE);
    });
    EXPECT_EQ(button_->getColor(), before);
    EXPECT_THAT(reported_, testing::ElementsAre(Rgb{0, 1, 0}, before));
    button_->setColor({1, 1, 1}, false);
    EXPECT_EQ(reported_.size(), 2u);
    // A button that is gone when its dialog ends.
    pick([&](wxWindow&) {
        button_->Destroy();
        pressKey(WXK_ESCAPE);
    });
}

}  // namespace
}  // namespace tavrin::widgets
