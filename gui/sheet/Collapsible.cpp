#include "gui/sheet/Collapsible.h"

#include "gui/sheet/CollapsibleHeader.h"
#include "gui/sheet/SkinColors.h"

#include <QVBoxLayout>

namespace tavrin::sheet {

Collapsible::Collapsible(const QString& title, Level level, QWidget* parent)
    : QWidget(parent),
      header_(new CollapsibleHeader(title, level, this)),
      layout_(new QVBoxLayout(this)) {
    layout_->setContentsMargins(0, 0, 0, 0);
    layout_->setSpacing(level == Level::Section ? 4 : 2);
    layout_->addWidget(header_);
    header_->onExpand = [this](bool isExpanded) { setExpanded(isExpanded); };
    header_->showState(isExpanded_, false);
}

void Collapsible::setDimmed(bool isDimmed) {
    const widgets::GuiSkin& skin = widgets::GuiSkin::DEFAULT();
    header_->getName().setColor(toQt(isDimmed ? skin.textWeak : skin.text));
}

void Collapsible::setBody(QWidget* body) {
    body_ = body;
    if (body_ != nullptr) {
        layout_->addWidget(body_);
        body_->setVisible(isExpanded_);
    }
    header_->showState(isExpanded_, body_ != nullptr);
}

void Collapsible::addLeading(QWidget* control) {
    QHBoxLayout& row = header_->getRow();
    row.insertWidget(row.indexOf(&header_->getName()), control);
}

void Collapsible::addTrailing(QWidget* control) {
    header_->getRow().addWidget(control);
}

QWidget* Collapsible::getHeader() const {
    return header_;
}

void Collapsible::setExpanded(bool isExpanded) {
    if (isExpanded == isExpanded_ || body_ == nullptr) {
        return;
    }
    isExpanded_ = isExpanded;
    body_->setVisible(isExpanded);
    header_->showState(isExpanded, true);
    Q_EMIT collapsibleStateChanged(isExpanded);
}

}  // namespace tavrin::sheet
