#include "gui/sheet/QtRuntime.h"

#include "gui/sheet/QtAccessibility.h"
#include "gui/sheet/QtHost.h"
#include "gui/sheet/SheetStyle.h"
#include "gui/sheet/SkinColors.h"

#include <wx/app.h>
#include <wx/display.h>

#include <QApplication>
#include <QFont>
#include <QToolTip>
#include <cstdlib>

namespace tavrin::sheet {
namespace {

void takeScale() {
    // Exactly the scale of GTK: Qt would find its own in the resolution of the screen or the fonts.
    qputenv("QT_FONT_DPI", "96");
    for (const char* name : {"QT_SCREEN_SCALE_FACTORS", "QT_USE_PHYSICAL_DPI"}) {
        qunsetenv(name);
    }
    const double scale = wxDisplay(0u).GetScaleFactor();
    qputenv("QT_SCALE_FACTOR", QByteArray::number(scale));
}

QFont getFont() {
    const wxFont skin = widgets::GuiSkin::DEFAULT().getFont();
    QFont font(QString::fromStdString(skin.GetFaceName().utf8_string()));
    font.setPixelSize(skin.GetPixelSize().y);
    return font;
}

}  // namespace

void QtRuntime::prepareEnvironment() {
    setenv("GDK_BACKEND", "x11", 1);
    setenv("GTK_THEME", "Adwaita:dark", 1);
    setenv("QT_QPA_PLATFORM", "xcb", 1);
    // A platform theme would bring fonts and sizes of its own.
    setenv("QT_QPA_PLATFORMTHEME", "", 1);
    unsetenv("QT_STYLE_OVERRIDE");
}

QtRuntime::QtRuntime() {
    takeScale();
    // QApplication keeps the references.
    static char name[] = "tavrin";
    static char* arguments[] = {name, nullptr};
    static int argumentCount = 1;
    QApplication::setQuitOnLastWindowClosed(false);
    application_ = std::make_unique<QApplication>(argumentCount, arguments);
    const widgets::GuiSkin& skin = widgets::GuiSkin::DEFAULT();
    QApplication::setStyle(new SheetStyle(skin));
    QApplication::setPalette(makePalette(skin));
    QToolTip::setPalette(makePalette(skin));
    QApplication::setFont(getFont());
    QToolTip::setFont(getFont());
    installQtAccessibility();
    wxTheApp->Bind(wxEVT_IDLE, &QtRuntime::onIdle, this);
}

QtRuntime::~QtRuntime() {
    wxTheApp->Unbind(wxEVT_IDLE, &QtRuntime::onIdle, this);
    QtHost::releaseAll();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void QtRuntime::onIdle(wxIdleEvent& event) {
    // Qt deletes what waits for it in event loops of its own, and there is none.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    event.Skip();
}

}  // namespace tavrin::sheet
