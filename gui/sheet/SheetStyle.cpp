#include "gui/sheet/SheetStyle.h"

#include "gui/sheet/Glyphs.h"
#include "gui/sheet/SkinColors.h"

#include <QPainter>
#include <QStyleOption>
#include <QToolButton>

namespace tavrin::sheet {
namespace {

bool isOn(const QStyleOption& option, QStyle::StateFlag flag) {
    return option.state.testFlag(flag);
}

bool hasKeyboard(const QStyleOption& option) {
    return isOn(option, QStyle::State_HasFocus) && isOn(option, QStyle::State_Enabled);
}

}  // namespace

SheetStyle::SheetStyle(const widgets::GuiSkin& skin) : QProxyStyle("Fusion"), skin_(skin) {}

void SheetStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
    switch (element) {
        case PE_IndicatorCheckBox:
            drawCheckBox(*option, *painter);
            return;
        case PE_PanelLineEdit:
        case PE_FrameLineEdit:
            drawPanel(*option, *painter, toQt(skin_.field));
            return;
        case PE_PanelButtonCommand:
            drawButton(*option, *painter);
            return;
        case PE_PanelButtonTool:
            if (isOn(*option, State_AutoRaise) && !isOn(*option, State_MouseOver) &&
                !isOn(*option, State_Sunken) && !isOn(*option, State_On)) {
                return;
            }
            drawButton(*option, *painter);
            return;
        case PE_FrameFocusRect:
            return;  // every control shows the keyboard by its border
        case PE_PanelTipLabel:
            painter->fillRect(option->rect, toQt(skin_.border));
            painter->fillRect(option->rect.adjusted(1, 1, -1, -1), toQt(skin_.field));
            return;
        default:
            QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void SheetStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                    QPainter* painter, const QWidget* widget) const {
    if (control == CC_ComboBox) {
        drawComboBox(*option, *painter);
        return;
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_ToolButton && hasKeyboard(*option)) {
        drawPanel(*option, *painter, Qt::transparent);
    }
}

int SheetStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                            const QWidget* widget) const {
    switch (metric) {
        case PM_IndicatorWidth:
        case PM_IndicatorHeight:
            return 14;
        case PM_ButtonShiftHorizontal:
        case PM_ButtonShiftVertical:
            return 0;
        case PM_ToolTipLabelFrameWidth:
            return 5;
        case PM_SmallIconSize:
        case PM_ButtonIconSize:
            return 14;
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int SheetStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* answer) const {
    switch (hint) {
        case SH_ComboBox_Popup:
            return 0;  // a list below the box, which does not cover it
        case SH_DialogButtonBox_ButtonsHaveIcons:
        case SH_EtchDisabledText:
            return 0;
        default:
            return QProxyStyle::styleHint(hint, option, widget, answer);
    }
}

QSize SheetStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                   const QWidget* widget) const {
    QSize result = QProxyStyle::sizeFromContents(type, option, size, widget);
    if (type == CT_LineEdit || type == CT_ComboBox || type == CT_PushButton ||
        type == CT_CheckBox) {
        result.setHeight(skin_.controlHeight);
    }
    return result;
}

void SheetStyle::drawPanel(const QStyleOption& option, QPainter& painter,
                           const QColor& fill) const {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(toQt(hasKeyboard(option) ? skin_.borderFocus : skin_.border));
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5), skin_.cornerRadius,
                            skin_.cornerRadius);
    painter.restore();
}

void SheetStyle::drawButton(const QStyleOption& option, QPainter& painter) const {
    QColor fill = toQt(skin_.raised);
    if (!isOn(option, State_Enabled)) {
        fill = toQt(skin_.base).lighter(108);
    } else if (isOn(option, State_Sunken) || isOn(option, State_On)) {
        fill = toQt(skin_.field);
    } else if (isOn(option, State_MouseOver)) {
        fill = fill.lighter(118);
    }
    drawPanel(option, painter, fill);
}

void SheetStyle::drawCheckBox(const QStyleOption& option, QPainter& painter) const {
    const bool isChecked = isOn(option, State_On);
    const bool isEnabled = isOn(option, State_Enabled);
    QColor fill = toQt(isChecked && isEnabled ? skin_.accent : skin_.field);
    if (isOn(option, State_MouseOver) && isEnabled) {
        fill = fill.lighter(isChecked ? 112 : 125);
    }
    drawPanel(option, painter, fill);
    if (isChecked) {
        const QColor mark = toQt(isEnabled ? skin_.accentText : skin_.textDisabled);
        drawGlyph(painter, Glyph::Check, option.rect, mark);
    }
}

void SheetStyle::drawComboBox(const QStyleOption& option, QPainter& painter) const {
    constexpr int kArrow = 16;
    const bool isHovered = isOn(option, State_MouseOver) && isOn(option, State_Enabled);
    drawPanel(option, painter, toQt(isHovered ? skin_.raised : skin_.field));
    QRect place = option.rect;
    place.setLeft(place.right() - kArrow - 2);
    drawGlyph(painter, Glyph::Down, place,
              toQt(isOn(option, State_Enabled) ? skin_.textWeak : skin_.textDisabled));
}

}  // namespace tavrin::sheet
