#pragma once

#include "gui/sheet/editors/PropertyEditor.h"

class QCheckBox;

namespace tavrin::sheet {

/// A check box.
class SwitchEditor final : public PropertyEditor {
public:
    SwitchEditor();
    void showValue(const Value& value) override;

private:
    QCheckBox* box_;
};

}  // namespace tavrin::sheet
