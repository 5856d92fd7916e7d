#pragma once

#include "gui/sheet/editors/NumberField.h"
#include "gui/sheet/editors/PropertyEditor.h"
#include "gui/sheet/editors/ValueSlider.h"

#include <QHBoxLayout>

namespace tavrin::sheet {

/// A field for a number of type T, float or int, with a slider when its range suits one.
template <class T>
class NumberEditor final : public PropertyEditor {
public:
    explicit NumberEditor(const PropertyDefinition& property)
        : scale_(makeNumberScale(property)),
          slider_(scale_.hasSlider ? new ValueSlider(scale_, this) : nullptr),
          field_(new NumberField(scale_, this)) {
        auto* layout = new QHBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(6);
        if (slider_ != nullptr) {
            layout->addWidget(slider_, 1);
            slider_->onEdited = [this](double number) { take(number); };
            field_->setFixedWidth(field_->sizeHint().width());
        }
        layout->addWidget(field_, scale_.hasSlider ? 0 : 1);
        field_->onEdited = [this](double number) { take(number); };
        setFocusProxy(field_);
    }

    void showValue(const Value& value) override { showNumber(*value.get<T>()); }

private:
    void showNumber(double number) {
        field_->showNumber(number);
        if (slider_ != nullptr) {
            slider_->showNumber(number);
        }
    }

    void take(double number) {
        showNumber(number);
        tell(static_cast<T>(number));
    }

    NumberScale scale_;
    // In the order of the Tab key.
    ValueSlider* slider_;  ///< null without one
    NumberField* field_;
};

}  // namespace tavrin::sheet
