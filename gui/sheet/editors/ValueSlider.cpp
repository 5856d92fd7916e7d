#include "gui/sheet/editors/ValueSlider.h"

#include "gui/sheet/SkinColors.h"

#include <QKeyEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace tavrin::sheet {
namespace {

constexpr double kRadius = 5.0;  // of the handle
constexpr double kGroove = 4.0;
constexpr int kHeight = 14;

}  // namespace

ValueSlider::ValueSlider(const NumberScale& scale, QWidget* parent)
    : QWidget(parent), scale_(scale) {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setFixedHeight(kHeight);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ValueSlider::showNumber(double number) {
    if (number != number_) {
        number_ = number;
        update();
    }
}

double ValueSlider::getPosition(double number) const {
    const double share = (number - scale_.softMinimum) / (scale_.softMaximum - scale_.softMinimum);
    return kRadius + 1.0 + std::clamp(share, 0.0, 1.0) * (width() - 2.0 * (kRadius + 1.0));
}

double ValueSlider::getNumber(double position) const {
    const double share = (position - kRadius - 1.0) / (width() - 2.0 * (kRadius + 1.0));
    return scale_.round(scale_.softMinimum +
                        std::clamp(share, 0.0, 1.0) * (scale_.softMaximum - scale_.softMinimum));
}

QSize ValueSlider::sizeHint() const {
    return {90, kHeight};
}

QSize ValueSlider::minimumSizeHint() const {
    return {34, kHeight};
}

void ValueSlider::paintEvent(QPaintEvent*) {
    const widgets::GuiSkin& skin = widgets::GuiSkin::DEFAULT();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double middle = height() / 2.0;
    const double handle = getPosition(number_);
    // The groove is as wide as what stands above; the handle stays within it.
    const auto drawGroove = [&](double from, double to, const QColor& color) {
        const auto toGroove = [&](double number) {
            return number <= scale_.softMinimum   ? 0.0
                   : number >= scale_.softMaximum ? width()
                                                  : getPosition(number);
        };
        painter.setBrush(color);
        painter.drawRoundedRect(QRectF(QPointF(toGroove(from), middle - kGroove / 2),
                                       QPointF(toGroove(to), middle + kGroove / 2)),
                                kGroove / 2, kGroove / 2);
    };
    painter.setPen(Qt::NoPen);
    drawGroove(scale_.softMinimum, scale_.softMaximum, toQt(skin.field));
    // What is added to nothing, or taken from it, is filled.
    drawGroove(std::min(0.0, number_), std::max(0.0, number_),
               toQt(isEnabled() ? skin.accent : skin.raised));
    painter.setBrush(toQt(skin.textDisabled));
    const double tick = getPosition(scale_.defaultValue);
    painter.drawRect(QRectF(tick - 0.5, middle + kGroove / 2 + 1.0, 1.0, 3.0));
    QColor fill = toQt(isEnabled() ? skin.text : skin.textDisabled);
    if (isEnabled() && !isHeld_ && !underMouse()) {
        fill = fill.darker(115);
    }
    painter.setPen(QPen(toQt(hasFocus() ? skin.borderFocus : skin.border), hasFocus() ? 2.0 : 1.0));
    painter.setBrush(fill);
    painter.drawEllipse(QPointF(handle, middle), kRadius, kRadius);
}

void ValueSlider::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return event->ignore();
    }
    isHeld_ = true;
    lastX_ = event->position().x();
    const double handle = getPosition(number_);
    const bool isOnHandle = std::abs(lastX_ - handle) <= kRadius + 1.0;
    handle_ = isOnHandle ? handle : lastX_;
    if (!isOnHandle) {
        change(getNumber(handle_));
    }
    update();
}

void ValueSlider::mouseMoveEvent(QMouseEvent* event) {
    if (!isHeld_) {
        return;
    }
    // Not faster than the mouse.
    const double speed = std::min(getStepFactor(event->modifiers()), 1.0);
    handle_ += (event->position().x() - lastX_) * speed;
    lastX_ = event->position().x();
    change(getNumber(handle_));
}

void ValueSlider::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        isHeld_ = false;
        update();
    }
}

void ValueSlider::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        isHeld_ = false;
        change(scale_.defaultValue);
    }
}

void ValueSlider::keyPressEvent(QKeyEvent* event) {
    const double step = scale_.getStep() * getStepFactor(event->modifiers());
    switch (event->key()) {
        case Qt::Key_Left:
        case Qt::Key_Down:
            return change(scale_.limit(number_ - step));
        case Qt::Key_Right:
        case Qt::Key_Up:
            return change(scale_.limit(number_ + step));
        case Qt::Key_PageDown:
            return change(scale_.limit(number_ - 10.0 * step));
        case Qt::Key_PageUp:
            return change(scale_.limit(number_ + 10.0 * step));
        case Qt::Key_Home:
            return change(scale_.softMinimum);
        case Qt::Key_End:
            return change(scale_.softMaximum);
        case Qt::Key_Backspace:
        case Qt::Key_Delete:
            return change(scale_.defaultValue);
        default:
            event->ignore();
    }
}

void ValueSlider::wheelEvent(QWheelEvent* event) {
    if (!hasFocus()) {
        return event->ignore();
    }
    if (const int steps = takeSteps(wheel_, *event); steps != 0) {
        const double step = scale_.getStep() * getStepFactor(event->modifiers());
        change(scale_.limit(number_ + steps * step));
    }
    event->accept();
}

void ValueSlider::enterEvent(QEnterEvent*) {
    update();
}

void ValueSlider::leaveEvent(QEvent*) {
    update();
}

void ValueSlider::change(double number) {
    if (number == number_) {
        return;
    }
    showNumber(number);
    if (onEdited) {
        onEdited(number);
    }
}

}  // namespace tavrin::sheet
