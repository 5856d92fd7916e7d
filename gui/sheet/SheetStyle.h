#pragma once

#include "gui/widgets/GuiSkin.h"

#include <QProxyStyle>

namespace tavrin::sheet {

/// Qt's controls in the shapes of the skin: flat, compact, with a clear focus.
class SheetStyle final : public QProxyStyle {
public:
    /// The skin must outlive the style.
    explicit SheetStyle(const widgets::GuiSkin& skin);

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* answer) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;

private:
    void drawPanel(const QStyleOption& option, QPainter& painter, const QColor& fill) const;
    void drawButton(const QStyleOption& option, QPainter& painter) const;
    void drawCheckBox(const QStyleOption& option, QPainter& painter) const;
    void drawComboBox(const QStyleOption& option, QPainter& painter) const;

    const widgets::GuiSkin& skin_;
};

}  // namespace tavrin::sheet
