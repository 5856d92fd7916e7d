#include "gui/sheet/Collapsible.h"
#include "gui/sheet/DragHandle.h"
#include "gui/sheet/ListCommands.h"
#include "gui/sheet/ListItemData.h"
#include "gui/sheet/ListSection.h"
#include "gui/sheet/ShowPartEvent.h"
#include "gui/sheet/UndoBar.h"

#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>

namespace tavrin::sheet {

ListItem* ListSection::makeItem(const GenericObject& object) {
    auto* item = new ListItem(object, host_, this);
    // An item that others have removed may still tell what was being done to it.
    item->onEdited = [this, item](const String& name, const Value& value) {
        if (const std::size_t index = indexOf(*item); index < items_.size()) {
            change([&](GenericList& list) { list.at(index).setValue(name, value); });
        }
    };
    item->onCommand = [this, item](ItemCommand command) { runCommand(*item, command); };
    item->getHandle().onDrag = [this, item](int y) {
        if (indexOf(*item) < items_.size()) {
            showDrop(y);
        }
    };
    item->getHandle().onEnd = [this, item](bool isTaken) { endDrop(*item, isTaken); };
    connect(&item->getCollapsible(), &Collapsible::collapsibleStateChanged, this,
            [this](bool isExpanded) {
                if (onCollapsed) {
                    onCollapsed(isExpanded);
                }
            });
    return item;
}

void ListSection::runCommand(ListItem& item, ItemCommand command) {
    const std::size_t index = indexOf(item);
    if (index == items_.size()) {
        return;
    }
    switch (command) {
        case ItemCommand::MoveUp:
            return index > 0 ? move(index, index - 1) : void();
        case ItemCommand::MoveDown:
            return index + 1 < items_.size() ? move(index, index + 1) : void();
        case ItemCommand::Duplicate:
            change([&](GenericList& list) { duplicateItem(list, index); });
            return items_.at(std::min(index + 1, items_.size() - 1))->takeFocus();
        case ItemCommand::Reset:
            return change([&](GenericList& list) { resetItem(list, index); });
        case ItemCommand::Remove:
            return remove(index);
    }
}

void ListSection::remove(std::size_t index) {
    const GenericObject item = model_.getList().at(index);
    const QString title = items_.at(index)->getTitle();
    change(
        [&](GenericList& list) { list.erase(list.begin() + static_cast<std::ptrdiff_t>(index)); });
    // Where the item was, so that it is seen.
    layout_->removeWidget(undoBar_);
    layout_->insertWidget(layout_->indexOf(hint_) + 1 + static_cast<int>(index), undoBar_);
    undoBar_->offer(tr("%1 removed").arg(title), [item, index](GenericList& list) {
        // An image that has been loaded meanwhile may have brought it back.
        const auto isSame = [&](const GenericObject& each) {
            return ListItemData::getId(each) != 0 &&
                   ListItemData::getId(each) == ListItemData::getId(item);
        };
        if (std::none_of(list.begin(), list.end(), isSame)) {
            insertItem(list, index, item);
        }
    });
    if (!items_.empty()) {
        items_[std::min(index, items_.size() - 1)]->takeFocus();
    } else {
        setFocus();
    }
}

void ListSection::move(std::size_t from, std::size_t to) {
    change([&](GenericList& list) { moveItem(list, from, to); });
    if (to < items_.size()) {
        items_[to]->takeFocus();
    }
}

std::size_t ListSection::indexOf(const ListItem& item) const {
    return static_cast<std::size_t>(std::find(items_.begin(), items_.end(), &item) -
                                    items_.begin());
}

bool ListSection::undo() {
    const bool isOffering = undoBar_->isOffering();
    undoBar_->undo();
    return isOffering;
}

void ListSection::showDrop(int globalY) {
    constexpr int kThickness = 2;
    const int y = mapFromGlobal(QPoint(0, globalY)).y();
    const auto after = std::find_if(items_.begin(), items_.end(), [&](const ListItem* item) {
        return y < item->geometry().center().y();
    });
    dropPlace_ = static_cast<std::size_t>(after - items_.begin());
    const int line = after == items_.end() ? items_.back()->geometry().bottom() + 1
                                           : (*after)->geometry().top() - kThickness;
    dropLine_->setGeometry(0, line, width(), kThickness);
    dropLine_->raise();
    dropLine_->show();
    // The list follows what is dragged to its edge, and beyond.
    constexpr int kMargin = 24;
    constexpr int kMost = 20;
    askToShow(*this, QRect(0, std::clamp(y, 0, height()) - kMargin, 1, 2 * kMargin), kMost);
}

void ListSection::endDrop(const ListItem& item, bool isTaken) {
    dropLine_->hide();
    const std::size_t from = indexOf(item);
    const std::size_t to = dropPlace_ > from ? dropPlace_ - 1 : dropPlace_;
    if (isTaken && from < items_.size() && to < items_.size() && from != to) {
        move(from, to);
    }
}

}  // namespace tavrin::sheet
