#pragma once

#include "foundation/Function.h"
#include "foundation/data/Value.h"

#include <QWidget>
#include <utility>

namespace tavrin::sheet {

/// Shows one value and lets the user change it.
class PropertyEditor : public QWidget {
public:
    using QWidget::QWidget;

    /// Each change by the user, while it happens. The value has the property's type.
    Function<void(const Value&)> onEdited;

    /// Does not tell `onEdited`. The value must have the property's type.
    virtual void showValue(const Value& value) = 0;

    /// What needs a line of its own below the name, as wide as the form: a child, the whole editor,
    /// or null when all of it fits beside the name. The form takes the child over; the editor may
    /// use it as long as it lives.
    virtual QWidget* getWidePart() { return nullptr; }

protected:
    template <class T>
    void tell(T value) {
        if (onEdited) {
            onEdited(Value(std::move(value)));
        }
    }
};

}  // namespace tavrin::sheet
