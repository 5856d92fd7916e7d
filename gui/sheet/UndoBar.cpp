#include "gui/sheet/UndoBar.h"

#include "gui/sheet/NameLabel.h"
#include "gui/sheet/SheetButton.h"
#include "gui/sheet/SkinColors.h"

#include <QHBoxLayout>
#include <QPainter>
#include <utility>

namespace tavrin::sheet {

UndoBar::UndoBar(QWidget* parent) : QWidget(parent), text_(new NameLabel({}, this)) {
    constexpr int kSeconds = 12;
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(8, 2, 2, 2);
    QPushButton* button = makeTextButton(Glyph::Reset, tr("Undo"), tr("Undo (Ctrl+Z)"), this);
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    row->addWidget(text_, 1);
    row->addWidget(button);
    timer_.setSingleShot(true);
    timer_.setInterval(kSeconds * 1000);
    connect(button, &QPushButton::clicked, this, [this] { undo(); });
    connect(&timer_, &QTimer::timeout, this, [this] { end(); });
    hide();
}

void UndoBar::offer(const QString& text, UiListAction undo) {
    text_->setText(text);
    action_ = std::move(undo);
    timer_.start();
    show();
}

void UndoBar::undo() {
    if (const UiListAction action = std::exchange(action_, {})) {
        end();
        onUndo(action);
    }
}

void UndoBar::end() {
    action_ = {};
    timer_.stop();
    hide();
}

void UndoBar::paintEvent(QPaintEvent*) {
    const widgets::GuiSkin& skin = widgets::GuiSkin::DEFAULT();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(toQt(skin.border));
    painter.setBrush(toQt(skin.field));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), skin.cornerRadius,
                            skin.cornerRadius);
}

}  // namespace tavrin::sheet
