#include "gui/sheet/Collapsible.h"
#include "gui/sheet/DragHandle.h"
#include "gui/sheet/ListItem.h"
#include "gui/sheet/NameLabel.h"
#include "gui/sheet/UndoBar.h"
#include "gui/sheet/editors/NumberField.h"
#include "gui/sheet/editors/ValueSlider.h"
#include "services/colorkit/ColorMappingOperatorFactory.h"
#include "tests/gui/sheet/SheetFixture.h"
#include "tests/support/RegisteredTypes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QMenu>
#include <QToolButton>

namespace tavrin::tests {
namespace {

using sheet::NumberField;
using sheet::ValueSlider;
using testing::ElementsAre;

using Data = colorkit::ColorMappingWithObservers::Data;

TEST(PropertySheet, EveryOperatorFitsIntoASidePanel) {
    constexpr int kWidth = 211;
    constexpr int kBorders = 20;
    constexpr int kLeastSlider = 150;
    constexpr int kFieldFrame = 4;  // at each side of its text
    const RegisteredTypes types;
    std::vector<std::string> names;
    for (const auto& [name, descriptor] :
         colorkit::ColorMappingOperatorFactory::getInstance().getAllDescriptors()) {
        names.push_back(name.toUtf8());
    }
    std::vector<const char*> operators;
    for (const std::string& name : names) {
        operators.push_back(name.c_str());
    }
    const ShownSheet shown(operators);
    const sheet::PropertySheet& view = shown.getSheet();
    shown.frame->SetClientSize(kWidth + kBorders, 500);
    ASSERT_TRUE(waitFor([&] { return view.width() == kWidth; })) << view.width();
    shown.waitForLayout();
    keepScreenshot(*shown.frame, "sheet-narrow");
    const auto place = [&](const QWidget& part) {
        return QRect(part.mapTo(&view, QPoint(0, 0)), part.size());
    };
    int sliders = 0;
    for (std::size_t i = 0; i < names.size(); ++i) {
        for (const QWidget* part : shown.getItem(i).findChildren<QWidget*>()) {
            SCOPED_TRACE(names[i] + " " + part->accessibleName().toStdString());
            // What pops up is another window.
            EXPECT_TRUE(part->window() != view.window() || view.rect().contains(place(*part)));
            if (const auto* label = dynamic_cast<const sheet::NameLabel*>(part)) {
                EXPECT_GE(label->width(), label->sizeHint().width());
            } else if (const auto* field = dynamic_cast<const NumberField*>(part)) {
                EXPECT_GE(field->width() - 2 * kFieldFrame,
                          field->fontMetrics().horizontalAdvance(field->text()));
            } else if (dynamic_cast<const ValueSlider*>(part) != nullptr) {
                ++sliders;
                const QRect own = place(*part);
                const QRect above = place(shown.find<NumberField>(i, part->accessibleName()));
                EXPECT_GE(own.width(), kLeastSlider);
                EXPECT_EQ(own.right(), above.right());
                EXPECT_EQ(own.top(), above.bottom() + 1);
                EXPECT_FALSE(part->toolTip().isEmpty());
            }
        }
    }
    EXPECT_GT(sliders, 20);
}

TEST(PropertySheet, NumbersAreTypedSteppedAndDragged) {
    ShownSheet shown({"Exposure", "WhiteBalance"});
    auto& field = shown.find<NumberField>(0, "Exposure (EV)");
    const auto stops = [&] { return shown.get<float>(0, "stops"); };
    shown.click(field);
    ASSERT_TRUE(waitFor([&] { return field.hasFocus(); }));
    typeText("1.25");
    EXPECT_EQ(stops(), 0.0f);
    pressKey(WXK_RETURN);
    EXPECT_TRUE(waitFor([&] { return stops() == 1.25f; })) << stops();
    typeText("99");
    pressKey(WXK_RETURN);
    EXPECT_TRUE(waitFor([&] { return stops() == 10.0f; })) << stops();
    typeText("abc");
    pressKey(WXK_RETURN);
    EXPECT_EQ(field.text(), "10.00");
    pressKey(WXK_DOWN);
    EXPECT_TRUE(waitFor([&] { return stops() == 9.9f; })) << stops();
    turnWheel(*shown.window, toWindow(*shown.window, field), -2);
    EXPECT_TRUE(waitFor([&] { return std::abs(stops() - 9.7f) < 1e-4f; })) << stops();
    pressKey(WXK_UP, wxMOD_CONTROL);
    EXPECT_TRUE(waitFor([&] { return stops() == 10.0f; })) << stops();
    pressKey(WXK_DOWN, wxMOD_SHIFT);
    EXPECT_TRUE(waitFor([&] { return std::abs(stops() - 9.99f) < 1e-4f; })) << stops();
    typeText("9.7");
    pressKey(WXK_RETURN);
    typeText("3");
    pressKey(WXK_HOME, wxMOD_CONTROL);
    EXPECT_TRUE(waitFor([&] { return field.cursorPosition() == 0; }));
    pressKey(WXK_ESCAPE);
    EXPECT_EQ(field.text(), "9.70");

    // The wheel is the slider's when Tab has come to it from the field.
    auto& slider = shown.find<ValueSlider>(0, "Exposure (EV)");
    turnWheel(*shown.window, toWindow(*shown.window, slider), -2);
    EXPECT_NEAR(stops(), 9.7f, 1e-4f);
    pressKey(WXK_TAB);
    ASSERT_TRUE(waitFor([&] { return slider.hasFocus(); }));
    turnWheel(*shown.window, toWindow(*shown.window, slider), -2);
    EXPECT_TRUE(waitFor([&] { return std::abs(stops() - 9.5f) < 1e-4f; })) << stops();
    pressKey(WXK_RIGHT);
    EXPECT_TRUE(waitFor([&] { return std::abs(stops() - 9.6f) < 1e-4f; })) << stops();
    doubleClickMouse(*shown.window,
                     toWindow(*shown.window, shown.find<sheet::NameLabel>(0, "Exposure (EV)")));
    EXPECT_TRUE(waitFor([&] { return stops() == 0.0f; })) << stops();

    const int y = slider.height() / 2;
    const auto at = [&](double number) {
        return QPoint(static_cast<int>(slider.getPosition(number)), y);
    };
    std::vector<float> seen;
    const auto observer =
        shown.model->addObserver(Data::kToneMapping, [&] { seen.push_back(stops()); });
    dragMouse(*shown.window, slider, at(0.0), at(-5.0));
    EXPECT_NEAR(stops(), -5.0f, 0.3f);
    EXPECT_GT(seen.size(), 4u);  // while it moves
    EXPECT_NEAR(field.text().toDouble(), stops(), 0.005);
    doubleClickMouse(*shown.window, toWindow(*shown.window, slider, at(3.0)));
    EXPECT_TRUE(waitFor([&] { return stops() == 0.0f; })) << stops();

    // Without the keyboard, a field is dragged and leaves the wheel to others.
    auto& other = shown.find<NumberField>(1, "Temperature (K)");
    dragMouse(*shown.window, other, {30, 10}, {40, 10});
    EXPECT_GT(shown.get<float>(1, "temperature"), 6500.0f);
    const float dragged = shown.get<float>(1, "temperature");
    turnWheel(*shown.window, toWindow(*shown.window, other), -2);
    EXPECT_EQ(shown.get<float>(1, "temperature"), dragged);
}

TEST(PropertySheet, ShowsWhatOthersChange) {
    ShownSheet shown({"Exposure", "HighlightCompression"});
    GenericList list = shown.getList();
    list[0].set("stops", -2.5f);
    list[0].set("enabled", false);
    list.push_back(ShownSheet::makeOperator("Tint"));
    sheet::ListItem* const first = &shown.getItem(0);
    shown.setList(list);
    EXPECT_EQ(shown.find<NumberField>(0, "Exposure (EV)").text(), "-2.50");
    EXPECT_FALSE(shown.getItem(0).getSwitch().isChecked());
    EXPECT_EQ(shown.getItem(2).getTitle(), "Tint");
    std::swap(list[0], list[1]);
    shown.setList(list);
    EXPECT_EQ(&shown.getItem(1), first);  // with its state
    shown.setList({});
    EXPECT_TRUE(shown.getSheet().getList().getItems().empty());
    shown.model->set(Data::kEnabled, false);
    EXPECT_FALSE(shown.getSheet().getSwitch().isChecked());
    shown.model->set(Data::kSettingsSource, String("Camera (Time override)"));
    EXPECT_FALSE(shown.getSheet().getList().isEnabled());
    EXPECT_FALSE(shown.getSheet().getSwitch().isEnabled());
}

TEST(PropertySheet, ItemsAreSwitchedCopiedMovedAndRemoved) {
    ShownSheet shown({"Exposure", "Saturation", "Clamp"});
    sheet::PropertySheet& view = shown.getSheet();
    shown.click(view.getSwitch());
    EXPECT_TRUE(waitFor([&] { return !shown.model->getData().get<bool>(Data::kEnabled); }));
    shown.click(shown.getItem(1).getSwitch());
    EXPECT_TRUE(waitFor([&] { return !shown.get<bool>(1, "enabled"); }));

    shown.getItem(0).takeFocus();
    pressKey('D', wxMOD_CONTROL);
    EXPECT_TRUE(waitFor([&] { return shown.getList().size() == 4; }));
    EXPECT_THAT(shown.getTypes(), ElementsAre("Exposure", "Exposure", "Saturation", "Clamp"));
    EXPECT_NE(shown.get<int>(0, "id"), shown.get<int>(1, "id"));
    pressKey(WXK_DOWN, wxMOD_ALT);
    EXPECT_TRUE(waitFor([&] { return shown.getTypes()[1] == "Saturation"; }));
    EXPECT_THAT(shown.getTypes(), ElementsAre("Exposure", "Saturation", "Exposure", "Clamp"));

    // The first item to the end, by its grip.
    shown.waitForLayout();
    QWidget& grip = shown.getItem(0).getHandle();
    const QPoint start = grip.rect().center();
    const QPoint end = grip.mapFrom(&view, QPoint(0, view.height() - 2));
    dragMouse(*shown.window, grip, start, {start.x(), end.y()});
    EXPECT_THAT(shown.getTypes(), ElementsAre("Saturation", "Exposure", "Clamp", "Exposure"));

    shown.getItem(1).takeFocus();
    const GenericList before = shown.getList();
    pressKey(WXK_DELETE);
    EXPECT_TRUE(waitFor([&] { return shown.getList().size() == 3; }));
    keepScreenshot(*shown.frame, "sheet-removed");
    pressKey('Z', wxMOD_CONTROL);
    EXPECT_TRUE(waitFor([&] { return shown.getList() == before; }));
    EXPECT_FALSE(view.getList().getUndoBar().isVisible());
}

TEST(PropertySheet, DraggingToTheEdgeScrolls) {
    ShownSheet shown({"Exposure", "Filmic", "Sigmoid", "Tint"}, {300, 260});
    const QWidget& grip = shown.getItem(0).getHandle();
    moveMouse(*shown.window, toWindow(*shown.window, grip));
    pressMouse(wxMOUSE_BTN_LEFT);
    moveMouse(*shown.scrolled, {40, 200});
    moveMouse(*shown.scrolled, {40, 252});
    const auto isAtEnd = [&] {
        return shown.window->GetPosition().y + shown.window->GetSize().y <=
               shown.scrolled->GetClientSize().y + 30;
    };
    EXPECT_FALSE(isAtEnd());
    EXPECT_TRUE(waitFor(isAtEnd)) << shown.window->GetPosition().y;
    handleEvents();
    releaseMouse(wxMOUSE_BTN_LEFT);
    EXPECT_TRUE(waitFor([&] { return shown.getTypes().back() == "Exposure"; }));
}

TEST(PropertySheet, AddsFromMenusAndGoesBackFromPresets) {
    ShownSheet shown({"Exposure"}, {340, 900});
    sheet::ListSection& list = shown.getSheet().getList();
    const auto open = [&](const QWidget& button) {
        shown.click(button);
        QMenu* menu = nullptr;
        EXPECT_TRUE(waitFor([&] {
            menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            return menu != nullptr && menu->isVisible();
        }));
        return menu;
    };
    const auto choose = [&](QMenu& menu, const QString& text) {
        for (QAction* action : menu.actions()) {
            if (action->text() == text) {
                clickMouse(*shown.window,
                           toWindow(*shown.window, menu, menu.actionGeometry(action).center()));
                return;
            }
        }
        FAIL() << text.toStdString();
    };
    QMenu* menu = open(list.getAddButton());
    ASSERT_NE(menu, nullptr);
    keepScreenshot(*shown.frame, "sheet-add");
    choose(*menu, "Tint");
    ASSERT_TRUE(waitFor([&] { return shown.getList().size() == 2; }));
    EXPECT_EQ(shown.getTypes()[1], "Tint");
    const GenericList before = shown.getList();
    // The keyboard is in an operator that the preset takes away.
    shown.click(shown.find<NumberField>(0, "Exposure (EV)"));
    menu = open(list.getPresetsButton());
    ASSERT_NE(menu, nullptr);
    choose(*menu, "AgX");
    ASSERT_TRUE(waitFor([&] { return shown.getList() != before; }));
    handleEvents();
    pressKey('Z', wxMOD_CONTROL);
    EXPECT_TRUE(waitFor([&] { return shown.getList() == before; }));
}

TEST(PropertySheet, OpensClosesAndScrolls) {
    ShownSheet shown({"LiftGammaGain", "Filmic", "Curves"}, {320, 400});
    const int height = shown.window->GetSize().y;
    EXPECT_GT(shown.scrolled->GetVirtualSize().y, 400);
    int changes = 0;
    QObject::connect(&shown.getSheet(), &sheet::PropertySheet::collapsibleStateChanged,
                     [&](bool) { ++changes; });
    shown.getItem(0).takeFocus();
    pressKey(WXK_LEFT);
    EXPECT_TRUE(waitFor([&] { return shown.window->GetSize().y < height; }));
    EXPECT_EQ(changes, 1);
    shown.click(*shown.getSheet().getCollapsible().getHeader());
    EXPECT_TRUE(waitFor([&] { return shown.window->GetSize().y < 60; }));
    EXPECT_EQ(changes, 2);
}

// With something held, typed or popped up; the address sanitizer is what looks on.
TEST(PropertySheet, EndsInEveryState) {
    using Action = Function<void(ShownSheet&)>;
    const auto hold = [](ShownSheet& shown, const QWidget& widget) {
        const wxPoint place = toWindow(*shown.window, widget);
        moveMouse(*shown.window, place);
        pressMouse();
        moveMouse(*shown.window, {place.x, place.y + 30});
    };
    const Action actions[] = {
        [&](ShownSheet& shown) { hold(shown, shown.find<ValueSlider>(0, "Amount")); },
        [&](ShownSheet& shown) { hold(shown, shown.getItem(0).getHandle()); },
        [](ShownSheet& shown) { shown.click(shown.find<QToolButton>(0, "Choose the colour")); },
        [](ShownSheet& shown) { shown.click(shown.getSheet().getList().getAddButton()); },
        [](ShownSheet& shown) { shown.click(shown.getItem(1).getMenuButton()); },
        [](ShownSheet& shown) {
            shown.click(shown.find<NumberField>(0, "Amount"));
            typeText("0.5");
        },
    };
    for (const bool isListGone : {false, true}) {
        for (const Action& act : actions) {
            {
                ShownSheet shown({"Tint", "Exposure"});
                act(shown);
                if (isListGone) {
                    shown.setList({});
                    handleEvents();
                }
            }
            releaseMouse();
            EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
        }
    }
}

}  // namespace
}  // namespace tavrin::tests
