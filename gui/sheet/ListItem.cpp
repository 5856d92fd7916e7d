#include "gui/sheet/ListItem.h"

#include "gui/sheet/Collapsible.h"
#include "gui/sheet/DragHandle.h"
#include "gui/sheet/ListItemData.h"
#include "gui/sheet/ObjectForm.h"
#include "gui/sheet/PropertyTexts.h"
#include "gui/sheet/SheetButton.h"

#include <QCheckBox>
#include <QContextMenuEvent>
#include <QMenu>
#include <QVBoxLayout>

namespace tavrin::sheet {

ListItem::ListItem(const GenericObject& object, IPropertySheetHost& host, QWidget* parent)
    : QWidget(parent),
      object_(object),
      collapsible_(new Collapsible(getTitle(), Collapsible::Level::Item, this)),
      handle_(new DragHandle),
      switch_(new QCheckBox),
      menuButton_(makeIconButton(Glyph::More, tr("Commands for %1").arg(getTitle()), nullptr)),
      form_(new ObjectForm(object,
                           EditorContext{host, [this] { return ListItemData::getId(object_); }})) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(collapsible_);
    collapsible_->addLeading(handle_);
    collapsible_->addLeading(switch_);
    collapsible_->addTrailing(menuButton_);
    collapsible_->getHeader()->setToolTip(makeTooltip(getDescription(object.getType())));
    switch_->setToolTip(tr("Use %1").arg(getTitle()));
    switch_->setAccessibleName(tr("Use %1").arg(getTitle()));
    switch_->setVisible(ListItemData::find<bool>(object, ListItemData::kEnabled) != nullptr);
    connect(switch_, &QCheckBox::clicked, this,
            [this](bool isOn) { onEdited(ListItemData::kEnabled, Value(isOn)); });
    connect(menuButton_, &QToolButton::clicked, this,
            [this] { openMenu(menuButton_->mapToGlobal(QPoint(0, menuButton_->height()))); });
    form_->onEdited = [this](const String& name, const Value& value) { onEdited(name, value); };
    if (form_->isEmpty()) {
        delete form_;
        form_ = nullptr;
    }
    collapsible_->setBody(form_);
    collapsible_->setExpanded(ListItemData::isEnabled(object));
    showObject(object);
}

bool ListItem::isFor(const GenericObject& object) const {
    return &object.getType() == &object_.getType() &&
           ListItemData::getId(object) == ListItemData::getId(object_);
}

void ListItem::showObject(const GenericObject& object) {
    object_ = object;
    const bool isEnabled = ListItemData::isEnabled(object);
    switch_->setChecked(isEnabled);
    collapsible_->setDimmed(!isEnabled);
    if (form_ != nullptr) {
        form_->showObject(object);
    }
}

QString ListItem::getTitle() const {
    return getDisplayName(object_.getType());
}

void ListItem::takeFocus() {
    collapsible_->getHeader()->setFocus(Qt::OtherFocusReason);
}

void ListItem::keyPressEvent(QKeyEvent* event) {
    const bool isAlt = event->modifiers() == Qt::AltModifier;
    if (isAlt && event->key() == Qt::Key_Up) {
        onCommand(ItemCommand::MoveUp);
    } else if (isAlt && event->key() == Qt::Key_Down) {
        onCommand(ItemCommand::MoveDown);
    } else if (event->modifiers() == Qt::ControlModifier && event->key() == Qt::Key_D) {
        onCommand(ItemCommand::Duplicate);
    } else if (event->key() == Qt::Key_Delete && collapsible_->getHeader()->hasFocus()) {
        onCommand(ItemCommand::Remove);
    } else {
        event->ignore();
    }
}

void ListItem::contextMenuEvent(QContextMenuEvent* event) {
    openMenu(event->globalPos());
}

void ListItem::openMenu(QPoint corner) {
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto add = [&](const QString& text, const QKeySequence& keys, ItemCommand command) {
        QAction* action = menu->addAction(text, this, [this, command] { onCommand(command); });
        // Only shown: the keys are handled where they are pressed.
        action->setShortcut(keys);
        action->setShortcutContext(Qt::WidgetShortcut);
        action->setShortcutVisibleInContextMenu(true);
    };
    add(tr("Duplicate"), QKeySequence(Qt::CTRL | Qt::Key_D), ItemCommand::Duplicate);
    add(tr("Move up"), QKeySequence(Qt::ALT | Qt::Key_Up), ItemCommand::MoveUp);
    add(tr("Move down"), QKeySequence(Qt::ALT | Qt::Key_Down), ItemCommand::MoveDown);
    add(tr("Reset"), {}, ItemCommand::Reset);
    menu->addSeparator();
    add(tr("Remove"), QKeySequence(Qt::Key_Delete), ItemCommand::Remove);
    menu->popup(corner);
}

}  // namespace tavrin::sheet
