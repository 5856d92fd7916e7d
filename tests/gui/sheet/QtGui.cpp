#include "tests/gui/sheet/QtGui.h"

#include "gui/sheet/QtRuntime.h"

#include <gtest/gtest.h>
#include <wx/window.h>

#include <memory>

namespace tavrin::tests {
namespace {

/// Qt lives from before the first test until after the last.
class QtEnvironment final : public testing::Environment {
public:
    QtEnvironment() { sheet::QtRuntime::prepareEnvironment(); }
    void SetUp() override { runtime_ = std::make_unique<sheet::QtRuntime>(); }
    void TearDown() override { runtime_.reset(); }

private:
    std::unique_ptr<sheet::QtRuntime> runtime_;
};

[[maybe_unused]] const auto* const kEnvironment =
    testing::AddGlobalTestEnvironment(new QtEnvironment);

}  // namespace

wxPoint toWindow(const wxWindow& window, const QWidget& widget, QPoint position) {
    const QWidget* top = widget.window();
    const QPoint inside = widget.mapTo(top, position);
    const double ratio = top->devicePixelRatioF() / window.GetContentScaleFactor();
    // Where the content really is says the display, through Qt.
    const QPoint corner = top->mapToGlobal(QPoint(0, 0));
    return window.ScreenToClient(wxPoint(static_cast<int>((corner.x() + inside.x()) * ratio),
                                         static_cast<int>((corner.y() + inside.y()) * ratio)));
}

wxPoint toWindow(const wxWindow& window, const QWidget& widget) {
    return toWindow(window, widget, widget.rect().center());
}

void clickMouse(const wxWindow& window, const QWidget& widget) {
    clickMouse(window, toWindow(window, widget));
}

void dragMouse(const wxWindow& window, const QWidget& widget, QPoint from, QPoint to) {
    dragMouse(window, toWindow(window, widget, from), toWindow(window, widget, to));
}

bool waitUntilShown(const QWidget& widget) {
    const bool isShown = waitFor([&] { return widget.isVisible() && !widget.size().isEmpty(); });
    QPoint last(-1, -1);
    return isShown && waitFor([&] {
               const QPoint now = widget.mapToGlobal(QPoint(0, 0));
               return std::exchange(last, now) == now;
           });
}

}  // namespace tavrin::tests
