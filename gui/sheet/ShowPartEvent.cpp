#include "gui/sheet/ShowPartEvent.h"

#include <QCoreApplication>
#include <QWidget>

namespace tavrin::sheet {

const QEvent::Type ShowPartEvent::kType = static_cast<QEvent::Type>(QEvent::registerEventType());

void askToShow(const QWidget& widget, const QRect& part, int most) {
    QWidget* const window = widget.window();
    ShowPartEvent event(part.translated(widget.mapTo(window, QPoint(0, 0))), most);
    QCoreApplication::sendEvent(window, &event);
}

}  // namespace tavrin::sheet
