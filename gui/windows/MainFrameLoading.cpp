#include "gui/components/ApplicationTitle.h"
#include "gui/windows/MainFrame.h"

#include <utility>

namespace tavrin::windows {

using widgets::MessageDialog;
using widgets::MessageIcon;

void MainFrame::bindLoadOperator() {
    pipeline::LoadOperator& load = performer_.load;
    using Handler = Function<void(const String&)>;
    load.onStart = doPassToMainThread(Handler([this](const String&) { onLoadStarted(); }));
    load.onFinish = doPassToMainThread(Handler([this](const String&) { onLoadFinished(); }));
    load.onError = doPassToMainThread(Handler([this](const String& text) { onLoadFailed(text); }));
    load.onWarning = doPassToMainThread(Handler([this](const String& text) { addWarning(text); }));
}

void MainFrame::onLoadStarted() {
    // Starts and ends come in turns, so that the canvas is thawed as often as it is frozen.
    canvas_->Freeze();
    warnings_ = String();
    toldWarnings_.clear();
    setStatus(Status::Loading, true);
    showWaiting("Loading image.");
}

void MainFrame::onLoadFinished() {
    showImage();
    if (!IsMaximized()) {
        fitToImage();
    }
    canvas_->Thaw();
    closeOpenDialog();
    const auto warnings = std::exchange(warnings_, std::nullopt);
    if (warnings && !warnings->isEmpty()) {
        widgets::showMessage(
            this, components::kApplicationTitle,
            "Following problems have been encountered during loading:\n\n" + *warnings,
            MessageIcon::Information);
    }
    status_.set(Status::Loading, false);
    status_.set(Status::Modified, false);
    setStatus(Status::Loaded, true);
}

void MainFrame::onLoadFailed(const String& text) {
    canvas_->Thaw();
    closeOpenDialog();
    warnings_.reset();
    setStatus(Status::Loading, false);
    if (!text.isEmpty()) {
        widgets::showMessage(this, components::kApplicationTitle, text, MessageIcon::Error);
    }
}

void MainFrame::addWarning(const String& text) {
    if (warnings_) {
        *warnings_ += (warnings_->isEmpty() ? String() : String("\n\n")) + text;
    } else if (toldWarnings_.insert(text).second) {
        widgets::showMessage(this, components::kApplicationTitle, text, MessageIcon::Warning);
    }
}

void MainFrame::showWaiting(const String& text) {
    widgets::Message message;
    message.text = text;
    message.icon = MessageIcon::Information;
    message.closes = false;
    message.closesOnOutsideClick = true;
    // While it is there, it is the window that the user closes.
    message.onCloseWanted = [this] {
        closeOpenDialog();
        CallAfter([this] { Close(); });
    };
    message.centeredOver = canvas_;
    MessageDialog dialog(this, message);
    MessageDialog* const before = std::exchange(openDialog_, &dialog);
    dialog.showModal();
    openDialog_ = before;
}

void MainFrame::closeOpenDialog() {
    if (openDialog_ != nullptr) {
        openDialog_->close();
    }
}

}  // namespace tavrin::windows
