#include "gui/widgets/Spinner.h"
#include "tests/gui/Gui.h"

#include <gtest/gtest.h>
#include <wx/panel.h>
#include <wx/spinctrl.h>

#include <cmath>
#include <limits>
#include <vector>

namespace tavrin::widgets {
namespace {

using namespace tests;

constexpr float kInfinity = std::numeric_limits<float>::infinity();

class SpinnerTest : public testing::Test {
protected:
    Spinner& make(float minimum, float maximum, float defaultValue, int precision,
                  float extra = 0.0f) {
        auto* const spinner =
            new Spinner(panel_, wxID_ANY, 80, minimum, maximum, defaultValue, precision, extra);
        spinner->Move(40, 200 + 40 * static_cast<int>(panel_->GetChildren().size()));
        spinner->SetSize(spinner->GetBestSize());
        spinner->Bind(wxEVT_SPINCTRLDOUBLE, [this](wxSpinDoubleEvent& event) {
            reported_.push_back(static_cast<float>(event.GetValue()));
        });
        return *spinner;
    }

    void type(Spinner& spinner, const char* text, int end = WXK_RETURN) {
        spinner.SetFocus();
        typeText(text);
        pressKey(end);
    }

    TestFrame frame_;
    wxPanel* panel_ = new wxPanel(&*frame_);
    /// Until a click is no longer the second one of a double click.
    static void pause() {
        wxMilliSleep(500);
        handleEvents();
    }

