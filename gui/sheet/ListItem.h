#pragma once

#include "foundation/Function.h"
#include "foundation/data/GenericObject.h"

#include <QWidget>

class QCheckBox;
class QToolButton;

namespace tavrin::sheet {

class Collapsible;
class DragHandle;
class IPropertySheetHost;
class ObjectForm;

enum class ItemCommand { MoveUp, MoveDown, Duplicate, Reset, Remove };

/// An item of a list: a title with a grip, a switch, a name and a menu, and its properties below.
class ListItem final : public QWidget {
public:
    ListItem(const GenericObject& object, IPropertySheetHost& host, QWidget* parent);

    Function<void(const String&, const Value&)> onEdited;
    Function<void(ItemCommand)> onCommand;

    /// Whether this is the item that stands for the object, with these or other values.
    bool isFor(const GenericObject& object) const;
    /// An object that it is for.
    void showObject(const GenericObject& object);
    QString getTitle() const;

    Collapsible& getCollapsible() const { return *collapsible_; }
    DragHandle& getHandle() const { return *handle_; }
    QCheckBox& getSwitch() const { return *switch_; }
    QToolButton& getMenuButton() const { return *menuButton_; }
    void takeFocus();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void openMenu(QPoint corner);

    GenericObject object_;
    Collapsible* collapsible_;
    DragHandle* handle_;
    QCheckBox* switch_;
    QToolButton* menuButton_;
    ObjectForm* form_;
};

}  // namespace tavrin::sheet
