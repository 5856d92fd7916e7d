#include "base/settings/Settings.h"
#include "gui/components/PropertyCheckBox.h"
#include "gui/components/PropertyComboBox.h"
#include "gui/components/PropertySpinner.h"
#include "services/postcore/PropertyIds.h"
#include "services/postcore/PropertyText.h"
#include "tests/gui/Gui.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wx/panel.h>
#include <wx/thread.h>
#include <wx/utils.h>

#include <atomic>
#include <cmath>
#include <limits>
#include <mutex>
#include <string>
#include <thread>
#include <tuple>
#include <utility>
#include <vector>

namespace tavrin::components {
namespace {

using namespace tests;
using namespace postcore;
using testing::ElementsAre;

constexpr int kStreakCountId = 355;
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

/// A panel with one control of each kind.
struct Controls {
    Controls(wxWindow* parent, settings::Settings& settings)
        : panel(new wxPanel(parent)),
          amount(new PropertySpinner<float>(panel, settings,
                                            *PropertyDescriptor::get(kBloomIntensityId), 3, 0, 80)),
          count(new PropertySpinner<int>(panel, settings, *PropertyDescriptor::get(kStreakCountId),
                                         0, 0.2f, 80)),
          enabled(new PropertyCheckBox(panel, settings, kBloomGlareEnabledId, "Enabled",
                                       Property(true), Property(false))),
          mode(new PropertyComboBox(panel, settings, kDenoiseModeId, 150)) {
        int y = 20;
        for (wxWindow* const child : panel->GetChildren()) {
            child->Move(40, y);
            y += 40;
        }
        mode->setLabelFormatter(
            [](const Property& value) { return "Mode " + getConfSerialization(value); });
        mode->setItems({0, 1, 4});
        panel->SetSize(parent->GetClientSize());
    }

    wxPanel* panel;
    PropertySpinner<float>* amount;
    PropertySpinner<int>* count;
    PropertyCheckBox* enabled;
    PropertyComboBox* mode;
};

class PropertyControls : public testing::Test {
protected:
    void type(wxWindow& control, const char* text) {
        control.SetFocus();
        typeText(text);
        pressKey(WXK_RETURN);
    }
    /// Writes on another thread, and waits until it has.
    void writeElsewhere(const std::vector<std::pair<int, Property>>& values) {
        std::jthread([&] {
            for (const auto& [id, value] : values) {
                settings_.set(id, value);
            }
        });
    }

