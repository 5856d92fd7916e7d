#include "gui/sheet/editors/VectorEditor.h"

#include "foundation/Color.h"
#include "gui/sheet/editors/ChannelColors.h"
#include "gui/sheet/editors/NumberField.h"

#include <QHBoxLayout>

namespace tavrin::sheet {

VectorEditor::VectorEditor(const PropertyDefinition& property) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        fields_[i] = new NumberField(makeNumberScale(property, static_cast<int>(i)), this);
        fields_[i]->setMark(kChannelColors[i]);
        fields_[i]->setAccessibleName(kChannelNames[i]);
        layout->addWidget(fields_[i], 1);
        fields_[i]->onEdited = [this](double) {
            tell(CompressedRgb{static_cast<float>(fields_[0]->getNumber()),
                               static_cast<float>(fields_[1]->getNumber()),
                               static_cast<float>(fields_[2]->getNumber())});
        };
    }
    setFocusProxy(fields_[0]);
}

void VectorEditor::showValue(const Value& value) {
    const auto& color = *value.get<CompressedRgb>();
    fields_[0]->showNumber(color.r);
    fields_[1]->showNumber(color.g);
    fields_[2]->showNumber(color.b);
}

}  // namespace tavrin::sheet
