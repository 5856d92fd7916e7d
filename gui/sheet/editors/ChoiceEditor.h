#pragma once

#include "foundation/data/UiAttributes.h"
#include "gui/sheet/editors/PropertyEditor.h"

#include <QComboBox>

namespace tavrin::sheet {

/// A box to choose one of several texts.
class ChoiceEditor final : public PropertyEditor {
public:
    explicit ChoiceEditor(const UiChoices& choices);
    void showValue(const Value& value) override;

private:
    QComboBox* box_;
};

}  // namespace tavrin::sheet
