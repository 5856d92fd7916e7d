#include "gui/sheet/ListMenus.h"

#include "gui/sheet/SheetButton.h"
#include "gui/sheet/SkinColors.h"

#include <QLabel>
#include <QWidgetAction>

namespace tavrin::sheet {
namespace {

QMenu* makeMenu(QWidget* parent) {
    auto* menu = new QMenu(parent);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setToolTipsVisible(true);
    return menu;
}

void addHeading(QMenu& menu, const QString& text) {
    auto* label = new QLabel(text.toUpper());
    QFont font = label->font();
    font.setPixelSize(font.pixelSize() * 5 / 6);
    font.setBold(true);
    label->setFont(font);
    label->setContentsMargins(10, menu.isEmpty() ? 4 : 9, 10, 2);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, toQt(widgets::GuiSkin::DEFAULT().textWeak));
    label->setPalette(palette);
    auto* action = new QWidgetAction(&menu);
    action->setDefaultWidget(label);
    action->setEnabled(false);
    action->setText(text);
    menu.addAction(action);
}

void addAction(QMenu& menu, const String& label, const String& description,
               const UiListAction& action, const RunListAction& run) {
    const QString text = toQt(label);
    QString shown = text;
    QAction* entry = menu.addAction(shown.replace('&', "&&"));
    entry->setToolTip(makeTooltip(toQt(description)));
    QObject::connect(entry, &QAction::triggered, &menu, [text, action, run] { run(text, action); });
}

void sayWhenEmpty(QMenu& menu, const QString& text) {
    if (menu.isEmpty()) {
        menu.addAction(text)->setEnabled(false);
    }
}

}  // namespace

QMenu* makeAddMenu(const Attributes& attributes, const RunListAction& run, QWidget* parent) {
    QMenu* menu = makeMenu(parent);
    if (const auto* adder = attributes.get<UiListItemAdder>(UiAttributes::kListItemAdder)) {
        for (const auto& item : adder->createMenuContent()) {
            if (item.isHeading) {
                addHeading(*menu, toQt(item.label));
            } else {
                addAction(*menu, item.label, item.description, item.action, run);
            }
        }
    }
    sayWhenEmpty(*menu, QMenu::tr("Nothing to add"));
    return menu;
}

QMenu* makePresetsMenu(const Attributes& attributes, const RunListAction& run, QWidget* parent) {
    QMenu* menu = makeMenu(parent);
    if (const auto* presets = attributes.get<UiListPresets>(UiAttributes::kListPresets)) {
        for (const auto& [name, action] : presets->createMenuContent()) {
            addAction(*menu, name, {}, action, run);
        }
    }
    sayWhenEmpty(*menu, QMenu::tr("No presets"));
    return menu;
}

}  // namespace tavrin::sheet
