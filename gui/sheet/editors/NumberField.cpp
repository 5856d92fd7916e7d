#include "gui/sheet/editors/NumberField.h"

#include "gui/widgets/GuiSkin.h"

#include <QKeyEvent>
#include <QPainter>
#include <cmath>

namespace tavrin::sheet {
namespace {

constexpr double kDragDistance = 4.0;  // a click may be as unsteady as this

}  // namespace

NumberField::NumberField(const NumberScale& scale, QWidget* parent)
    : TextField(parent), scale_(scale) {
    setAlignment(Qt::AlignRight);
    setFixedHeight(widgets::GuiSkin::DEFAULT().controlHeight);
    setFocusPolicy(Qt::TabFocus);  // a press of the mouse may also begin to drag
    setCursor(Qt::SizeHorCursor);
    setContextMenuPolicy(Qt::NoContextMenu);
    setText(scale_.toText(number_));
}

void NumberField::showNumber(double number) {
    number_ = number;
    if (!(hasFocus() && isModified())) {
        const QString text = scale_.toText(number);
        if (text != this->text()) {
            setText(text);
        }
    }
}

void NumberField::setMark(const QColor& color) {
    mark_ = color;
    setTextMargins(4, 0, 0, 0);
}

QSize NumberField::sizeHint() const {
    return {58, widgets::GuiSkin::DEFAULT().controlHeight};
}

QSize NumberField::minimumSizeHint() const {
    return {30, sizeHint().height()};
}

bool NumberField::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* press = static_cast<QKeyEvent*>(event);
        if (press->key() == Qt::Key_Up || press->key() == Qt::Key_Down) {
            event->accept();  // with any modifier
            return true;
        }
    }
    return TextField::event(event);
}

void NumberField::keyPressEvent(QKeyEvent* event) {
    if (event->modifiers().testFlag(Qt::AltModifier)) {
        return event->ignore();
    }
    switch (event->key()) {
        case Qt::Key_Up:
            return changeBySteps(1.0, event->modifiers());
        case Qt::Key_Down:
            return changeBySteps(-1.0, event->modifiers());
        case Qt::Key_Return:
        case Qt::Key_Enter:
            commit();
            return selectAll();
        case Qt::Key_Escape:
            if (isModified()) {
                revert();
                return selectAll();
            }
            return event->ignore();
        default:
            break;
    }
    if (event->matches(QKeySequence::Undo) && !isUndoAvailable()) {
        return event->ignore();  // then it is something larger that is to be undone
    }
    TextField::keyPressEvent(event);
}

void NumberField::wheelEvent(QWheelEvent* event) {
    if (!hasFocus()) {
        return event->ignore();
    }
    if (const int steps = takeSteps(wheel_, *event); steps != 0) {
        changeBySteps(steps, event->modifiers());
    }
    event->accept();
}

void NumberField::mousePressEvent(QMouseEvent* event) {
    if (hasFocus() || event->button() != Qt::LeftButton) {
        return TextField::mousePressEvent(event);
    }
    isHeld_ = true;
    isDragged_ = false;
    heldX_ = event->position().x();
    heldNumber_ = number_;
}

void NumberField::mouseMoveEvent(QMouseEvent* event) {
    if (!isHeld_) {
        return TextField::mouseMoveEvent(event);
    }
    const double distance = event->position().x() - heldX_;
    if (isDragged_ || std::abs(distance) >= kDragDistance) {
        isDragged_ = true;
        const double moved = distance * scale_.getStep() * getStepFactor(event->modifiers());
        change(scale_.round(heldNumber_ + moved));
    }
}

void NumberField::mouseReleaseEvent(QMouseEvent* event) {
    if (!isHeld_) {
        return TextField::mouseReleaseEvent(event);
    }
    isHeld_ = false;
    if (!isDragged_) {
        setFocus(Qt::MouseFocusReason);
        selectAll();
    }
}

void NumberField::focusInEvent(QFocusEvent* event) {
    TextField::focusInEvent(event);
    setCursor(Qt::IBeamCursor);
    if (event->reason() != Qt::PopupFocusReason) {
        selectAll();
    }
}

void NumberField::focusOutEvent(QFocusEvent* event) {
    commit();
    setCursor(Qt::SizeHorCursor);
    deselect();
    TextField::focusOutEvent(event);
}

void NumberField::paintEvent(QPaintEvent* event) {
    TextField::paintEvent(event);
    if (mark_.isValid()) {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(isEnabled() ? mark_ : mark_.darker(200));
        painter.drawRoundedRect(QRectF(3.0, 5.0, 2.0, height() - 10.0), 1.0, 1.0);
    }
}

void NumberField::commit() {
    if (!isModified()) {
        return;
    }
    const Optional<double> typed = scale_.parse(text());
    setModified(false);
    if (typed) {
        change(scale_.limit(*typed));
    }
    revert();
}

void NumberField::revert() {
    setText(scale_.toText(number_));
    setModified(false);
}

void NumberField::change(double number) {
    if (number == number_) {
        return;
    }
    showNumber(number);
    if (onEdited) {
        onEdited(number);
    }
}

void NumberField::changeBySteps(double steps, Qt::KeyboardModifiers modifiers) {
    commit();
    double step = scale_.getStep() * getStepFactor(modifiers);
    if (scale_.isInteger) {
        step = std::max(step, 1.0);
    }
    change(scale_.limit(std::round((number_ + steps * step) / step) * step));
    selectAll();
}

}  // namespace tavrin::sheet
