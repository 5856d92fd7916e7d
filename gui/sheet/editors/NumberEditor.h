#pragma once

#include "gui/sheet/editors/NumberField.h"
#include "gui/sheet/editors/PropertyEditor.h"
#include "gui/sheet/editors/ValueSlider.h"

#include <QHBoxLayout>

namespace tavrin::sheet {

/// A field for a number of type T, float or int, with a slider below when its range suits one.
template <class T>
class NumberEditor final : public PropertyEditor {
public:
    explicit NumberEditor(const PropertyDefinition& property)
        : scale_(makeNumberScale(property)),
          field_(new NumberField(scale_, this)),
          slider_(scale_.hasSlider ? new ValueSlider(scale_, this) : nullptr) {
        auto* layout = new QHBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(field_);
        if (slider_ != nullptr) {
            slider_->onEdited = [this](double number) { take(number); };
            setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        }
        field_->onEdited = [this](double number) { take(number); };
        setFocusProxy(field_);
    }

    void showValue(const Value& value) override { showNumber(*value.get<T>()); }
    QWidget* getWidePart() override { return slider_; }

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
    NumberField* field_;
    ValueSlider* slider_;  ///< null without one
};

}  // namespace tavrin::sheet
