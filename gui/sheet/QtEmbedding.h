#pragma once

#include "gui/sheet/NativeHeaders.h"
#include "gui/sheet/QtHost.h"

#include <wx/modalhook.h>

#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QWidget>

class QWindow;

namespace tavrin::sheet {

/// The link between a QtHost and its content: a GtkSocket to which the Qt window is given as
/// GTK gives it foreign windows, by XEMBED.
class QtHost::Embedding final : public QObject, private wxModalDialogHook {
public:
    /// `socket` may be realized already or later.
    Embedding(QtHost& host, GtkWidget* socket, std::unique_ptr<QWidget> content);
    ~Embedding() override;

    QWidget* getContent() const { return content_; }
    /// A size of Qt in pixels of wxWidgets.
    double getRatio() const;
    /// Whether what has the keyboard needs the key itself, as a field in which it moves the cursor.
    bool wantsKey(const wxKeyEvent& event) const;

private:
    void connectSignals();
    void embed();
    void unembed();
    /// X does not keep the mouse from a foreign window while a dialog is modal.
    void applyModal();
    void keepKey(const GdkEventKey* event);

    bool eventFilter(QObject* object, QEvent* event) override;
    bool forwardKey();
    bool scrollParent(const QPoint& angle);
    void relayoutLater();
    void relayout();
    void onFocusChanged(QWidget* focus);
    /// When Qt has laid out what has changed.
    void scrollToFollowedLater();
    void scrollToFollowed();
    /// A part of the content, in pixels of Qt.
    void scrollTo(const QRect& part, int most);

    int Enter(wxDialog* dialog) override;
    void Exit(wxDialog* dialog) override;

    QtHost& host_;
    GtkWidget* socket_;
    QPointer<QWidget> content_;
    QWindow* foreign_ = nullptr;   ///< the socket, while the content is in it
    GdkEvent* lastKey_ = nullptr;  ///< for keys that the content does not want
    int modalDialogs_ = 0;
    bool isRelayoutPending_ = false;
    QPointer<QWidget> followed_;  ///< got the keyboard by a key, and is kept in view
    QPoint turned_;               ///< of the wheel, since the last whole unit
};

}  // namespace tavrin::sheet
