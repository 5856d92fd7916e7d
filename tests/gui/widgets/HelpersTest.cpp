#include "gui/widgets/Conversions.h"
#include "gui/widgets/DelayedCallback.h"
#include "gui/widgets/ScopedWindowFreezer.h"
#include "gui/widgets/ZoomableScrollable.h"
#include "tests/gui/Gui.h"

#include <gtest/gtest.h>
#include <wx/image.h>
#include <wx/panel.h>
#include <wx/stopwatch.h>

#include <cmath>
#include <limits>
#include <memory>

namespace tavrin::widgets {
namespace {

using namespace tests;

void wait(int milliseconds) {
    const wxStopWatch watch;
    waitFor([&] { return watch.Time() > milliseconds; });
}

TEST(Conversions, KeepPixelsOfLargeBitmapsAtTheirPlaces) {
    // Large enough for several threads.
    BitmapImpl<Rgb> bitmap(700, 500);
    for (int y = 0; y < 500; ++y) {
        for (int x = 0; x < 700; ++x) {
            const auto value = static_cast<float>((x * 7 + y * 13) % 256);
            bitmap.at(x, y) = {value / 255, 1 - value / 255, static_cast<float>(x % 2),
                               value / 255};
        }
    }
    const wxImage image = toWxBitmap(bitmap, true).ConvertToImage();
    ASSERT_EQ(image.GetSize(), wxSize(700, 500));
    ASSERT_TRUE(image.HasAlpha());
    int faults = 0;
    for (int y = 0; y < 500; ++y) {
        for (int x = 0; x < 700; ++x) {
            const int value = (x * 7 + y * 13) % 256;
            faults += image.GetRed(x, y) != value || image.GetGreen(x, y) != 255 - value ||
                      image.GetBlue(x, y) != x % 2 * 255 || image.GetAlpha(x, y) != value;
        }
    }
    EXPECT_EQ(faults, 0);
    EXPECT_FALSE(toWxBitmap(bitmap, false).ConvertToImage().HasAlpha());
    EXPECT_FALSE(toWxBitmap({}, true).IsOk());
}

TEST(Conversions, ClampComponentsToBytes) {
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    const struct {
        float component;
        int byte;
    } cases[] = {{0.0f, 0}, {1.0f, 255},      {0.5f, 128},     {-1.0f, 0},      {7.0f, 255},
                 {NAN, 0},  {kInfinity, 255}, {-kInfinity, 0}, {0.5f / 255, 1}, {0.49f / 255, 0}};
    for (const auto& [component, byte] : cases) {
        EXPECT_EQ(toByte(component), byte) << component;
    }
    EXPECT_EQ(toBucket(wxRect(3, 4, 10, 20)), (Bucket{3, 4, 13, 24}));
}

TEST(DelayedCallback, EndsABurstInOneCall) {
    int calls = 0;
    DelayedCallback callback;
    EXPECT_FALSE(callback);
    callback = [&] { ++calls; };
    EXPECT_TRUE(callback);
    // Each request starts the wait anew: the sum of the pauses is far longer than it.
    for (int i = 0; i < 10; ++i) {
        callback.scheduleDelayed(300);
        wait(60);
        EXPECT_EQ(calls, 0);
    }
    EXPECT_TRUE(waitFor([&] { return calls == 1; }));
    EXPECT_FALSE(callback.isScheduled());
}

TEST(DelayedCallback, MayEndWhileItWaitsAndWhileItRuns) {
    int calls = 0;
    auto waiting = std::make_unique<DelayedCallback>([&] { ++calls; });
    waiting->scheduleDelayed(1);
    waiting.reset();
    auto running = std::make_unique<DelayedCallback>();
    *running = [&calls, &running] {
        running.reset();
        ++calls;
    };
    running->scheduleDelayed(10);
    EXPECT_TRUE(waitFor([&] { return calls > 0; }));
    wait(30);
    EXPECT_EQ(calls, 1);
}

class Zoomable final : public wxPanel, public ZoomableScrollable {
public:
    explicit Zoomable(wxWindow* parent) : wxPanel(parent, wxID_ANY, {20, 30}, {400, 300}) {
        auto* const child = new wxPanel(this, wxID_ANY, {50, 60}, {200, 200});
        child->SetBackgroundColour(*wxBLUE);
        bindScrollAndZoomEvents(this);
    }
    void scrollByWheel(const wxMouseEvent& event) override {
        scrolled[event.GetWheelAxis() == wxMOUSE_WHEEL_HORIZONTAL] += event.GetWheelRotation();
    }
    void zoomByWheel(const wxMouseEvent& event, int steps) override {
        zoomed += steps;
        position = event.GetPosition();
    }
    void send(wxMouseWheelAxis axis, int rotation, bool shift, bool control) {
        wxMouseEvent event(wxEVT_MOUSEWHEEL);
        event.m_wheelAxis = axis;
        event.m_wheelRotation = rotation;
        event.m_wheelDelta = 120;
        event.SetShiftDown(shift);
        event.SetControlDown(control);
        HandleWindowEvent(event);
    }

    int scrolled[2] = {};
    int zoomed = 0;
    wxPoint position;
};

TEST(ZoomableScrollable, ZoomsByNotchesAndScrollsWithModifiers) {
    TestFrame frame;
    auto* const panel = new Zoomable(new wxPanel(&*frame));
    frame.show();
    // On a child, where the position is still that of the bound window.
    turnWheel(*panel, {150, 160}, 2);
    EXPECT_TRUE(waitFor([&] { return panel->zoomed == 2; }));
    EXPECT_EQ(panel->position, wxPoint(150, 160));

    panel->zoomed = 0;
    for (int part = 0; part < 5; ++part) {
        panel->send(wxMOUSE_WHEEL_VERTICAL, 30, false, false);
    }
    EXPECT_EQ(panel->zoomed, 1);
    // The other way, what is left of the first does not count.
    panel->send(wxMOUSE_WHEEL_VERTICAL, -119, false, false);
    EXPECT_EQ(panel->zoomed, 1);
    panel->send(wxMOUSE_WHEEL_VERTICAL, -1, false, false);
    EXPECT_EQ(panel->zoomed, 0);

    panel->send(wxMOUSE_WHEEL_VERTICAL, 120, false, true);
    panel->send(wxMOUSE_WHEEL_VERTICAL, 30, true, false);
    // A wheel turned to the right shows what is further to the right, as one turned down does
    // below.
    panel->send(wxMOUSE_WHEEL_HORIZONTAL, 40, false, false);
    EXPECT_EQ(panel->scrolled[0], 120);
    EXPECT_EQ(panel->scrolled[1], 30 - 40);
    EXPECT_EQ(panel->zoomed, 0);
}

TEST(ScopedWindowFreezer, ThawsAtTheEnd) {
    TestFrame frame;
    {
        const ScopedWindowFreezer outer(&*frame);
        { const ScopedWindowFreezer inner(&*frame); }
        EXPECT_TRUE(frame->IsFrozen());
    }
    EXPECT_FALSE(frame->IsFrozen());
}

}  // namespace
}  // namespace tavrin::widgets
