#include "gui/sheet/ObjectForm.h"

#include "gui/sheet/ListItemData.h"
#include "gui/sheet/NameLabel.h"
#include "gui/sheet/PropertyTexts.h"
#include "gui/sheet/SheetButton.h"
#include "gui/sheet/editors/CurvesEditor.h"
#include "gui/sheet/editors/EditorFactory.h"

#include <QEvent>
#include <QHBoxLayout>
#include <algorithm>

namespace tavrin::sheet {
namespace {

// Leaves a choice its room in a sheet as narrow as a side panel, and most names theirs.
constexpr int kNameWidth = 84;
constexpr int kRowGap = 4;

}  // namespace

ObjectForm::ObjectForm(const GenericObject& object, const EditorContext& context)
    : object_(object) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 2, 4, 6);
    layout->setSpacing(0);
    for (const PropertyDefinition& property : object_.getType().getProperties()) {
        if (property.getName() != ListItemData::kId &&
            property.getName() != ListItemData::kEnabled) {
            addRow(property, context);
        }
    }
    addCurves(context);
    showObject(object);
}

void ObjectForm::addRow(const PropertyDefinition& property, const EditorContext& context) {
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
    NameLabel* label = nullptr;
    if (!name.isEmpty()) {
        label = new NameLabel(name, this);
        label->setMinimumWidth(kNameWidth);
        label->setToolTip(help);
        label->installEventFilter(this);
    }
    layOut(*editor, label);
    rows_.push_back({&property, editor, label});
}

void ObjectForm::layOut(PropertyEditor& editor, QWidget* label) {
    QVBoxLayout& layout = startRow();
    QWidget* wide = editor.getWidePart();
    auto* line = new QHBoxLayout;
    line->setSpacing(6);
    layout.addLayout(line);
    if (label != nullptr) {
        line->addWidget(label, 2);
    }
    if (wide != &editor) {
        line->addWidget(&editor, 3);
    }
    if (wide != nullptr) {
        wide->setToolTip(editor.toolTip());
        layout.addWidget(wide);
    }
}

void ObjectForm::addCurves(const EditorContext& context) {
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
    startRow().addWidget(curves_);
}

QVBoxLayout& ObjectForm::startRow() {
    auto& layout = static_cast<QVBoxLayout&>(*this->layout());
    if (layout.count() > 0) {
        layout.addSpacing(kRowGap);
    }
    return layout;
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
