#include "gui/sheet/PropertySheet.h"

#include "gui/sheet/Collapsible.h"
#include "gui/sheet/ListSection.h"
#include "gui/sheet/SkinColors.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QStyle>
#include <QVBoxLayout>
#include <utility>

namespace tavrin::sheet {

PropertySheet::PropertySheet(SharedPtr<EntityPathModel> model, const String& title,
                             SharedPtr<IPropertySheetHost> host)
    : model_(std::move(model)),
      host_(std::move(host)),
      collapsible_(new Collapsible(toQt(title), Collapsible::Level::Section, this)),
      switch_(new QCheckBox),
      list_(new ListSection(*model_, *host_, nullptr)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(collapsible_);
    layout->addStretch();
    setAccessibleName(toQt(title));
    switch_->setToolTip(tr("Use the operators of the list"));
    switch_->setAccessibleName(tr("Use the operators of the list"));
    collapsible_->addLeading(switch_);
    collapsible_->setBody(list_);
    connect(collapsible_, &Collapsible::collapsibleStateChanged, this,
            &PropertySheet::collapsibleStateChanged);
    list_->onCollapsed = [this](bool isExpanded) { Q_EMIT collapsibleStateChanged(isExpanded); };
    connect(switch_, &QCheckBox::clicked, this, [this](bool isOn) { model_->setOn(isOn); });
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    observers_ = model_->addObserver([this] { showModel(); });
    showModel();
}

PropertySheet::~PropertySheet() {
    observers_.clear();
    // Its parts use the host and the model.
    delete collapsible_;
}

void PropertySheet::keyPressEvent(QKeyEvent* event) {
    event->setAccepted(event->matches(QKeySequence::Undo) && list_->undo());
}

void PropertySheet::showModel() {
    switch_->setChecked(model_->isOn());
    switch_->setEnabled(model_->isSwitchEditable());
    collapsible_->setDimmed(!model_->isOn());
    list_->showList();
}

void forcePolishStyleRecursive(QWidget& widget) {
    widget.style()->unpolish(&widget);
    widget.style()->polish(&widget);
    for (QObject* child : widget.children()) {
        if (auto* part = qobject_cast<QWidget*>(child)) {
            forcePolishStyleRecursive(*part);
        }
    }
}

}  // namespace tavrin::sheet
