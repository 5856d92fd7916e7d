#include "gui/sheet/QtRuntime.h"

#include "foundation/logging/DebugLogger.h"
#include "gui/sheet/NativeHeaders.h"
#include "gui/sheet/QtAccessibility.h"
#include "gui/sheet/QtHost.h"
#include "gui/sheet/SheetStyle.h"
#include "gui/sheet/SkinColors.h"

#include <wx/app.h>
#include <wx/display.h>

#include <QApplication>
#include <QFont>
#include <QToolTip>
#include <cmath>
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
    const wxFont skinFont = widgets::GuiSkin::DEFAULT().getFont();
    QFont font(QString::fromStdString(skinFont.GetFaceName().utf8_string()));
    // Pixels by the resolution that GTK has for fonts, which users change to have larger texts.
    constexpr double kPointsPerInch = 72.0;
    const double resolution = gdk_screen_get_resolution(gdk_screen_get_default());
    font.setPixelSize(static_cast<int>(
        std::lround(skinFont.GetFractionalPointSize() * resolution / kPointsPerInch)));
    return font;
}

QtMessageHandler nextHandler = nullptr;

/// Qt remarks each time that what pops up from an embedded window stands in front of no window of
/// its own, which is as it should be.
void handleMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (!text.endsWith("must be a top level window.")) {
        nextHandler(type, context, text);
    }
}

/// What Qt says to developers.
void logQtMessage(QtMsgType, const QMessageLogContext&, const QString& message) {
    static const DebugLogger logger("Qt");
    if (isDevelopmentEnviro()) {
        logger.debug(fromQt(message));
    }
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
    qInstallMessageHandler(logQtMessage);
    takeScale();
    nextHandler = qInstallMessageHandler(handleMessage);
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
    Register();
}

QtRuntime::~QtRuntime() {
    Unregister();
    wxTheApp->Unbind(wxEVT_IDLE, &QtRuntime::onIdle, this);
    QtHost::releaseAll();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    application_.reset();
    qInstallMessageHandler(nullptr);
}

void QtRuntime::onIdle(wxIdleEvent& event) {
    // Qt deletes what waits for it in event loops of its own, and there is none. What has opened a
    // modal dialog is needed until that ends.
    if (modalDialogs_ == 0) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    event.Skip();
}

int QtRuntime::Enter(wxDialog*) {
    ++modalDialogs_;
    return wxID_NONE;
}

void QtRuntime::Exit(wxDialog*) {
    --modalDialogs_;
}

}  // namespace tavrin::sheet
