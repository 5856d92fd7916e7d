#include "gui/sheet/QtEmbedding.h"

#include "gui/sheet/Collapsible.h"
#include "gui/sheet/ParentScrolling.h"
#include "gui/sheet/ShowPartEvent.h"
#include "gui/widgets/LayOutAround.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWheelEvent>
#include <QWindow>
#include <algorithm>
#include <limits>
#include <utility>

namespace tavrin::sheet {
namespace {

/// Lets X do now what both libraries have asked of it, each on a connection of its own.
void synchronize() {
    if (auto* x11 = qApp->nativeInterface<QNativeInterface::QX11Application>()) {
        XSync(x11->display(), 0);
    }
    gdk_display_sync(gdk_display_get_default());
}

constexpr std::pair<int, Qt::Key> kEditingKeys[] = {
    {WXK_LEFT, Qt::Key_Left},      {WXK_NUMPAD_LEFT, Qt::Key_Left},
    {WXK_RIGHT, Qt::Key_Right},    {WXK_NUMPAD_RIGHT, Qt::Key_Right},
    {WXK_UP, Qt::Key_Up},          {WXK_NUMPAD_UP, Qt::Key_Up},
    {WXK_DOWN, Qt::Key_Down},      {WXK_NUMPAD_DOWN, Qt::Key_Down},
    {WXK_HOME, Qt::Key_Home},      {WXK_NUMPAD_HOME, Qt::Key_Home},
    {WXK_END, Qt::Key_End},        {WXK_NUMPAD_END, Qt::Key_End},
    {WXK_DELETE, Qt::Key_Delete},  {WXK_NUMPAD_DELETE, Qt::Key_Delete},
    {WXK_BACK, Qt::Key_Backspace},
};

/// 0 for keys with which no text is edited.
int toQtKey(int key) {
    for (const auto& [ours, theirs] : kEditingKeys) {
        if (key == ours) {
            return theirs;
        }
    }
    return key >= WXK_SPACE && key < WXK_DELETE ? key : 0;
}

}  // namespace

QtHost::Embedding::Embedding(QtHost& host, GtkWidget* socket, std::unique_ptr<QWidget> content)
    : host_(host), socket_(socket), content_(content.release()) {
    content_->setProperty("Orvix.WrappedQtWidget", true);
    content_->setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    content_->setAttribute(Qt::WA_NativeWindow);
    content_->installEventFilter(this);
    connectSignals();
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget*, QWidget* focus) { onFocusChanged(focus); });
    Register();
    if (gtk_widget_get_realized(socket_)) {
        embed();
    }
}

QtHost::Embedding::~Embedding() {
    Unregister();
    g_signal_handlers_disconnect_by_data(socket_, this);
    unembed();
    if (lastKey_ != nullptr) {
        gdk_event_free(lastKey_);
    }
    if (content_) {
        content_->removeEventFilter(this);
        delete content_;
    }
}

double QtHost::Embedding::getRatio() const {
    return content_->devicePixelRatioF() / host_.GetContentScaleFactor();
}

bool QtHost::Embedding::wantsKey(const wxKeyEvent& event) const {
    QWidget* focus = QApplication::focusWidget();
    const int key = toQtKey(event.GetKeyCode());
    // The windows around only want keys with Ctrl.
    if (focus == nullptr || !content_ || !content_->isAncestorOf(focus) || key == 0 ||
        !event.ControlDown()) {
        return false;
    }
    Qt::KeyboardModifiers modifiers = Qt::ControlModifier;
    modifiers.setFlag(Qt::ShiftModifier, event.ShiftDown());
    modifiers.setFlag(Qt::AltModifier, event.AltDown());
    QKeyEvent question(QEvent::ShortcutOverride, key, modifiers);
    question.ignore();
    QApplication::sendEvent(focus, &question);
    return question.isAccepted();
}

void QtHost::Embedding::connectSignals() {
    const auto connectTo = [this](const char* signal, auto* handler, GConnectFlags flags) {
        g_signal_connect_data(socket_, signal, G_CALLBACK(handler), this, nullptr, flags);
    };
    connectTo(
        "realize", +[](GtkWidget*, Embedding* self) { self->embed(); }, G_CONNECT_AFTER);
    connectTo(
        "unrealize", +[](GtkWidget*, Embedding* self) { self->unembed(); }, GConnectFlags());
    connectTo(
        "key-press-event",
        +[](GtkWidget*, GdkEventKey* event, Embedding* self) -> gboolean {
            self->keepKey(event);
            // Alt and a letter open menus of the window.
            GtkWidget* top = gtk_widget_get_toplevel(self->socket_);
            return (event->state & GDK_MOD1_MASK) != 0 && GTK_IS_WINDOW(top) &&
                   gtk_window_activate_key(GTK_WINDOW(top), event);
        },
        GConnectFlags());
    connectTo(
        "plug-added", +[](GtkWidget*, Embedding* self) { self->applyModal(); }, GConnectFlags());
    // The socket stays for the next time.
    connectTo(
        "plug-removed", +[](GtkWidget*, Embedding*) -> gboolean { return TRUE; }, GConnectFlags());
}

void QtHost::Embedding::embed() {
    if (!content_ || foreign_ != nullptr) {
        return;
    }
    content_->winId();
    foreign_ = QWindow::fromWinId(gtk_socket_get_id(GTK_SOCKET(socket_)));
    content_->windowHandle()->setParent(foreign_);
    content_->move(0, 0);
    content_->setVisible(host_.IsShown());
    synchronize();
}

