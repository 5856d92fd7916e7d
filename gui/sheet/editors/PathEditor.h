#pragma once

#include "foundation/Path.h"
#include "gui/sheet/editors/EditorContext.h"
#include "gui/sheet/editors/PropertyEditor.h"

class QLineEdit;
class QToolButton;

namespace tavrin::sheet {

/// A file: its name, which can be typed as a whole path, a button that lets the host choose one,
/// and two that go through the files of the same kind in its folder.
class PathEditor final : public PropertyEditor {
public:
    explicit PathEditor(const EditorContext& context);
    void showValue(const Value& value) override;
    QWidget* getWidePart() override { return this; }

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void take(const Path& path);
    void choose();
    /// To the file `offset` places further in the alphabet.
    void step(int offset);
    void showPath();

    IPropertySheetHost& host_;
    Path path_;
    QLineEdit* field_;
    QToolButton* previous_;
    QToolButton* next_;
};

}  // namespace tavrin::sheet