    settings::Settings settings_;
    TestFrame frame_;
};

TEST_F(PropertyControls, WriteWhatTheUserDoes) {
    Controls controls(&*frame_, settings_);
    frame_.show();
    std::vector<Property> told;
    const auto observer = settings_.addObserver(
        kStreakCountId, [&](int, const Property& value) { told.push_back(value); });
    type(*controls.amount, "2.5");
    EXPECT_EQ(settings_.get(kBloomIntensityId), Property(2.5f));
    dragMouse(*controls.amount, {20, 10}, {60, 10});
    EXPECT_GT(settings_.get(kBloomIntensityId).get<float>(), 2.5f);
    type(*controls.count, "7");
    type(*controls.count, "100");
    EXPECT_THAT(told, ElementsAre(Property(7), Property(16)));
    clickMouse(*controls.enabled, {6, 8});
    EXPECT_EQ(settings_.get(kBloomGlareEnabledId), Property(true));
    clickMouse(*controls.mode, {20, 10});
    clickMouse(*controls.mode, {20, 22 + 50});
    EXPECT_TRUE(waitFor([&] { return settings_.get(kDenoiseModeId) == Property(4); }));
    EXPECT_EQ(*controls.mode->getSelectedValue(), Property(4));
    keepScreenshot(*frame_, "property-controls");
    // What came back of the writes changed nothing any more.
    EXPECT_EQ(controls.count->getValue(), 16.0f);
    EXPECT_EQ(settings_.get(kBloomIntensityId), Property(controls.amount->getValue()));
}

TEST_F(PropertyControls, FollowOtherThreadsWithTheNextEvents) {
    settings_.set(kStreakCountId, 9);
    Controls controls(&*frame_, settings_);
    frame_.show();
    EXPECT_EQ(controls.count->getValue(), 9.0f) << "The value that was there before.";
    const auto getState = [&] {
        const Property* mode = controls.mode->getSelectedValue();
        return std::tuple(controls.amount->getValue(), controls.count->getValue(),
                          controls.enabled->getValue(), mode != nullptr ? mode->get<int>() : -1);
    };
    const auto before = getState();
    writeElsewhere({{kBloomIntensityId, 3.5f},
                    {kStreakCountId, 12},
                    {kBloomGlareEnabledId, true},
                    {kDenoiseModeId, 5},
                    {kDenoiseModeId, 1}});
    EXPECT_EQ(getState(), before);
    handleEvents();
    EXPECT_EQ(getState(), std::tuple(3.5f, 12.0f, true, 1));
    EXPECT_EQ(settings_.get(kStreakCountId), Property(12));
}

TEST_F(PropertyControls, KeepWhatMeansTheSameAndShowWhatIsOdd) {
    Controls controls(&*frame_, settings_);
    frame_.show();
    settings_.set(kStreakCountId, 5);
    handleEvents();
    controls.count->setValue(3.7f, false);
    settings_.set(kStreakCountId, 3);
    handleEvents();
    EXPECT_EQ(controls.count->getValue(), 3.7f);
    settings_.set(kStreakCountId, 4);
    handleEvents();
    EXPECT_EQ(controls.count->getValue(), 4.0f);
    settings_.set(kBloomIntensityId, kNan);
    handleEvents();
    EXPECT_TRUE(std::isnan(controls.amount->getValue()));
    settings_.set(kBloomIntensityId, 1.0f);
    handleEvents();
    EXPECT_EQ(controls.amount->getValue(), 1.0f);

    PropertyCheckBox third(controls.panel, settings_, kDenoiseModeId, "", Property(1), Property(0));
    for (const auto& [value, isChecked] : {std::pair(1, true), {5, false}, {1, true}, {0, false}}) {
        settings_.set(kDenoiseModeId, value);
        handleEvents();
        EXPECT_EQ(third.getValue(), isChecked) << value;
    }
    EXPECT_TRUE(third.Enable(false));
    EXPECT_FALSE(third.Enable(false));
    EXPECT_FALSE(third.IsFrozen());
}

TEST_F(PropertyControls, ComboBoxReportsValuesThatNoItemHas) {
    Controls controls(&*frame_, settings_);
    PropertyComboBox other(controls.panel, settings_, kStreakCountId, 60);
    frame_.show();
    std::vector<int> unknown;
    other.callOnUnknownValue([&](int id, const Property&) { unknown.push_back(id); });
    for (const int value : {2, 3}) {
        settings_.set(kStreakCountId, value);
        handleEvents();
    }
    EXPECT_THAT(unknown, ElementsAre(kStreakCountId, kStreakCountId)) << "It has no items.";
    unknown.clear();

    settings_.set(kDenoiseModeId, 1);
    handleEvents();
    controls.mode->callOnUnknownValue([&](int id, const Property& value) {
        unknown.push_back(value.get<int>());
        // What it does itself calls neither it nor that of another combo box, also when events are
        // handled meanwhile.
        settings_.set(kStreakCountId, 4);
        settings_.set(id, 2);
        handleEvents();
        settings_.set(id, *controls.mode->getSelectedValue());
    });
    settings_.set(kDenoiseModeId, 5);
    handleEvents();
    EXPECT_THAT(unknown, ElementsAre(5));
    EXPECT_EQ(settings_.get(kDenoiseModeId), Property(1)) << "The selection had stayed.";
    settings_.set(kStreakCountId, 5);
    handleEvents();
    EXPECT_THAT(unknown, ElementsAre(5, kStreakCountId));
}

TEST_F(PropertyControls, ComboBoxShortensItsLabelsInTheMiddle) {
    Controls controls(&*frame_, settings_);
    controls.mode->setLabelFormatter(getConfSerialization);
    controls.mode->setItems({String(std::string(100, 'a').c_str()) + "z", String("short")});
    const auto& items = controls.mode->getData();
    const wxString label = wxString::FromUTF8(items[0].label.toUtf8());
    EXPECT_TRUE(label.StartsWith("\"aa") && label.EndsWith("z\"")) << label;
    EXPECT_LE(controls.mode->GetTextExtent(label).x, 150 - 35);
    EXPECT_GT(controls.mode->GetTextExtent(label).x, 150 - 35 - 20);
    EXPECT_EQ(items[1].label, String("\"short\""));
    EXPECT_EQ(items[1].id, 1);
}

TEST_F(PropertyControls, ShowTheLastTooltip) {
    Controls controls(&*frame_, settings_);
    frame_.show();
    wxWindow& box = *controls.enabled;
    const auto isShown = [&] { return !box.GetChildren().empty(); };
    controls.enabled->setTooltip("Old");
    moveMouse(box, {5, 5});
    moveMouse(box, {6, 6});
    EXPECT_TRUE(waitFor(isShown));
    controls.enabled->setTooltip("");
    EXPECT_TRUE(waitFor([&] { return !isShown(); }));
    controls.enabled->setTooltip("New");
    moveMouse(box, {7, 7});
    EXPECT_TRUE(waitFor(isShown));
    // Its window ends while it is shown.
    controls.panel->Destroy();
}

using Panel = PassToMainThreadMixin<wxPanel>;

TEST(PassToMainThread, CallsComeInOrderOnTheMainThread) {
    TestFrame frame;
    auto* const panel = new Panel(&*frame);
    std::vector<std::string> calls;
    const auto pass =
        panel->doPassToMainThread(Function<void(const String&)>([&](const String& text) {
            EXPECT_TRUE(wxIsMainThread());
            calls.push_back(text.toUtf8());
        }));
    pass("first");
    std::jthread([&] {
        String text = "second";
        pass(text);
        // The call has its own copy.
        text = "other";
    });
    EXPECT_TRUE(calls.empty());
    handleEvents();
    EXPECT_THAT(calls, ElementsAre("first", "second"));
}

TEST(PassToMainThread, WindowsMayEndWhileOtherThreadsWrite) {
    settings::Settings settings;
    TestFrame frame;
    frame.show();
    // Also of a function that outlives its window.
    Function<void(float)> pass = [](float) {};
    std::mutex mutex;
    std::atomic<bool> stops = false;
    const auto write = [&](int start) {
        for (int i = start; !stops; ++i) {
            settings.set(kBloomIntensityId, static_cast<float>(i % 100));
            settings.set(kStreakCountId, 1 + i % 16);
            settings.set(kBloomGlareEnabledId, i % 2 == 0);
            settings.set(kDenoiseModeId, i % 6);
            {
                const std::lock_guard lock(mutex);
                pass(1.0f);
            }
            // Not faster than the events can be handled.
            wxMilliSleep(1);
        }
    };
    std::jthread first(write, 0);
    std::jthread second(write, 1);
    for (int i = 0; i < 30; ++i) {
        Controls controls(&*frame, settings);
        auto* const window = new Panel(controls.panel);
        bool hasEnded = false;
        std::size_t calls = 0;
        {
            const std::lock_guard lock(mutex);
            pass = window->doPassToMainThread(Function<void(float)>([&](float) {
                EXPECT_FALSE(hasEnded);
                ++calls;
            }));
        }
        EXPECT_TRUE(waitFor([&] { return calls > 0; }));
        controls.panel->Destroy();
        hasEnded = true;
        // Calls of the ended window may still be made.
        wxMilliSleep(2);
        handleEvents();
        const std::lock_guard lock(mutex);
        pass = [](float) {};
    }
    stops = true;
}

}  // namespace
}  // namespace tavrin::components
