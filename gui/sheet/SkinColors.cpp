#include "gui/sheet/SkinColors.h"

namespace tavrin::sheet {

QPalette makePalette(const widgets::GuiSkin& skin) {
    QPalette palette;
    palette.setColor(QPalette::Window, toQt(skin.base));
    palette.setColor(QPalette::WindowText, toQt(skin.text));
    palette.setColor(QPalette::Base, toQt(skin.field));
    palette.setColor(QPalette::AlternateBase, toQt(skin.base));
    palette.setColor(QPalette::ToolTipBase, toQt(skin.field));
    palette.setColor(QPalette::ToolTipText, toQt(skin.text));
    palette.setColor(QPalette::PlaceholderText, toQt(skin.textWeak));
    palette.setColor(QPalette::Text, toQt(skin.text));
    palette.setColor(QPalette::Button, toQt(skin.raised));
    palette.setColor(QPalette::ButtonText, toQt(skin.text));
    palette.setColor(QPalette::BrightText, toQt(skin.warning));
    palette.setColor(QPalette::Light, toQt(skin.raised).lighter(125));
    palette.setColor(QPalette::Midlight, toQt(skin.raised));
    palette.setColor(QPalette::Mid, toQt(skin.separator));
    palette.setColor(QPalette::Dark, toQt(skin.border));
    palette.setColor(QPalette::Shadow, toQt(skin.border));
    palette.setColor(QPalette::Highlight, toQt(skin.accent));
    palette.setColor(QPalette::HighlightedText, toQt(skin.accentText));
    palette.setColor(QPalette::Link, toQt(skin.borderFocus));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                            QPalette::PlaceholderText, QPalette::HighlightedText}) {
        palette.setColor(QPalette::Disabled, role, toQt(skin.textDisabled));
    }
    palette.setColor(QPalette::Disabled, QPalette::Highlight, toQt(skin.raised));
    return palette;
}

}  // namespace tavrin::sheet
