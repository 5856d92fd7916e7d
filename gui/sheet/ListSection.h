#pragma once

#include "foundation/Function.h"
#include "gui/sheet/EntityPathModel.h"
#include "gui/sheet/IPropertySheetHost.h"
#include "gui/sheet/ListItem.h"

#include <QWidget>
#include <vector>

class QAbstractButton;
class QLabel;
class QToolButton;
class QVBoxLayout;

namespace tavrin::sheet {

class UndoBar;

/// The list of a model: buttons to add, replace and reset, and its items, which can be moved,
/// copied and removed.
class ListSection final : public QWidget {
public:
    /// Both must outlive it.
    ListSection(EntityPathModel& model, IPropertySheetHost& host, QWidget* parent);

    /// When an item has been opened or closed.
    Function<void(bool)> onCollapsed;

    /// As the model has it now.
    void showList();
    /// What the bar offers; whether there was something.
    bool undo();

    const std::vector<ListItem*>& getItems() const { return items_; }
    QAbstractButton& getAddButton() const { return *add_; }
    QAbstractButton& getPresetsButton() const { return *presets_; }
    UndoBar& getUndoBar() const { return *undoBar_; }

protected:
    void changeEvent(QEvent* event) override;

private:
    void makeButtons();
    void showHint();
    void openMenu(QAbstractButton& button, bool isAdding);
    /// Runs what changes the model; what it throws is shown.
    void guard(const Function<void()>& action);
    void change(const UiListAction& action);
    void replace(const QString& what, const UiListAction& action);
    void resetList();

    ListItem* makeItem(const GenericObject& object);
    void runCommand(ListItem& item, ItemCommand command);
    void remove(std::size_t index);
    void move(std::size_t from, std::size_t to);
    void setItemOrder();
    std::size_t indexOf(const ListItem& item) const;

    void showDrop(int globalY);
    void endDrop(const ListItem& item, bool isTaken);

    EntityPathModel& model_;
    IPropertySheetHost& host_;
    QAbstractButton* add_ = nullptr;
    QAbstractButton* presets_ = nullptr;
    QToolButton* reset_ = nullptr;
    QVBoxLayout* layout_;
    QLabel* hint_;
    UndoBar* undoBar_;
    QWidget* dropLine_;
    std::size_t dropPlace_ = 0;     ///< before which item what is dragged would come
    bool isChanging_ = false;       ///< while the section itself changes the list
    bool isReplaced_ = false;       ///< what can be undone is all of the list
    std::vector<ListItem*> items_;  ///< in the order of the list
};

}  // namespace tavrin::sheet
