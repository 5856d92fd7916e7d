#include "gui/components/DrawPanel.h"
#include "gui/widgets/Conversions.h"
#include "gui/widgets/PixelProbe.h"
#include "tests/gui/Gui.h"

#include <gtest/gtest.h>
#include <wx/scrolbar.h>
#include <wx/sizer.h>

#include <cmath>
#include <string>
#include <vector>

namespace tavrin::components {
namespace {

using namespace tests;

/// A canvas in a frame, over an image in which every pixel tells its place.
class CanvasTest : public testing::Test {
protected:
    struct Request {
        Bucket region;
        float scale;
    };

    void show(Pixel image, wxSize size) {
        frame_->SetClientSize(size);
        canvas_ = new DrawPanel(&*frame_);
        auto* sizer = new wxBoxSizer(wxVERTICAL);
        sizer->Add(canvas_, 1, wxEXPAND);
        frame_->SetSizer(sizer);
        canvas_->setImage(image, makeProvider(1.0f), makeProvider(2.0f));
        frame_.show();
        ASSERT_TRUE(waitFor([&] { return canvas_->GetSize() == size; }));
        settle();
    }

    /// Until the late repaint is over.
    void settle() {
        wxMilliSleep(70);
        handleEvents();
        requests_.clear();
    }

    static Rgb getColor(int x, int y) {
        return {static_cast<float>(x % 256) / 255.0f, static_cast<float>(y % 256) / 255.0f,
                static_cast<float>((x / 256 + y / 256 * 4) % 256) / 255.0f, 0.25f};
    }

    /// Like the end of the pipeline: samples for reductions, repeats pixels for enlargements.
    DrawPanel::Provider makeProvider(float factor) {
        return [this, factor](const Bucket& region, float scale) -> Optional<BitmapImpl<Rgb>> {
            if (factor != 1.0f) {
                requests_.push_back({region, scale});
            }
            if (isMissing_) {
                return std::nullopt;
            }
            const auto count = [scale](int size) {
                return static_cast<int>(std::ceil(static_cast<float>(size) / scale));
            };
            BitmapImpl<Rgb> bitmap(count(region.width()), count(region.height()));
            for (int y = 0; y < bitmap.getHeight(); ++y) {
                for (int x = 0; x < bitmap.getWidth(); ++x) {
                    bitmap.at(x, y) =
                        getColor(region.x0 + static_cast<int>(static_cast<float>(x) * scale),
                                 region.y0 + static_cast<int>(static_cast<float>(y) * scale));
                }
            }
            return bitmap;
        };
    }

    wxWindow& getCanvas() const { return *wxWindow::FindWindowByName("Image", canvas_); }
    std::vector<wxScrollBar*> getBars() const {
        std::vector<wxScrollBar*> bars;
        for (wxWindow* child : canvas_->GetChildren()) {
            if (auto* bar = dynamic_cast<wxScrollBar*>(child)) {
                bars.push_back(bar);
            }
        }
        return bars;
    }
    Pixel getThumbs() const {
        return {getBars()[0]->GetThumbPosition(), getBars()[1]->GetThumbPosition()};
    }

    /// Every fifth pixel on the display is that of its place in the image, soon.
    void expectRightPixels(const char* what) {
        int wrong = -1;
        EXPECT_TRUE(waitFor([&] {
            wrong = countWrongPixels();
            return wrong == 0;
        })) << what
            << ": " << wrong;
        settle();
    }
    int countWrongPixels() const {
        const wxImage screen = readScreen(getCanvas());
        const float scale = std::ldexp(1.0f, -canvas_->getZoom());
        int wrong = screen.GetSize() == getCanvas().GetSize() ? 0 : 1;
        for (int y = 0; y < screen.GetHeight(); y += 5) {
            for (int x = 0; x < screen.GetWidth(); x += 5) {
                const Rgb color =
                    getColor(static_cast<int>(static_cast<float>(x + getThumbs().x) * scale),
                             static_cast<int>(static_cast<float>(y + getThumbs().y) * scale));
                wrong += screen.GetRed(x, y) != widgets::toByte(color.r) ||
                         screen.GetGreen(x, y) != widgets::toByte(color.g) ||
                         screen.GetBlue(x, y) != widgets::toByte(color.b);
            }
        }
        return wrong;
    }

