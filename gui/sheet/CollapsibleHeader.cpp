#include "gui/sheet/CollapsibleHeader.h"

#include "gui/sheet/Glyphs.h"
#include "gui/sheet/SkinColors.h"

#include <QKeyEvent>
#include <QPainter>

namespace tavrin::sheet {
namespace {

constexpr int kChevron = 14;

}  // namespace

CollapsibleHeader::CollapsibleHeader(const QString& title, Collapsible::Level level,
                                     QWidget* parent)
    : QWidget(parent),
      level_(level),
      row_(new QHBoxLayout(this)),
      chevron_(new QWidget(this)),
      name_(new NameLabel(title, this)) {
    const bool isSection = level == Collapsible::Level::Section;
    const widgets::GuiSkin& skin = widgets::GuiSkin::DEFAULT();
    row_->setContentsMargins(isSection ? 4 : 2, 0, 2, 0);
    row_->setSpacing(4);
    row_->addWidget(chevron_);
    row_->addWidget(name_, 1);
    chevron_->setFixedWidth(kChevron);
    chevron_->setAttribute(Qt::WA_TransparentForMouseEvents);
    name_->setAttribute(Qt::WA_TransparentForMouseEvents);
    name_->setBold(isSection);
    setFixedHeight(skin.controlHeight + (isSection ? 4 : 2));
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setAccessibleName(title);
}

void CollapsibleHeader::showState(bool isExpanded, bool hasBody) {
    isExpanded_ = isExpanded;
    hasBody_ = hasBody;
    update();
}

void CollapsibleHeader::paintEvent(QPaintEvent*) {
    const widgets::GuiSkin& skin = widgets::GuiSkin::DEFAULT();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor fill = toQt(skin.raised);
    if (level_ == Collapsible::Level::Item) {
        fill = toQt(skin.base).lighter(112);
    }
    if (underMouse() && isEnabled()) {
        fill = fill.lighter(108);
    }
    painter.setPen(hasFocus() ? QPen(toQt(skin.borderFocus)) : QPen(Qt::NoPen));
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), skin.cornerRadius,
                            skin.cornerRadius);
    if (hasBody_) {
        drawGlyph(painter, isExpanded_ ? Glyph::Down : Glyph::Right, chevron_->geometry(),
                  toQt(isEnabled() ? skin.textWeak : skin.textDisabled));
    }
}

void CollapsibleHeader::mousePressEvent(QMouseEvent* event) {
    isPressed_ = event->button() == Qt::LeftButton;
    setFocus(Qt::MouseFocusReason);
}

void CollapsibleHeader::mouseReleaseEvent(QMouseEvent* event) {
    if (std::exchange(isPressed_, false) && rect().contains(event->position().toPoint()) &&
        hasBody_) {
        onExpand(!isExpanded_);
    }
}

void CollapsibleHeader::keyPressEvent(QKeyEvent* event) {
    const bool isPlain = event->modifiers() == Qt::NoModifier;
    const int key = event->key();
    if (hasBody_ && isPlain && (key == Qt::Key_Space || key == Qt::Key_Return)) {
        onExpand(!isExpanded_);
    } else if (hasBody_ && isPlain && (key == Qt::Key_Left || key == Qt::Key_Right)) {
        onExpand(key == Qt::Key_Right);
    } else {
        event->ignore();
    }
}

void CollapsibleHeader::enterEvent(QEnterEvent*) {
    update();
}

void CollapsibleHeader::leaveEvent(QEvent*) {
    update();
}

void CollapsibleHeader::focusInEvent(QFocusEvent*) {
    update();
}

void CollapsibleHeader::focusOutEvent(QFocusEvent*) {
    update();
}

}  // namespace tavrin::sheet
