#pragma once

#include "foundation/Function.h"

#include <QBasicTimer>
#include <QWidget>

namespace tavrin::sheet {

/// A grip by which something is dragged up and down; Escape, or another button, gives up. While it
/// is dragged, it tells its place again and again, as what is below the mouse may be scrolled.
class DragHandle final : public QWidget {
public:
    explicit DragHandle(QWidget* parent = nullptr);

    /// With the height of the mouse on the screen.
    Function<void(int)> onDrag;
    /// With whether it was let go of there.
    Function<void(bool)> onEnd;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void timerEvent(QTimerEvent* event) override;
    void end(bool isTaken);

    bool isHeld_ = false;
    bool isDragged_ = false;
    int startY_ = 0;
    int lastY_ = 0;
    QBasicTimer timer_;
};

}  // namespace tavrin::sheet
