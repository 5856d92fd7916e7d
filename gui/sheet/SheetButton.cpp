#include "gui/sheet/SheetButton.h"

#include "gui/widgets/GuiSkin.h"

namespace tavrin::sheet {

QToolButton* makeIconButton(Glyph glyph, const QString& help, QWidget* parent) {
    const int side = widgets::GuiSkin::DEFAULT().controlHeight;
    auto* button = new QToolButton(parent);
    button->setIcon(makeIcon(glyph));
    button->setAutoRaise(true);
    button->setFixedSize(side, side);
    button->setFocusPolicy(Qt::TabFocus);
    button->setToolTip(help);
    button->setAccessibleName(help);
    return button;
}

QPushButton* makeTextButton(Glyph glyph, const QString& text, const QString& help,
                            QWidget* parent) {
    auto* button = new QPushButton(makeIcon(glyph), text, parent);
    button->setFixedHeight(widgets::GuiSkin::DEFAULT().controlHeight);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    button->setFocusPolicy(Qt::TabFocus);
    button->setToolTip(help);
    button->setAccessibleName(text);
    return button;
}

QString makeTooltip(const QString& text) {
    if (text.isEmpty()) {
        return {};
    }
    QString html = text.toHtmlEscaped();
    html.replace('\n', "<br>");
    return "<p>" + html + "</p>";
}

}  // namespace tavrin::sheet