    std::vector<float> reported_;
};

TEST_F(SpinnerTest, TakesSumsAndKeepsItsValueOtherwise) {
    Spinner& spinner = make(-100, 100, 1, 3);
    make(0, 1, 0, 3);
    frame_.show();
    const struct {
        const char* text;
        float value;
    } cases[] = {{"2.5", 2.5f},    {"(1,5+1)*2", 5.0f}, {"1e", 5.0f},  {"--", 5.0f},
                 {"1000", 100.0f}, {"-1/0", 100.0f},    {"-7", -7.0f}, {"0.12345", 0.123f}};
    for (const auto& [text, value] : cases) {
        type(spinner, text);
        EXPECT_FLOAT_EQ(spinner.getValue(), value) << text;
    }
    EXPECT_EQ(reported_, (std::vector<float>{2.5f, 5.0f, 100.0f, -7.0f, 0.123f}));
    reported_.clear();

    type(spinner, "50", WXK_ESCAPE);
    EXPECT_FLOAT_EQ(spinner.getValue(), 0.123f);
    // Going on to the next control accepts too.
    type(spinner, "60", WXK_TAB);
    EXPECT_FLOAT_EQ(spinner.getValue(), 60.0f);
    EXPECT_FALSE(spinner.HasFocus());
    EXPECT_EQ(reported_.size(), 1u);
}

TEST_F(SpinnerTest, ClickOpensTypingAndDoubleClickSetsTheDefault) {
    Spinner& spinner = make(0, 10, 2, 3);
    frame_.show();
    spinner.setValue(7.12345f, false);
    clickMouse(spinner, {20, 11});
    pressKey(WXK_RETURN);
    EXPECT_EQ(spinner.getValue(), 7.12345f) << "Looking changes nothing.";
    pause();
    clickMouse(spinner, {20, 11});
    // Caret to the end, one character off: "7.12".
    pressKey(WXK_END);
    pressKey(WXK_BACK);
    pressKey(WXK_RETURN);
    EXPECT_FLOAT_EQ(spinner.getValue(), 7.12f);
    pause();
    doubleClickMouse(spinner, {20, 11});
    EXPECT_TRUE(waitFor([&] { return spinner.getValue() == 2.0f; }));
    type(spinner, "3");
    EXPECT_FLOAT_EQ(spinner.getValue(), 3.0f);
    EXPECT_EQ(reported_, (std::vector<float>{7.12f, 2.0f, 3.0f}));
}

TEST_F(SpinnerTest, IsDraggedToTheSideAndUp) {
    Spinner& spinner = make(0, 10, 5, 3);
    Spinner& slow = make(0, 10, 5, 3, 0.2f);
    Spinner& count = make(2, 8, 5, 0);
    frame_.show();
    dragMouse(spinner, {20, 10}, {100, 10});
    EXPECT_FLOAT_EQ(spinner.getValue(), 7.0f);
    dragMouse(spinner, {20, 10}, {20, 50});
    EXPECT_FLOAT_EQ(spinner.getValue(), 6.0f);
    dragMouse(slow, {20, 10}, {100, 10});
    EXPECT_FLOAT_EQ(slow.getValue(), 5.4f);
    dragMouse(count, {20, 10}, {620, 10});
    EXPECT_FLOAT_EQ(count.getValue(), 8.0f);
    EXPECT_GT(reported_.size(), 10u) << "The value is told all along the way.";
    for (const float value : reported_) {
        EXPECT_NEAR(value, std::round(value * 1000) / 1000, 1e-6);
    }

    spinner.setValue(5, false);
    moveMouse(spinner, {20, 10});
    pressMouse();
    moveMouse(spinner, {60, 10});
    EXPECT_GT(spinner.getValue(), 5.0f);
    pressKey(WXK_ESCAPE);
    EXPECT_FLOAT_EQ(spinner.getValue(), 5.0f);
    moveMouse(spinner, {100, 10});
    releaseMouse();
    EXPECT_FLOAT_EQ(spinner.getValue(), 5.0f);
}

TEST_F(SpinnerTest, StepsByKeysWheelAndArrows) {
    Spinner& spinner = make(-kInfinity, kInfinity, 0, 2);
    Spinner& other = make(0, 1, 0, 2);
    frame_.show();
    other.SetFocus();
    handleEvents();
    turnWheel(spinner, {20, 11}, 3);
    EXPECT_EQ(spinner.getValue(), 0.0f) << "The wheel scrolls where the keyboard is elsewhere.";
    spinner.SetFocus();
    handleEvents();
    turnWheel(spinner, {20, 11}, 3);
    EXPECT_TRUE(waitFor([&] { return std::abs(spinner.getValue() - 0.03f) < 1e-6f; }));
    pressKey(WXK_UP);
    pressKey(WXK_UP, wxMOD_CONTROL);
    pressKey(WXK_DOWN);
    EXPECT_FLOAT_EQ(spinner.getValue(), 0.13f);
    clickMouse(spinner, {74, 5});
    EXPECT_FLOAT_EQ(spinner.getValue(), 0.14f);
    spinner.setValue(5000, false);
    pressKey(WXK_DOWN);
    EXPECT_FLOAT_EQ(spinner.getValue(), 4990.0f);
    spinner.setValue(NAN, false);
    EXPECT_TRUE(std::isnan(spinner.getValue()));
    pressKey(WXK_UP);
    EXPECT_FLOAT_EQ(spinner.getValue(), 0.01f);
}

TEST_F(SpinnerTest, KeepsValuesOfTheProgramAndClampsThem) {
    Spinner& spinner = make(0, 10, 5, 0);
    frame_.show();
    spinner.setValue(3.7f, false);
    EXPECT_EQ(spinner.getValue(), 3.7f);
    spinner.setValue(30, false);
    EXPECT_EQ(spinner.getValue(), 10.0f);
    EXPECT_TRUE(reported_.empty());
    spinner.setValue(10, true);
    spinner.configure(0, 8, 2, 0, 0, true);
    spinner.configure(0, 20, 2, 0, 0, true);
    EXPECT_EQ(reported_, (std::vector<float>{10.0f, 8.0f}));
}

TEST_F(SpinnerTest, MayEndInAnyState) {
    for (const bool dragged : {false, true}) {
        Spinner& spinner = make(0, 10, 5, 3);
        frame_.show();
        moveMouse(spinner, {20, 10});
        pressMouse();
        if (dragged) {
            moveMouse(spinner, {40, 10});
        } else {
            releaseMouse();
            typeText("1");
        }
        spinner.Disable();
        spinner.Enable();
        spinner.Destroy();
        releaseMouse();
        handleEvents();
    }
    EXPECT_EQ(wxWindow::GetCapture(), nullptr);
}

}  // namespace
}  // namespace tavrin::widgets
