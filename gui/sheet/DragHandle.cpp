#include "gui/sheet/DragHandle.h"

#include "gui/sheet/Glyphs.h"
#include "gui/sheet/SkinColors.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <cstdlib>
#include <utility>

namespace tavrin::sheet {
namespace {

constexpr int kRepeatTime = 60;  // milliseconds

}  // namespace

DragHandle::DragHandle(QWidget* parent) : QWidget(parent) {
    setFixedWidth(12);
    setCursor(Qt::SizeVerCursor);
    setAttribute(Qt::WA_Hover);
    setToolTip(tr("Drag to move (Alt+Up, Alt+Down)"));
}

void DragHandle::paintEvent(QPaintEvent*) {
    const widgets::GuiSkin& skin = widgets::GuiSkin::DEFAULT();
    QPainter painter(this);
    drawGlyph(painter, Glyph::Handle, QRectF(0, 0, 14, height()).translated(-1, 0),
              toQt(underMouse() && isEnabled() ? skin.text : skin.textDisabled));
}

void DragHandle::mousePressEvent(QMouseEvent* event) {
    if (isHeld_) {
        end(false);
    } else if (event->button() == Qt::LeftButton) {
        isHeld_ = true;
        startY_ = event->globalPosition().toPoint().y();
        setFocus(Qt::MouseFocusReason);  // for Escape
    }
}

void DragHandle::mouseMoveEvent(QMouseEvent* event) {
    const int y = event->globalPosition().toPoint().y();
    if (isHeld_ && (isDragged_ || std::abs(y - startY_) >= QApplication::startDragDistance())) {
        isDragged_ = true;
        lastY_ = y;
        timer_.start(kRepeatTime, this);
        onDrag(y);
    }
}

void DragHandle::timerEvent(QTimerEvent*) {
    onDrag(lastY_);
}

void DragHandle::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        end(true);
    }
}

void DragHandle::keyPressEvent(QKeyEvent* event) {
    if (isHeld_ && event->key() == Qt::Key_Escape) {
        end(false);
    } else {
        event->ignore();
    }
}

void DragHandle::end(bool isTaken) {
    isHeld_ = false;
    timer_.stop();
    if (std::exchange(isDragged_, false)) {
        onEnd(isTaken);
    }
}

}  // namespace tavrin::sheet
