#include "gui/sheet/editors/TextField.h"

#include <QKeyEvent>

namespace tavrin::sheet {

void TextField::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::MoveToStartOfDocument)) {
        home(false);
    } else if (event->matches(QKeySequence::MoveToEndOfDocument)) {
        end(false);
    } else if (event->matches(QKeySequence::SelectStartOfDocument)) {
        home(true);
    } else if (event->matches(QKeySequence::SelectEndOfDocument)) {
        end(true);
    } else {
        QLineEdit::keyPressEvent(event);
    }
}

}  // namespace tavrin::sheet
