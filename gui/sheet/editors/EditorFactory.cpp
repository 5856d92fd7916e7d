#include "gui/sheet/editors/EditorFactory.h"

#include "foundation/Color.h"
#include "foundation/Path.h"
#include "foundation/data/UiAttributes.h"
#include "gui/sheet/editors/ChoiceEditor.h"
#include "gui/sheet/editors/ColorEditor.h"
#include "gui/sheet/editors/NumberEditor.h"
#include "gui/sheet/editors/PathEditor.h"
#include "gui/sheet/editors/SwitchEditor.h"
#include "gui/sheet/editors/TextEditor.h"
#include "gui/sheet/editors/VectorEditor.h"

namespace tavrin::sheet {
namespace {

/// Three numbers from 0 to 1 are a colour.
bool isColor(const PropertyDefinition& property) {
    const auto& limit = property.getLimit();
    return limit && limit->range && limit->range->minimum == 0.0 && limit->range->maximum == 1.0;
}

}  // namespace

std::unique_ptr<PropertyEditor> makeEditor(const PropertyDefinition& property,
                                           const EditorContext& context) {
    const Value value = property.makeDefault();
    if (value.get<bool>() != nullptr) {
        return std::make_unique<SwitchEditor>();
    }
    if (value.get<int>() != nullptr) {
        if (const auto* choices = property.getAttributes().get<UiChoices>(UiAttributes::kChoices)) {
            return std::make_unique<ChoiceEditor>(*choices);
        }
        return std::make_unique<NumberEditor<int>>(property);
    }
    if (value.get<float>() != nullptr) {
        return std::make_unique<NumberEditor<float>>(property);
    }
    if (value.get<CompressedRgb>() != nullptr) {
        if (isColor(property)) {
            return std::make_unique<ColorEditor>(property, context);
        }
        return std::make_unique<VectorEditor>(property);
    }
    if (value.get<String>() != nullptr) {
        return std::make_unique<TextEditor>();
    }
    if (value.get<Path>() != nullptr) {
        return std::make_unique<PathEditor>(context);
    }
    return nullptr;
}

}  // namespace tavrin::sheet
