#pragma once

#include "gui/sheet/editors/PropertyEditor.h"

class QLineEdit;

namespace tavrin::sheet {

/// A field for a text, taken when it is complete: with Enter or when the keyboard goes elsewhere.
class TextEditor final : public PropertyEditor {
public:
    TextEditor();
    void showValue(const Value& value) override;

private:
    QLineEdit* field_;
};

}  // namespace tavrin::sheet