    TestFrame frame_;
    DrawPanel* canvas_ = nullptr;
    bool isMissing_ = false;
    std::vector<Request> requests_;
};

TEST_F(CanvasTest, BarsAppearWhereTheImageDoesNotFit) {
    show({100, 100}, {400, 300});
    const int bar = getBars()[0]->GetBestSize().y;
    const struct {
        Pixel image;
        bool isWide, isHigh;
        wxSize visible;
    } cases[] = {
        {{100, 100}, false, false, {100, 100}},
        {{400, 300}, false, false, {400, 300}},
        {{401, 100}, true, false, {400, 100}},
        {{401, 300 - bar}, true, false, {400, 300 - bar}},
        {{401, 301 - bar}, true, true, {400 - bar, 300 - bar}},
        {{100, 301}, false, true, {100, 300}},
        {{401 - bar, 301}, true, true, {400 - bar, 300 - bar}},
        {{2000, 2000}, true, true, {400 - bar, 300 - bar}},
        {{0, 0}, false, false, {0, 0}},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(std::to_string(each.image.x) + " " + std::to_string(each.image.y));
        canvas_->setImage(each.image, {}, {});
        EXPECT_EQ(getBars()[0]->IsShown(), each.isWide);
        EXPECT_EQ(getBars()[1]->IsShown(), each.isHigh);
        const wxRect place = getCanvas().GetRect();
        EXPECT_EQ(place.GetSize(), each.visible);
        EXPECT_EQ(place.x, (400 - (each.isHigh ? bar : 0) - each.visible.x) / 2);
        EXPECT_EQ(place.y, (300 - (each.isWide ? bar : 0) - each.visible.y) / 2);
    }
}

TEST_F(CanvasTest, ShowsTheRightPixelsAtEveryZoom) {
    show({3000, 2000}, {500, 400});
    expectRightPixels("at first");
    for (const int level : {-5, -3, -1, 0, 2, 5}) {
        canvas_->setZoom(level);
        expectRightPixels(("zoom " + std::to_string(level)).c_str());
    }
    canvas_->setZoom(0);
    canvas_->scrollBy(3, 7);
    canvas_->scrollBy(-1, 0);
    expectRightPixels("scrolled");
    getBars()[1]->SetThumbPosition(1100);
    dragMouse(*getBars()[1], {5, 200}, {5, 260});
    expectRightPixels("scrolled by the bar");
    for (const wxSize size : {wxSize(640, 520), wxSize(420, 300)}) {
        frame_->SetClientSize(size);
        EXPECT_TRUE(waitFor([&] { return canvas_->GetSize() == size; }));
        expectRightPixels(("made " + std::to_string(size.x) + " wide").c_str());
    }
    keepScreenshot(*frame_, "canvas");
}

TEST_F(CanvasTest, ZoomIsClampedAndTellsEachRequest) {
    show({64, 64}, {400, 300});
    int calls = 0;
    canvas_->onZoomChanged = [&] { ++calls; };
    for (int i = 0; i < 8; ++i) {
        canvas_->zoomIn();
    }
    EXPECT_EQ(canvas_->getZoom(), 5);
    EXPECT_EQ(canvas_->getZoomedSize(), (Pixel{2048, 2048}));
    canvas_->setZoom(-100);
    EXPECT_EQ(canvas_->getZoom(), -5);
    EXPECT_EQ(calls, 9);
    canvas_->setImage({300, 20}, {}, {});
    EXPECT_EQ(canvas_->getZoom(), 0);
    canvas_->setImage({0, 0}, {}, {});
    canvas_->zoomIn();
    EXPECT_EQ(canvas_->getZoom(), 1);
    EXPECT_EQ(getCanvas().GetSize(), wxSize(0, 0));
}

TEST_F(CanvasTest, WheelAndMiddleButtonKeepThePointUnderThePointer) {
    show({3000, 2000}, {500, 400});
    Pixel place;
    canvas_->cursorProvider = [&](const DrawPanel::MouseEvent& event) {
        place = event.imagePosition;
        return wxCURSOR_ARROW;
    };
    canvas_->scrollBy(60, 40);
    moveMouse(getCanvas(), {300, 100});
    const Pixel held = place;
    EXPECT_EQ(held, (Pixel{1200, 700}));
    for (const int steps : {1, 1, -1, -1, 2}) {
        turnWheel(getCanvas(), {300, 100}, steps);
        moveMouse(getCanvas(), {301, 100});
        moveMouse(getCanvas(), {300, 100});
        EXPECT_NEAR(place.x, held.x, 1) << canvas_->getZoom();
        EXPECT_NEAR(place.y, held.y, 1) << canvas_->getZoom();
    }
    EXPECT_EQ(canvas_->getZoom(), 2);
    canvas_->setZoom(0);
    moveMouse(getCanvas(), {300, 100});
    const Pixel anchor = place;
    dragMouse(getCanvas(), {300, 100}, {120, 250}, wxMOUSE_BTN_MIDDLE);
    EXPECT_EQ(place, anchor);
    expectRightPixels("panned");
    dragMouse(getCanvas(), {100, 100}, {490, 390}, wxMOUSE_BTN_MIDDLE);
    dragMouse(getCanvas(), {100, 100}, {490, 390}, wxMOUSE_BTN_MIDDLE);
    dragMouse(getCanvas(), {100, 100}, {490, 390}, wxMOUSE_BTN_MIDDLE);
    dragMouse(getCanvas(), {100, 100}, {490, 390}, wxMOUSE_BTN_MIDDLE);
    EXPECT_EQ(getThumbs(), (Pixel{0, 0}));
    expectRightPixels("panned to the corner");
}

TEST_F(CanvasTest, ScrollingAsksForTheStripThatAppears) {
    show({3000, 2000}, {500, 400});
    const wxSize size = getCanvas().GetSize();
    canvas_->scrollBy(2, 0);
    ASSERT_EQ(requests_.size(), 1u);
    EXPECT_EQ(requests_[0].region, (Bucket{size.x, 0, size.x + 30, size.y}));
    EXPECT_EQ(requests_[0].scale, 1.0f);
    EXPECT_TRUE(waitFor([&] { return requests_.size() > 1; }));
    EXPECT_EQ(requests_[1].region, (Bucket{30, 0, size.x + 30, size.y}));
    settle();
    EXPECT_EQ(requests_.size(), 0u);
    canvas_->setZoom(-2);
    EXPECT_TRUE(waitFor([&] { return !requests_.empty(); }));
    for (const Request& request : requests_) {
        EXPECT_EQ(request.scale, 4.0f);
        EXPECT_LE(request.region.width(), 4 * size.x);
    }
}

TEST_F(CanvasTest, AMissingPartIsMarked) {
    isMissing_ = true;
    show({200, 100}, {400, 300});
    wxImage screen = readScreen(getCanvas());
    EXPECT_EQ(screen.GetRed(100, 50), 255);
    EXPECT_EQ(screen.GetGreen(100, 50), 0);
    EXPECT_EQ(screen.GetGreen(0, 50), 255);
    isMissing_ = false;
    canvas_->refreshFull();
    expectRightPixels("there again");
}

TEST_F(CanvasTest, RightButtonProbes) {
    show({200, 100}, {400, 300});
    canvas_->setImage({200, 100}, makeProvider(1.0f), {});
    handleEvents();
    auto* const probe = dynamic_cast<widgets::PixelProbe*>(getCanvas().GetChildren().front());
    ASSERT_NE(probe, nullptr);
    EXPECT_FALSE(probe->IsShown());
    moveMouse(getCanvas(), {10, 20});
    pressMouse(wxMOUSE_BTN_RIGHT);
    EXPECT_TRUE(probe->IsShown());
    EXPECT_TRUE(probe->getText().StartsWith("10, 20 #000000")) << probe->getText();
    moveMouse(getCanvas(), {199, 99});
    EXPECT_TRUE(probe->getText().StartsWith("199, 99 #000000\nLinear 0.7804 0.3882 0.0000"))
        << probe->getText();
    EXPECT_TRUE(probe->getText().EndsWith("Alpha 0.2500")) << probe->getText();
    keepScreenshot(*frame_, "probing");
    releaseMouse(wxMOUSE_BTN_RIGHT);
    EXPECT_FALSE(probe->IsShown());
}

TEST_F(CanvasTest, TellsClicksAndLetsDoubleClicksPass) {
    show({200, 100}, {400, 300});
    std::vector<Pixel> told;
    int doubleClicks = 0;
    canvas_->onLeftDown = [&](const auto& event) { told.push_back(event.imagePosition); };
    canvas_->onLeftUp = [&](const auto& event) { told.push_back(event.viewPosition); };
    canvas_->Bind(wxEVT_LEFT_DCLICK, [&](wxMouseEvent&) { ++doubleClicks; });
    canvas_->setZoom(1);
    clickMouse(getCanvas(), {21, 40});
    EXPECT_EQ(told, (std::vector<Pixel>{{10, 20}, {21, 40}}));
    doubleClickMouse(getCanvas(), {30, 30});
    EXPECT_EQ(doubleClicks, 1);
}

TEST_F(CanvasTest, EndsWhileItIsPannedAndProbes) {
    show({3000, 2000}, {500, 400});
    moveMouse(getCanvas(), {100, 100});
    pressMouse(wxMOUSE_BTN_MIDDLE);
    moveMouse(getCanvas(), {90, 80});
    pressMouse(wxMOUSE_BTN_RIGHT);
    canvas_->refreshFullLater();
    canvas_->Destroy();
    handleEvents();
    releaseMouse(wxMOUSE_BTN_RIGHT);
    releaseMouse(wxMOUSE_BTN_MIDDLE);
    wxMilliSleep(70);
    handleEvents();
}

}  // namespace
}  // namespace tavrin::components
