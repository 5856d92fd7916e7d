#include "gui/sheet/PropertySheet.h"
#include "gui/sheet/editors/NumberField.h"
#include "gui/widgets/Conversions.h"
#include "gui/windows/MainFrame.h"
#include "services/colorkit/Pipeline.h"
#include "services/colorkit/editing/PipelineData.h"
#include "services/colorkit/operators/LutOperator.h"
#include "services/postcore/PropertyIds.h"
#include "tests/base/pipeline/TestChain.h"
#include "tests/gui/sheet/QtGui.h"
#include "tests/support/RegisteredTypes.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QToolButton>
#include <atomic>
#include <cmath>
#include <thread>

namespace tavrin::windows {
namespace {

using namespace tests;

constexpr Bucket kWindow{0, 0, 640, 400};

/// The main window over a pipeline whose files are made here.
class MainFrameTest : public testing::Test {
protected:
    void SetUp() override {
        performer_.load.setLoader([this](const Path& path) -> Result<image::ChannelImage> {
            while (isLoadBlocked_) {
                std::this_thread::yield();
            }
            if (path.native().contains("bad")) {
                return Failure("File \"" + path.native() + "\" is bad.");
            }
            return pipeline::makeRender(kWindow, 3);
        });
        frame_ = new MainFrame(nullptr, *settings_, colorMapping_, performer_, host_);
        frame_->Show();
        EXPECT_TRUE(waitFor([this] { return frame_->IsShownOnScreen() && frame_->IsActive(); }));
        pressKey(WXK_SHIFT);
    }
    void TearDown() override {
        close();
        isLoadBlocked_ = false;
    }

    void close() {
        if (frame_ != nullptr) {
            std::exchange(frame_, nullptr)->Close(true);
            handleEvents();
        }
    }

    void load(const char* name = "render.txr") {
        performer_.load.load({}, {Path(String(name))});
        EXPECT_TRUE(waitFor([this] { return getTitle().contains("640x400px"); }));
        EXPECT_TRUE(waitUntilShown(getSheet()));
    }

    String getTitle() const { return widgets::toString(frame_->GetTitle()); }
    wxWindow& getCanvas() const {
        return *wxWindow::FindWindowByName("Image", &frame_->getCanvas());
    }
    static sheet::PropertySheet& getSheet() {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (auto* sheet = dynamic_cast<sheet::PropertySheet*>(widget)) {
                return *sheet;
            }
        }
        throw Exception("There is no sheet.");
    }
    static wxWindow* findDialog(const char* caption) {
        for (wxWindow* window : wxTopLevelWindows) {
            if (dynamic_cast<widgets::MessageDialog*>(window) != nullptr && window->IsShown() &&
                window->GetLabel() == caption) {
                return window;
            }
        }
        return nullptr;
    }

    /// Acts as soon as a modal dialog is there, in whose event loop the test then waits.
    void onDialog(const char* caption, const Function<void()>& action) {
        poll_ = [this, caption, action] {
            if (findDialog(caption) == nullptr) {
                return poll_.scheduleDelayed(20);
            }
            handleEvents();
            action();
        };
        poll_.scheduleDelayed(20);
    }

    /// The canvas shows what the end of the pipeline gives.
    bool showsPipeline() const {
        const auto wanted = performer_.zoom.provideRgbRegion("", kWindow, 1.0f);
        const wxImage screen = readScreen(getCanvas());
        if (screen.GetSize() != wxSize(kWindow.width(), kWindow.height())) {
            return false;
        }
        for (int y = 0; y < screen.GetHeight(); y += 3) {
            for (int x = 0; x < screen.GetWidth(); x += 3) {
                const Rgb& color = wanted->at(x, y);
                if (screen.GetRed(x, y) != widgets::toByte(color.r) ||
                    screen.GetGreen(x, y) != widgets::toByte(color.g) ||
                    screen.GetBlue(x, y) != widgets::toByte(color.b)) {
                    return false;
                }
            }
        }
        return true;
    }
    GenericList getOperators() const {
        return convertPipelineToDataObjects(colorMapping_.getPipeline(),
                                            colorkit::HiddenItems::Include);
    }

