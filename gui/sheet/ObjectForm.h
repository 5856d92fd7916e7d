#pragma once

#include "foundation/Function.h"
#include "foundation/data/GenericObject.h"
#include "gui/sheet/editors/EditorContext.h"

#include <QWidget>
#include <vector>

class QVBoxLayout;

namespace tavrin::sheet {

class CurvesEditor;
class PropertyEditor;

/// The properties of an object, one below the other: names at the left, editors at the right, and
/// what is wide below them. A double click on a name brings back the default.
class ObjectForm final : public QWidget {
public:
    /// For objects of the type of this one.
    ObjectForm(const GenericObject& object, const EditorContext& context);

    /// By the name of the property; each change by the user.
    Function<void(const String&, const Value&)> onEdited;

    void showObject(const GenericObject& object);
    bool isEmpty() const { return rows_.empty() && curves_ == nullptr; }

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    struct Row {
        const PropertyDefinition* property;
        PropertyEditor* editor;
        QWidget* label;
    };

    void addRow(const PropertyDefinition& property, const EditorContext& context);
    void layOut(PropertyEditor& editor, QWidget* label);
    void addCurves(const EditorContext& context);
    QVBoxLayout& startRow();
    void tell(const String& name, const Value& value);

    GenericObject object_;  ///< what is shown; also keeps the type
    std::vector<Row> rows_;
    CurvesEditor* curves_ = nullptr;
};

}  // namespace tavrin::sheet
