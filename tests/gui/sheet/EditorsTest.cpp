#include "gui/sheet/ListItem.h"
#include "gui/sheet/editors/ColorPopup.h"
#include "gui/sheet/editors/CurveView.h"
#include "gui/sheet/editors/NumberField.h"
#include "services/colorkit/CurvePoint.h"
#include "tests/gui/sheet/SheetFixture.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QToolButton>

namespace tavrin::tests {
namespace {

using colorkit::CurvePoint;
using sheet::CurvePoints;

TEST(Editors, EveryTypeOfValueIsEdited) {
    ShownSheet shown({"LiftGammaGain", "AgX", "Tint", "Lut", "OpenColorIoView"}, {340, 960});
    keepScreenshot(*shown.frame, "sheet-editors");
    shown.click(shown.find<QCheckBox>(0, "Clamp"));
    EXPECT_TRUE(waitFor([&] { return shown.get<bool>(0, "clamp"); }));
    // The second of three numbers.
    shown.click(shown.find<sheet::NumberField>(0, "Green"));
    typeText("2.5");
    pressKey(WXK_TAB);
    EXPECT_TRUE(waitFor([&] { return shown.get<CompressedRgb>(0, "slope").g == 2.5f; }));
    auto& choice = shown.find<QComboBox>(1, "Look");
    shown.click(choice);
    ASSERT_TRUE(waitFor([&] { return QApplication::activePopupWidget() != nullptr; }));
    pressKey(WXK_END);
    pressKey(WXK_RETURN);
    EXPECT_TRUE(waitFor([&] { return shown.get<int>(1, "look") == choice.count() - 1; }));

    shown.host->file = Path(String("/data/Warm.cube"));
    shown.click(shown.find<QToolButton>(3, "Choose a file"));
    EXPECT_TRUE(waitFor([&] { return shown.get<Path>(3, "path") == *shown.host->file; }));
    auto& view = shown.find<QLineEdit>(4, "View");
    view.setFocus();
    typeText("Film");
    pressKey(WXK_RETURN);
    EXPECT_TRUE(waitFor([&] { return shown.get<String>(4, "view") == "Film"; }));
}

TEST(Editors, ColoursComeFromThePopupAndTheImage) {
    ShownSheet shown({"Tint"});
    const auto color = [&] { return shown.get<CompressedRgb>(0, "color"); };
    shown.click(shown.find<QToolButton>(0, "Choose the colour"));
    sheet::ColorPopup* popup = nullptr;
    ASSERT_TRUE(waitFor([&] {
        popup = dynamic_cast<sheet::ColorPopup*>(QApplication::activePopupWidget());
        return popup != nullptr && popup->isVisible();
    }));
    handleEvents();
    keepScreenshot(*shown.frame, "sheet-color");
    // To the right: saturated red.
    dragMouse(*shown.window, *popup, {60, 20}, {186, 9});
    EXPECT_NEAR(color().r, 1.0f, 0.02f);
    EXPECT_LT(color().g, 0.02f);
    popup->close();
    shown.click(shown.find<QToolButton>(0, "Pick the colour from the image"));
    ASSERT_TRUE(waitFor([&] { return static_cast<bool>(shown.host->onPicked); }));
    shown.host->onPicked(CompressedRgb{0.25f, 8.0f, -1.0f});
    EXPECT_EQ(color(), (CompressedRgb{0.03125f, 1.0f, 0.0f}));
}

TEST(Editors, CurvesAreShapedByMouseAndNumbers) {
    ShownSheet shown({"Curves"});
    auto& view = shown.find<sheet::CurveView>(0, "Curve");
    const auto points = [&](const char* name) { return shown.get<CurvePoints>(0, name); };
    const auto at = [&](double x, double y) { return view.toView(x, y).toPoint(); };
    doubleClickMouse(*shown.window, toWindow(*shown.window, view, at(0.0, 1.0)));
    ASSERT_TRUE(waitFor([&] { return points("master").size() == 3; }));
    EXPECT_NEAR(points("master")[1].y, 1.0f, 0.2f);
    dragMouse(*shown.window, view, at(0.0, 1.0), at(2.0, 4.0));
    EXPECT_NEAR(points("master")[1].x, 2.0f, 0.2f);
    EXPECT_NEAR(points("master")[1].y, 4.0f, 0.2f);
    shown.click(shown.find<sheet::NumberField>(0, "Stops out"));
    typeText("-1.5");
    pressKey(WXK_RETURN);
    EXPECT_TRUE(waitFor([&] { return points("master")[1].y == -1.5f; }));
    for (QToolButton* tab : shown.getItem(0).findChildren<QToolButton*>()) {
        if (tab->text() == "Red") {
            shown.click(*tab);
        }
    }
    doubleClickMouse(*shown.window, toWindow(*shown.window, view, at(1.0, 3.0)));
    ASSERT_TRUE(waitFor([&] { return points("red").size() == 3; }));
    keepScreenshot(*shown.frame, "sheet-curves");
    view.setFocus();
    pressKey(WXK_DELETE);
    EXPECT_TRUE(waitFor([&] { return points("red").size() == 2; }));
    // The right end is chosen now; what comes after it is on the line.
    pressKey(WXK_INSERT);
    ASSERT_TRUE(waitFor([&] { return points("red").size() == 3; }));
    EXPECT_FLOAT_EQ(points("red")[2].x, 7.0f);
    EXPECT_NEAR(points("red")[2].y, 7.0f, 1e-4f);
    pressKey(WXK_DELETE);
    EXPECT_TRUE(waitFor([&] { return points("red").size() == 2; }));
    // The left end, out of the view.
    dragMouse(*shown.window, view, at(-6.0, -6.0), QPoint(40, view.height() + 60));
    EXPECT_TRUE(waitFor([&] { return points("red").size() == 1; }));
    EXPECT_EQ(points("master").size(), 3u);
}

// Whatever is done to the points, what comes out is a curve.
RC_GTEST_PROP(Editors, CurvesStayCurves, ()) {
    CurvePoints points;
    const int steps = *rc::gen::inRange(1, 40);
    const auto stop = rc::gen::map(rc::gen::inRange(-2000, 2000),
                                   [](int value) { return static_cast<float>(value) / 100.0f; });
    for (int i = 0; i < steps; ++i) {
        const CurvePoint place{std::clamp(*stop, -16.0f, 16.0f), *stop};
        if (points.empty() || (*rc::gen::arbitrary<bool>() && points.size() < 30)) {
            if (std::none_of(points.begin(), points.end(), [&](const CurvePoint& each) {
                    return std::abs(each.x - place.x) < 0.01f;
                })) {
                sheet::addPoint(points, place);
            }
        } else {
            const auto index = *rc::gen::inRange<std::size_t>(0, points.size());
            sheet::movePoint(points, index, place);
        }
        RC_ASSERT(colorkit::isCurve(points));
    }
}

TEST(Editors, NumbersReadAsTheyAreMeant) {
    using Definition = PropertyDefinition;
    const auto make = [](float value, double minimum, double maximum) {
        Definition property("p", Function<float()>([=] { return value; }));
        property.setLimit({"", [](const Value&) { return true; }, NumberRange{minimum, maximum}});
        return sheet::makeNumberScale(property);
    };
    const sheet::NumberScale white = make(4.0f, 1.0, 100.0);
    EXPECT_TRUE(white.hasSlider);
    EXPECT_EQ(white.softMaximum, 20.0);
    EXPECT_FALSE(make(0.0f, -1e6, 1e6).hasSlider);
    EXPECT_EQ(make(0.0152f, 0.0, 15.0).toText(static_cast<double>(0.0152f)), "0.0152");
    EXPECT_EQ(make(6500.0f, 1700.0, 25000.0).toText(6500.0), "6500");
    EXPECT_EQ(white.toText(4.0), "4.00");
    EXPECT_EQ(white.parse(" 1,5 "), Optional<double>(1.5));
    EXPECT_EQ(white.parse("1.5x"), std::nullopt);
    EXPECT_EQ(white.parse("inf"), std::nullopt);
}

}  // namespace
}  // namespace tavrin::tests
