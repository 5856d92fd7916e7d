#include "gui/sheet/ObjectForm.h"

#include "gui/sheet/ListItemData.h"
#include "gui/sheet/NameLabel.h"
#include "gui/sheet/PropertyTexts.h"
#include "gui/sheet/SheetButton.h"
#include "gui/sheet/editors/CurvesEditor.h"
#include "gui/sheet/editors/EditorFactory.h"

#include <QEvent>
#include <QGridLayout>
#include <algorithm>

namespace tavrin::sheet {

ObjectForm::ObjectForm(const GenericObject& object, const EditorContext& context)
    : object_(object) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(12, 2, 4, 8);
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(4);
    // Wide enough for nearly all names, in a sheet as narrow as a side panel.
    grid->setColumnMinimumWidth(0, 92);
    grid->setColumnStretch(0, 2);
    grid->setColumnStretch(1, 3);
    for (const PropertyDefinition& property : object_.getType().getProperties()) {
        if (property.getName() != ListItemData::kId &&
            property.getName() != ListItemData::kEnabled) {
            addRow(*grid, property, context);
        }
    }
    addCurves(*grid, context);
    showObject(object);
}

void ObjectForm::addRow(QGridLayout& grid, const PropertyDefinition& property,
                        const EditorContext& context) {
    std::unique_ptr<PropertyEditor> made = makeEditor(property, context);
    if (!made) {
        return;
    }
    PropertyEditor* editor = made.release();
    const QString name = getDisplayName(property);
    const QString help = makeTooltip(getDescription(property));
    editor->setParent(this);
    editor->setToolTip(help);
    for (QWidget* part : editor->findChildren<QWidget*>()) {
        if (part->focusPolicy() != Qt::NoFocus && part->accessibleName().isEmpty()) {
            part->setAccessibleName(name.isEmpty() ? getDisplayName(object_.getType()) : name);
            part->setAccessibleDescription(getDescription(property));
        }
    }
    editor->onEdited = [this, key = property.getName()](const Value& value) { tell(key, value); };
    const int row = grid.rowCount();
    NameLabel* label = nullptr;
    if (name.isEmpty()) {
        grid.addWidget(editor, row, 0, 1, 2);
    } else {
        label = new NameLabel(name, this);
        label->setToolTip(help);
        label->installEventFilter(this);
        grid.addWidget(label, row, 0);
        grid.addWidget(editor, row, 1);
    }
    rows_.push_back({&property, editor, label});
}

void ObjectForm::addCurves(QGridLayout& grid, const EditorContext& context) {
    std::vector<const PropertyDefinition*> properties;
    for (const PropertyDefinition& property : object_.getType().getProperties()) {
        if (object_.getValue(property.getName()).get<CurvePoints>() != nullptr) {
            properties.push_back(&property);
        }
    }
    if (properties.empty()) {
        return;
    }
    curves_ = new CurvesEditor(properties, context);
    curves_->setParent(this);
    curves_->onEdited = [this](const String& name, const Value& value) { tell(name, value); };
    grid.addWidget(curves_, grid.rowCount(), 0, 1, 2);
}

void ObjectForm::showObject(const GenericObject& object) {
    object_ = object;
    for (const Row& row : rows_) {
        row.editor->showValue(object.getValue(row.property->getName()));
    }
    if (curves_ != nullptr) {
        curves_->showObject(object);
    }
}

bool ObjectForm::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::MouseButtonDblClick) {
        const auto row = std::find_if(rows_.begin(), rows_.end(),
                                      [&](const Row& each) { return each.label == object; });
        if (row != rows_.end()) {
            tell(row->property->getName(), row->property->makeDefault());
            return true;
        }
    }
    return QWidget::eventFilter(object, event);
}

void ObjectForm::tell(const String& name, const Value& value) {
    if (onEdited) {
        onEdited(name, value);
    }
}

}  // namespace tavrin::sheet
