#pragma once

#include "foundation/data/PropertyDefinition.h"
#include "gui/sheet/editors/PropertyEditor.h"

#include <array>

namespace tavrin::sheet {

class NumberField;

/// Three fields for numbers for red, green and blue.
class VectorEditor final : public PropertyEditor {
public:
    explicit VectorEditor(const PropertyDefinition& property);
    void showValue(const Value& value) override;
    QWidget* getWidePart() override { return this; }

private:
    std::array<NumberField*, 3> fields_;
};

}  // namespace tavrin::sheet
