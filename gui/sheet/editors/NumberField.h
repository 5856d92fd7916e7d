#pragma once

#include "foundation/Function.h"
#include "gui/sheet/editors/NumberScale.h"
#include "gui/sheet/editors/Steps.h"
#include "gui/sheet/editors/TextField.h"

namespace tavrin::sheet {

/// A field for a number: typed, changed by the arrow keys and, when it has the keyboard, by the
/// wheel (with Shift a tenth as much, with Ctrl ten times), or dragged sideways. Enter takes what
/// has been typed, Escape gives it up.
class NumberField final : public TextField {
public:
    explicit NumberField(const NumberScale& scale, QWidget* parent = nullptr);

    /// Within the limits; each change by the user.
    Function<void(double)> onEdited;

    double getNumber() const { return number_; }
    /// Leaves what is being typed as it is.
    void showNumber(double number);
    /// A thin line in this colour at the left, to tell components apart.
    void setMark(const QColor& color);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void commit();
    void revert();
    void change(double number);
    void changeBySteps(double steps, Qt::KeyboardModifiers modifiers);

    NumberScale scale_;
    double number_ = 0.0;
    QColor mark_;
    // While the mouse is held on a field that had not the keyboard.
    bool isHeld_ = false;
    bool isDragged_ = false;
    double heldX_ = 0.0;
    double heldNumber_ = 0.0;
    widgets::WheelSteps wheel_;
};

}  // namespace tavrin::sheet
