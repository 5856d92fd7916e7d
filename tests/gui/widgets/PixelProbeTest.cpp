#include "gui/widgets/PixelProbe.h"
#include "tests/gui/Gui.h"

#include <gtest/gtest.h>
#include <wx/display.h>
#include <wx/panel.h>

#include <cmath>
#include <limits>

namespace tavrin::widgets {
namespace {

using namespace tests;

PixelProbe::ProbedPixel makePixel() {
    return {.value = {0.5f, 1.25f, 20000.0f, 1.0f},
            .displayed = {0.735f, 2.0f, -1.0f, 1.0f},
            .alpha = 0.75f,
            .position = {12, 345},
            .colorSpace = "sRGB"};
}

TEST(PixelProbe, ShowsLinearAndDisplayedValues) {
    TestFrame frame;
    PixelProbe::ProbedPixel pixel = makePixel();
    auto* const probe = new PixelProbe(
        new wxPanel(&*frame), [&](Pixel) { return pixel; }, "ERROR: no number.\nSend it.");
    probe->updatePosition({100, 100});
    EXPECT_EQ(probe->getText(),
              "12, 345 #BBFF00\nLinear 0.5000 1.2500 2.000e+04\nsRGB 187 255 0\nAlpha 0.7500");
    pixel.value.g = std::numeric_limits<float>::infinity();
    probe->updatePosition({100, 100});
    EXPECT_TRUE(probe->getText().Contains("0.5000 inf"));
    for (float* const value : {&pixel.value.r, &pixel.value.b, &pixel.alpha}) {
        pixel = makePixel();
        *value = NAN;
        probe->updatePosition({100, 100});
        EXPECT_EQ(probe->getText(), "12, 345\nERROR: no number.\nSend it.");
    }
}

TEST(PixelProbe, StaysOnTheDisplayAndOffThePointer) {
    TestFrame frame;
    Pixel probed;
    PixelProbe::ProbedPixel pixel = makePixel();
    auto* const probe = new PixelProbe(
        new wxPanel(&*frame),
        [&](Pixel position) {
            probed = position;
            return pixel;
        },
        "ERROR: The pixel contains NaN (Not a Number) value.\nThis is due to internal error.");
    frame.show();
    const wxRect screen = wxDisplay(0u).GetClientArea();
    probe->updatePosition({200, 150});
    probe->Show();
    for (const wxPoint place : {screen.GetTopLeft(), screen.GetTopRight(), screen.GetBottomLeft(),
                                screen.GetBottomRight(), wxPoint(200, 150)}) {
        probe->updatePosition({place.x, place.y});
        handleEvents();
        EXPECT_EQ(probed, (Pixel{place.x, place.y}));
        EXPECT_TRUE(screen.Contains(probe->GetScreenRect())) << place.x << " " << place.y;
        EXPECT_FALSE(probe->GetScreenRect().Contains(place)) << place.x << " " << place.y;
    }
    moveMouse(*frame, {400, 400});
    keepScreenshot(*probe, "probe");
    pixel.value.r = NAN;
    probe->updatePosition({200, 150});
    moveMouse(*frame, {401, 400});
    keepScreenshot(*probe, "probe-nan");
}

}  // namespace
}  // namespace tavrin::widgets
