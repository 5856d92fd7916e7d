#include "gui/sheet/editors/TextEditor.h"

#include "gui/sheet/SkinColors.h"
#include "gui/sheet/editors/TextField.h"

#include <QHBoxLayout>

namespace tavrin::sheet {

TextEditor::TextEditor() : field_(new TextField(this)) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(field_);
    setFocusProxy(field_);
    connect(field_, &QLineEdit::editingFinished, this, [this] {
        if (field_->isModified()) {
            field_->setModified(false);
            tell(fromQt(field_->text()));
        }
    });
}

void TextEditor::showValue(const Value& value) {
    const QString text = toQt(*value.get<String>());
    if (!field_->isModified() && text != field_->text()) {
        field_->setText(text);
        field_->setCursorPosition(0);
    }
}

}  // namespace tavrin::sheet