void QtHost::Embedding::unembed() {
    if (foreign_ == nullptr) {
        return;
    }
    if (content_) {
        content_->hide();
        content_->windowHandle()->setParent(nullptr);
    }
    delete foreign_;
    foreign_ = nullptr;
    synchronize();
    // Otherwise GTK would go on to watch the window, and read it when it is gone.
    GdkWindow* plug = gtk_socket_get_plug_window(GTK_SOCKET(socket_));
    if (plug != nullptr && !gdk_window_is_destroyed(plug)) {
        gdk_window_destroy_notify(plug);
    }
}

void QtHost::Embedding::applyModal() {
    GdkWindow* plug = gtk_socket_get_plug_window(GTK_SOCKET(socket_));
    if (plug == nullptr) {
        return;
    }
    cairo_region_t* nothing = modalDialogs_ > 0 ? cairo_region_create() : nullptr;
    gdk_window_input_shape_combine_region(plug, nothing, 0, 0);
    if (nothing != nullptr) {
        cairo_region_destroy(nothing);
    }
}

void QtHost::Embedding::keepKey(const GdkEventKey* event) {
    if (lastKey_ != nullptr) {
        gdk_event_free(lastKey_);
    }
    lastKey_ = gdk_event_copy(reinterpret_cast<const GdkEvent*>(event));
}

bool QtHost::Embedding::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == ShowPartEvent::kType) {
        const auto* wanted = static_cast<ShowPartEvent*>(event);
        scrollTo(wanted->getPart(), wanted->getMost());
        return true;
    }
    switch (event->type()) {
        case QEvent::Close:
            event->ignore();
            return true;
        case QEvent::LayoutRequest:
            relayoutLater();
            return false;
        case QEvent::Resize:
            // What has the keyboard may be where there was no room before; the layout comes next.
            scrollToFollowedLater();
            return false;
        case QEvent::KeyPress:
        case QEvent::Wheel: {
            // Whatever comes here, no child wanted; now it is up to the content itself.
            object->event(event);
            if (event->isAccepted()) {
                return true;
            }
            const bool isDone = event->type() == QEvent::KeyPress
                                    ? forwardKey()
                                    : scrollParent(static_cast<QWheelEvent*>(event)->angleDelta());
            event->setAccepted(isDone);
            return true;
        }
        default:
            return false;
    }
}

bool QtHost::Embedding::forwardKey() {
    GtkWidget* top = gtk_widget_get_toplevel(socket_);
    return lastKey_ != nullptr && GTK_IS_WINDOW(top) &&
           gtk_window_activate_key(GTK_WINDOW(top), &lastKey_->key);
}

bool QtHost::Embedding::scrollParent(const QPoint& angle) {
    constexpr int kUnitsPerNotch = 3;
    constexpr int kAnglePerUnit = 120 / kUnitsPerNotch;
    followed_ = nullptr;  // it may be scrolled out of view
    // Fine wheels and touch pads send parts of a unit.
    turned_ += angle;
    const QPoint units(turned_.x() / kAnglePerUnit, turned_.y() / kAnglePerUnit);
    turned_ -= units * kAnglePerUnit;
    return sheet::scrollParent(host_, units.x(), units.y());
}

void QtHost::Embedding::relayoutLater() {
    if (!isRelayoutPending_) {
        isRelayoutPending_ = true;
        host_.CallAfter([host = &host_] {
            if (host->embedding_) {
                host->embedding_->relayout();
            }
        });
    }
}

void QtHost::Embedding::relayout() {
    isRelayoutPending_ = false;
    widgets::layOutAround(host_);
    scrollToFollowed();
}

void QtHost::Embedding::onFocusChanged(QWidget* focus) {
    const bool isOurs = focus != nullptr && content_ && content_->isAncestorOf(focus);
    const bool isByMouse = QApplication::mouseButtons() != Qt::NoButton;
    followed_ = isOurs && !isByMouse ? focus : nullptr;
    scrollToFollowedLater();
}

void QtHost::Embedding::scrollToFollowedLater() {
    QMetaObject::invokeMethod(
        this, [this] { scrollToFollowed(); }, Qt::QueuedConnection);
}

void QtHost::Embedding::scrollToFollowed() {
    if (!followed_ || !content_) {
        return;
    }
    // A title is shown with what it is the title of.
    auto* const collapsible = qobject_cast<Collapsible*>(followed_->parentWidget());
    const QWidget& part = collapsible != nullptr ? *collapsible : *followed_;
    scrollTo(QRect(part.mapTo(content_, QPoint(0, 0)), part.size()),
             std::numeric_limits<int>::max());
}

void QtHost::Embedding::scrollTo(const QRect& part, int most) {
    const double ratio = getRatio();
    const auto scaled = [ratio](int length) { return static_cast<int>(length * ratio); };
    scrollIntoView(
        host_,
        wxRect(scaled(part.x()), scaled(part.y()), scaled(part.width()), scaled(part.height())),
        most);
}

int QtHost::Embedding::Enter(wxDialog*) {
    ++modalDialogs_;
    applyModal();
    return wxID_NONE;
}

void QtHost::Embedding::Exit(wxDialog*) {
    // One made by a dialog is not blocked by it.
    modalDialogs_ = std::max(modalDialogs_ - 1, 0);
    applyModal();
}

}  // namespace tavrin::sheet