    RegisteredTypes types_;
    std::shared_ptr<settings::Settings> settings_ = std::make_shared<settings::Settings>();
    colorkit::ColorMapping colorMapping_;
    std::atomic<bool> isLoadBlocked_ = false;
    mutable pipeline::Performer performer_{*settings_, colorMapping_};
    SharedPtr<components::PropertySheetHost> host_ =
        std::make_shared<components::PropertySheetHost>();
    MainFrame* frame_ = nullptr;
    widgets::DelayedCallback poll_;
};

TEST_F(MainFrameTest, ShowsALoadedImageAndWhatChanges) {
    EXPECT_FALSE(getSheet().isEnabled());
    load();
    EXPECT_TRUE(waitFor([this] { return showsPipeline(); }));
    EXPECT_FALSE(getTitle().contains("*"));
    EXPECT_TRUE(getSheet().isEnabled());
    keepScreenshot(*frame_, "main-frame");

    // From any thread.
    std::thread([this] { colorMapping_.setEnabled(false); }).join();
    EXPECT_TRUE(waitFor([] { return !getSheet().getSwitch().isChecked(); }));
    EXPECT_TRUE(waitFor([this] { return showsPipeline(); }));
    EXPECT_TRUE(waitFor([this] { return getTitle().contains("(*render.txr"); }));
    std::thread([this] {
        colorMapping_.setEnabled(true);
        settings_->set(postcore::kSharpenBlurEnabledId, true);
        settings_->set(postcore::kSharpenAmountId, 3.0f);
    }).join();
    EXPECT_TRUE(waitFor([this] { return showsPipeline(); }));

    load("other.txr");
    EXPECT_TRUE(waitFor([this] { return getTitle().contains("(other.txr"); }));
}

TEST_F(MainFrameTest, TellsOnceOfAnOperatorThatCannotWork) {
    load();
    int told = 0;
    const auto useMissingLut = [&](float opacity) {
        onDialog("Tavrin Image Editor", [&] {
            ++told;
            pressKey(WXK_RETURN);
        });
        colorMapping_.setPipeline(colorkit::makePipeline(
            {colorkit::OperatorValues(colorkit::LutOperator::kDescriptor)
                 .setEnabled(true)
                 .set(colorkit::LutOperator::kOpacity, opacity)
                 .set(colorkit::LutOperator::kPath, Path(String("/missing/film.cube")))}));
    };
    useMissingLut(1.0f);
    EXPECT_TRUE(waitFor([&] { return told == 1; }));
    useMissingLut(0.5f);
    EXPECT_TRUE(waitFor([this] { return showsPipeline(); }));
    EXPECT_EQ(told, 1);
}

TEST_F(MainFrameTest, TypingIntoTheSheetChangesThePicture) {
    load();
    auto* const field = getSheet().findChild<sheet::NumberField*>();
    ASSERT_NE(field, nullptr);
    wxWindow& panel = frame_->getPostprocessPanel();
    wxWindow& sheetWindow = *panel.GetChildren().front();
    clickMouse(sheetWindow, *field);
    EXPECT_TRUE(waitFor([&] { return field->hasFocus(); }));
    pressKey('A', wxMOD_CONTROL);
    typeText("-2");
    pressKey(WXK_RETURN);
    EXPECT_TRUE(waitFor([this] { return getOperators().at(0).get<float>("stops") == -2.0f; }));
    EXPECT_TRUE(waitFor([this] { return showsPipeline(); }));
    keepScreenshot(*frame_, "main-frame-typed");
    // A switch of one operator, by the mouse.
    const auto switches = getSheet().findChildren<QCheckBox*>();
    ASSERT_GT(switches.size(), 1);
    clickMouse(sheetWindow, *switches.at(1));
    EXPECT_TRUE(waitFor([this] { return !getOperators().at(0).get<bool>("enabled"); }));
    EXPECT_TRUE(waitFor([this] { return showsPipeline(); }));
}

TEST_F(MainFrameTest, TheSidePanelFollowsTheHeightOfTheWindow) {
    load();
    wxWindow& page = frame_->getPostprocessPanel();
    for (const wxSize size : {wxSize(1000, 900), wxSize(800, 500), wxSize(1200, 950)}) {
        frame_->SetSize(size);
        const auto fills = [&] {
            const int bottom = page.GetScreenRect().GetBottom();
            const int frameBottom = frame_->ClientToScreen(wxPoint(0, frame_->GetClientSize().y)).y;
            return frame_->GetSize() == size && std::abs(frameBottom - 1 - bottom) <= 2;
        };
        EXPECT_TRUE(waitFor(fills)) << page.GetSize().y << " of " << page.GetParent()->GetSize().y;
    }
    keepScreenshot(*frame_, "main-frame-high");
}

TEST_F(MainFrameTest, PicksAColorOnTheCanvas) {
    load();
    Optional<CompressedRgb> picked;
    const auto id = getOperators().at(0).get<int>("id");
    auto picking = host_->pickColor(id, [&](const auto& color) { picked = color; });
    clickMouse(getCanvas(), {30, 40});
    ASSERT_TRUE(picked);
    const Rgb expected =
        performer_.includeAlpha.provideRgbRegion("", {30, 40, 31, 41}, 1.0f)->at(0, 0);
    EXPECT_EQ(*picked, (CompressedRgb{expected.r, expected.g, expected.b}));
    picking = host_->pickColor(id, [&](const auto& color) { picked = color; });
    pressKey(WXK_ESCAPE);
    EXPECT_FALSE(picked);
}

TEST_F(MainFrameTest, KeysZoomAndScroll) {
    load();
    components::DrawPanel& canvas = frame_->getCanvas();
    for (int i = 0; i < 3; ++i) {
        pressKey('=', wxMOD_CONTROL);
    }
    EXPECT_EQ(canvas.getZoom(), 3);
    EXPECT_TRUE(waitFor([this] { return getTitle().contains("8:1"); }));
    int x = 0;
    canvas.cursorProvider = [&](const components::DrawPanel::MouseEvent& event) {
        x = event.viewPosition.x;
        return wxCURSOR_ARROW;
    };
    moveMouse(getCanvas(), {50, 50});
    const int before = x;
    pressKey(WXK_RIGHT, wxMOD_CONTROL);
    moveMouse(getCanvas(), {51, 50});
    EXPECT_EQ(x, before + 151);
    pressKey('0', wxMOD_CONTROL);
    EXPECT_EQ(canvas.getZoom(), 0);
    pressKey('-', wxMOD_CONTROL | wxMOD_SHIFT);
    EXPECT_EQ(canvas.getZoom(), 0);
}

TEST_F(MainFrameTest, AFailedLoadIsToldAndChangesNothing) {
    load();
    bool isTold = false;
    onDialog("Tavrin Image Editor", [&] {
        isTold = true;
        keepScreenshot(*frame_, "main-frame-error");
        pressKey(WXK_RETURN);
    });
    performer_.load.load({}, {Path(String("bad.txr"))});
    EXPECT_TRUE(waitFor([&] { return isTold; }));
    EXPECT_TRUE(waitFor([this] { return getTitle().contains("(render.txr, 640x400px"); }));
    EXPECT_TRUE(waitFor([this] { return showsPipeline(); }));
}

TEST_F(MainFrameTest, ClosesWhileAnImageIsBeingLoaded) {
    load();
    isLoadBlocked_ = true;
    bool isShown = false;
    onDialog("", [&] {
        isShown = true;
        keepScreenshot(*frame_, "main-frame-loading");
        clickMouse(getCanvas(), {5, 5});
    });
    performer_.load.load({}, {Path(String("late.txr"))});
    EXPECT_TRUE(waitFor([&] { return isShown && findDialog("") == nullptr; }));
    EXPECT_TRUE(waitFor([this] { return getTitle().contains("(loading ..."); }));
    close();
}

TEST_F(MainFrameTest, ClosesWhileToolsAreInUse) {
    load();
    auto picking = host_->pickColor(getOperators().at(0).get<int>("id"), [](const auto&) {});
    moveMouse(getCanvas(), {60, 60});
    pressMouse(wxMOUSE_BTN_RIGHT);
    colorMapping_.setEnabled(false);
    frame_->getCanvas().refreshFullLater();
    close();
    releaseMouse(wxMOUSE_BTN_RIGHT);
    colorMapping_.setEnabled(true);
    handleEvents();
}

TEST_F(MainFrameTest, ClosesWhileAMenuIsOpenAndANumberIsTyped) {
    load();
    wxWindow& sheetWindow = *frame_->getPostprocessPanel().GetChildren().front();
    auto* const field = getSheet().findChild<sheet::NumberField*>();
    clickMouse(sheetWindow, *field);
    typeText("12");
    auto* const button = getSheet().findChild<QToolButton*>();
    clickMouse(sheetWindow, *button);
    close();
}

}  // namespace
}  // namespace tavrin::windows
