#include "gui/sheet/editors/SwitchEditor.h"

#include <QCheckBox>
#include <QHBoxLayout>

namespace tavrin::sheet {

SwitchEditor::SwitchEditor() : box_(new QCheckBox(this)) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(box_);
    layout->addStretch();
    setFocusProxy(box_);
    connect(box_, &QCheckBox::clicked, this, [this](bool isOn) { tell(isOn); });
}

void SwitchEditor::showValue(const Value& value) {
    box_->setChecked(*value.get<bool>());
}

}  // namespace tavrin::sheet
