#include "gui/sheet/NameLabel.h"

#include "gui/sheet/SkinColors.h"

#include <QPainter>
#include <utility>

namespace tavrin::sheet {

NameLabel::NameLabel(QString text, QWidget* parent)
    : QWidget(parent), text_(std::move(text)), color_(toQt(widgets::GuiSkin::DEFAULT().text)) {
    setAccessibleName(text_);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void NameLabel::setText(const QString& text) {
    if (text != text_) {
        text_ = text;
        setAccessibleName(text);
        updateGeometry();
        update();
    }
}

void NameLabel::setColor(const QColor& color) {
    if (color != color_) {
        color_ = color;
        update();
    }
}

void NameLabel::setBold(bool isBold) {
    QFont changed = font();
    changed.setBold(isBold);
    setFont(changed);
}

QSize NameLabel::sizeHint() const {
    return {fontMetrics().horizontalAdvance(text_) + 2, widgets::GuiSkin::DEFAULT().controlHeight};
}

QSize NameLabel::minimumSizeHint() const {
    return {40, sizeHint().height()};
}

void NameLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(isEnabled() ? color_ : toQt(widgets::GuiSkin::DEFAULT().textDisabled));
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter,
                     fontMetrics().elidedText(text_, Qt::ElideRight, width()));
}

}  // namespace tavrin::sheet
