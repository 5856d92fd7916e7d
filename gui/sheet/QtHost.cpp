#include "gui/sheet/QtHost.h"

#include "gui/sheet/QtEmbedding.h"

#include <cmath>
#include <set>

namespace tavrin::sheet {
namespace {

std::set<QtHost*>& getHosts() {
    static std::set<QtHost*> hosts;
    return hosts;
}

}  // namespace

QtHost::QtHost(wxWindow* parent, wxWindowID id, std::unique_ptr<QWidget> content) {
    GtkWidget* socket = gtk_socket_new();
    g_object_ref_sink(socket);
    gtk_widget_show(socket);
    Create(parent, id, socket);
    Disown();
    SetName(wxString::FromUTF8(content->accessibleName().toStdString()));
    embedding_ = std::make_unique<Embedding>(*this, socket, std::move(content));
    SetInitialSize(GetBestSize());
    Bind(wxEVT_ERASE_BACKGROUND, [](wxEraseEvent&) {});
    Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        if (embedding_ && embedding_->wantsKey(event)) {
            event.StopPropagation();  // the windows around do not get it first
        }
        event.Skip();
    });
    getHosts().insert(this);
}

QtHost::~QtHost() {
    getHosts().erase(this);
    release();
}

QWidget* QtHost::getContent() const {
    return embedding_ ? embedding_->getContent() : nullptr;
}

void QtHost::release() {
    embedding_.reset();
}

void QtHost::releaseAll() {
    for (QtHost* host : getHosts()) {
        host->release();
    }
}

bool QtHost::Show(bool show) {
    const bool isChanged = wxNativeWindow::Show(show);
    if (QWidget* content = getContent(); content != nullptr && isChanged) {
        content->setVisible(show);
    }
    return isChanged;
}

void QtHost::DoEnable(bool enable) {
    wxNativeWindow::DoEnable(enable);
    if (QWidget* content = getContent()) {
        content->setEnabled(enable);
    }
}

wxSize QtHost::DoGetBestSize() const {
    const QWidget* content = getContent();
    if (content == nullptr) {
        return {0, 0};
    }
    const QSize size = content->sizeHint().expandedTo(content->minimumSizeHint());
    const double ratio = embedding_->getRatio();
    return {static_cast<int>(std::lround(size.width() * ratio)),
            static_cast<int>(std::lround(size.height() * ratio))};
}

wxSize QtHost::GetMinSize() const {
    const QWidget* content = getContent();
    if (content == nullptr) {
        return wxDefaultSize;
    }
    const QSize size = content->minimumSizeHint().expandedTo(content->minimumSize());
    const double ratio = embedding_->getRatio();
    return {static_cast<int>(size.width() * ratio), static_cast<int>(size.height() * ratio)};
}

wxSize QtHost::GetMaxSize() const {
    const QWidget* content = getContent();
    if (content == nullptr) {
        return wxDefaultSize;
    }
    const double ratio = embedding_->getRatio();
    const auto toLimit = [ratio](int extent) {
        return extent >= QWIDGETSIZE_MAX ? wxDefaultCoord : static_cast<int>(extent * ratio);
    };
    const QSize size = content->maximumSize();
    return {toLimit(size.width()), toLimit(size.height())};
}

}  // namespace tavrin::sheet
