#pragma once

#include <QLineEdit>

namespace tavrin::sheet {

/// A field for a text in one line. Unlike in its base, Ctrl with Home and End moves the cursor, as
/// in the fields of the other windows.
class TextField : public QLineEdit {
public:
    using QLineEdit::QLineEdit;

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace tavrin::sheet
