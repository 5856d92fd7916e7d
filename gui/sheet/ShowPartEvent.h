#pragma once

#include <QEvent>
#include <QRect>

class QWidget;

namespace tavrin::sheet {

/// Asks what is around a sheet to scroll a part of it into view. Sent to the sheet's window, in
/// whose coordinates the part is.
class ShowPartEvent final : public QEvent {
public:
    static const Type kType;

    ShowPartEvent(const QRect& part, int most) : QEvent(kType), part_(part), most_(most) {}

    const QRect& getPart() const { return part_; }
    /// No further than so many pixels.
    int getMost() const { return most_; }

private:
    QRect part_;
    int most_;
};

/// Sends the event for a part of the widget.
void askToShow(const QWidget& widget, const QRect& part, int most);

}  // namespace tavrin::sheet
