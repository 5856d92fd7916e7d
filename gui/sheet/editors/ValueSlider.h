#pragma once

#include "foundation/Function.h"
#include "gui/sheet/editors/NumberScale.h"
#include "gui/sheet/editors/Steps.h"

#include <QWidget>

namespace tavrin::sheet {

/// A slim slider over the soft range of a number. Dragged with Shift it moves a tenth as far; a
/// double click brings back the default. Numbers outside the range stand at its ends.
class ValueSlider final : public QWidget {
public:
    explicit ValueSlider(const NumberScale& scale, QWidget* parent = nullptr);

    /// Each change by the user.
    Function<void(double)> onEdited;

    void showNumber(double number);
    /// Where the handle stands for a number, and the reverse, in widget coordinates.
    double getPosition(double number) const;
    double getNumber(double position) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    void change(double number);

    NumberScale scale_;
    double number_ = 0.0;
    bool isHeld_ = false;
    double handle_ = 0.0;  ///< where the handle is dragged, between the pixels of the mouse
    double lastX_ = 0.0;
    widgets::WheelSteps wheel_;
};

}  // namespace tavrin::sheet
