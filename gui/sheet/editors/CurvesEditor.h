#pragma once

#include "foundation/CallbackLifetime.h"
#include "foundation/data/GenericObject.h"
#include "gui/sheet/editors/CurveShape.h"
#include "gui/sheet/editors/EditorContext.h"

#include <QColor>
#include <QWidget>
#include <vector>

class QToolButton;

namespace tavrin::sheet {

class CurveView;
class NumberField;

/// One view for all curves of an object, of which one at a time is edited, with the numbers of the
/// selected point below.
class CurvesEditor final : public QWidget {
public:
    /// Properties of curves, at least one; they must outlive the editor.
    CurvesEditor(std::vector<const PropertyDefinition*> properties, const EditorContext& context);

    /// By the name of the property; each change by the user.
    Function<void(const String&, const Value&)> onEdited;

    /// Of a type with these properties.
    void showObject(const GenericObject& object);

protected:
    void showEvent(QShowEvent* event) override;

private:
    struct Curve {
        const PropertyDefinition* property;
        QToolButton* button;
        QColor color;
        CurvePoints points;
    };

    void makeTabs();
    QWidget* makeNumbers();
    void choose(std::size_t index);
    void take(const CurvePoints& points);
    void showCurves();
    void showNumbers();
    void showHistogram();

    EditorContext context_;
    std::vector<Curve> curves_;
    std::size_t current_ = 0;
    CurveView* view_;
    NumberField* x_ = nullptr;
    NumberField* y_ = nullptr;
    QToolButton* remove_ = nullptr;
    QToolButton* reset_ = nullptr;
    CallbackLifetime histogramObserver_;
};

}  // namespace tavrin::sheet
