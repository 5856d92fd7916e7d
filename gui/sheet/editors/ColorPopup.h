#pragma once

#include "foundation/Color.h"
#include "foundation/Function.h"
#include "foundation/data/PropertyDefinition.h"
#include "gui/sheet/editors/VectorEditor.h"

#include <QColor>
#include <QFrame>

class QLineEdit;

namespace tavrin::sheet {

/// A small window to choose a colour: a field of saturation and brightness, a bar of hues, the
/// display's colour as six hexadecimal digits, and the linear numbers. It closes and deletes itself
/// with a click elsewhere.
class ColorPopup final : public QFrame {
public:
    ColorPopup(const PropertyDefinition& property, QWidget* parent);

    /// Linear, from 0 to 1; each change by the user.
    Function<void(const CompressedRgb&)> onEdited;

    void showColor(const CompressedRgb& linear);
    void openBelow(const QWidget& button);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    enum class Part { None, Field, Hue };

    void drag(const QPointF& position);
    void take(const CompressedRgb& linear);
    QColor getColor() const;
    void takeText();
    void showTexts(const CompressedRgb& linear);

    // Of the display's colour, each from 0 to 1; the hue stays when the colour has none.
    float hue_ = 0.0f;
    float saturation_ = 0.0f;
    float brightness_ = 0.0f;
    Part held_ = Part::None;
    QLineEdit* text_;
    VectorEditor* numbers_;
};

}  // namespace tavrin::sheet
