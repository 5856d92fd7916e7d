#pragma once

#include "foundation/CallbackLifetime.h"
#include "foundation/Color.h"
#include "foundation/data/PropertyDefinition.h"
#include "gui/sheet/editors/EditorContext.h"
#include "gui/sheet/editors/PropertyEditor.h"

#include <QPointer>

class QToolButton;

namespace tavrin::sheet {

class ColorPopup;

/// A linear colour: a swatch that opens a ColorPopup, and a button that picks it from the image.
class ColorEditor final : public PropertyEditor {
public:
    ColorEditor(const PropertyDefinition& property, const EditorContext& context);
    void showValue(const Value& value) override;

private:
    void take(const CompressedRgb& color);
    void showColor();
    void openPopup();
    void pick(bool isOn);

    const PropertyDefinition& property_;
    EditorContext context_;
    CompressedRgb color_;
    QToolButton* swatch_;
    QToolButton* dropper_;
    QPointer<ColorPopup> popup_;
    CallbackLifetime picking_;
};

}  // namespace tavrin::sheet
