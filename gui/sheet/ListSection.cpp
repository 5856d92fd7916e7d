#include "gui/sheet/ListSection.h"

#include "foundation/Exception.h"
#include "gui/sheet/Collapsible.h"
#include "gui/sheet/DragHandle.h"
#include "gui/sheet/ListCommands.h"
#include "gui/sheet/ListMenus.h"
#include "gui/sheet/SheetButton.h"
#include "gui/sheet/SkinColors.h"
#include "gui/sheet/UndoBar.h"

#include <QAbstractButton>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <algorithm>
#include <utility>

namespace tavrin::sheet {
namespace {

/// After what stands before it, for the Tab key.
QWidget* chainTabs(QWidget* last, QWidget& part) {
    std::vector<QWidget*> stops;
    for (QWidget* child : part.findChildren<QWidget*>()) {
        // What pops up is another window.
        if (child->focusPolicy() & Qt::TabFocus && child->focusProxy() == nullptr &&
            child->window() == part.window()) {
            stops.push_back(child);
        }
    }
    for (QWidget* stop : stops) {
        if (last != nullptr) {
            QWidget::setTabOrder(last, stop);
        }
        last = stop;
    }
    return last;
}

}  // namespace

ListSection::ListSection(EntityPathModel& model, IPropertySheetHost& host, QWidget* parent)
    : QWidget(parent),
      model_(model),
      host_(host),
      layout_(new QVBoxLayout(this)),
      hint_(new QLabel(tr("No operators. Add one, or choose a preset."), this)),
      undoBar_(new UndoBar(this)),
      dropLine_(new QWidget(this)) {
    const widgets::GuiSkin& skin = widgets::GuiSkin::DEFAULT();
    layout_->setContentsMargins(0, 0, 0, 0);
    layout_->setSpacing(3);
    makeButtons();
    hint_->setAlignment(Qt::AlignCenter);
    hint_->setWordWrap(true);
    hint_->setMinimumHeight(2 * skin.controlHeight);
    hint_->setEnabled(false);
    layout_->addWidget(hint_);
    layout_->addWidget(undoBar_);
    undoBar_->onUndo = [this](const UiListAction& action) { change(action); };
    QPalette palette;
    palette.setColor(QPalette::Window, toQt(skin.borderFocus));
    dropLine_->setPalette(palette);
    dropLine_->setAutoFillBackground(true);
    dropLine_->setAttribute(Qt::WA_TransparentForMouseEvents);
    dropLine_->hide();
    showList();
}

void ListSection::makeButtons() {
    auto* row = new QHBoxLayout;
    row->setSpacing(4);
    add_ = makeTextButton(Glyph::Plus, tr("Add"), tr("Add an operator at the end"), this);
    presets_ = makeTextButton(Glyph::Down, tr("Presets"), tr("Replace the list by a preset"), this);
    reset_ = makeIconButton(Glyph::Reset, tr("Reset the list to its default"), this);
    row->addWidget(add_, 1);
    row->addWidget(presets_, 1);
    row->addWidget(reset_);
    layout_->addLayout(row);
    connect(add_, &QAbstractButton::clicked, this, [this] { openMenu(*add_, true); });
    connect(presets_, &QAbstractButton::clicked, this, [this] { openMenu(*presets_, false); });
    connect(reset_, &QToolButton::clicked, this, [this] { resetList(); });
}

void ListSection::openMenu(QAbstractButton& button, bool isAdding) {
    guard([&] {
        const Attributes& attributes = model_.getListAttributes();
        QMenu* menu = isAdding ? makeAddMenu(
                                     attributes,
                                     [this](const QString&, const UiListAction& action) {
                                         change(action);
                                         items_.empty() ? void() : items_.back()->takeFocus();
                                     },
                                     this)
                               : makePresetsMenu(
                                     attributes,
                                     [this](const QString& name, const UiListAction& action) {
                                         replace(tr("Preset %1").arg(name), action);
                                     },
                                     this);
        menu->setMinimumWidth(button.width());
        menu->popup(button.mapToGlobal(QPoint(0, button.height() + 1)));
    });
}

void ListSection::showHint() {
    hint_->setVisible(items_.empty() && isEnabled());
}

void ListSection::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::EnabledChange) {
        showHint();
    }
}

void ListSection::guard(const Function<void()>& action) {
    try {
        action();
    } catch (const Exception& exception) {
        host_.showError(String::fromUtf8(exception.what()));
    }
}

void ListSection::change(const UiListAction& action) {
    if (std::exchange(isReplaced_, false)) {
        undoBar_->end();  // it would also undo what is done now
    }
    guard([&] {
        isChanging_ = true;
        const CallbackLifetime end([this] { isChanging_ = false; });
        model_.changeList(action);
    });
    showList();
}

void ListSection::replace(const QString& what, const UiListAction& action) {
    const GenericList before = model_.getList();
    change(action);
    if (model_.getList() != before) {
        layout_->removeWidget(undoBar_);
        layout_->insertWidget(1, undoBar_);
        isReplaced_ = true;
        undoBar_->offer(what, [before](GenericList& list) { list = before; });
        if (hasFocus() && !items_.empty()) {
            items_.front()->takeFocus();
        }
    }
}

void ListSection::resetList() {
    const auto* makeDefault =
        model_.getListAttributes().get<UiListDefaultValue>(UiAttributes::kListDefaultValue);
    replace(tr("List reset"), [&](GenericList& list) {
        list = makeDefault == nullptr ? GenericList() : (*makeDefault)();
    });
}

void ListSection::showList() {
    const GenericList& list = model_.getList();
    std::vector<ListItem*> rest = std::exchange(items_, {});
    for (const GenericObject& object : list) {
        const auto found = std::find_if(rest.begin(), rest.end(),
                                        [&](const ListItem* item) { return item->isFor(object); });
        if (found == rest.end()) {
            items_.push_back(makeItem(object));
        } else {
            (*found)->showObject(object);
            items_.push_back(*found);
            rest.erase(found);
        }
    }
    for (ListItem* item : rest) {
        if (item->isAncestorOf(window()->focusWidget())) {
            setFocus();  // hiding it would send the keyboard out of the sheet
        }
        item->hide();
        layout_->removeWidget(item);
        item->deleteLater();  // it may be what has led here
        dropLine_->hide();
    }
    if (!isChanging_ && !rest.empty()) {
        undoBar_->end();  // what it would undo is of another list
    }
    setItemOrder();
    setEnabled(model_.isListEditable());
    showHint();
}

void ListSection::setItemOrder() {
    QWidget* last = reset_;
    bool isSame = true;
    int place = layout_->indexOf(hint_) + 1;
    for (ListItem* item : items_) {
        if (layout_->itemAt(place) != nullptr && layout_->itemAt(place)->widget() == undoBar_) {
            ++place;
        }
        if (layout_->indexOf(item) != place) {
            isSame = false;
            layout_->removeWidget(item);
            layout_->insertWidget(place, item);
            item->show();
        }
        ++place;
    }
    if (isSame) {
        return;
    }
    for (ListItem* item : items_) {
        last = chainTabs(last, *item);
    }
}

}  // namespace tavrin::sheet
