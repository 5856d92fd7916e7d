#pragma once

#include "foundation/data/UiAttributes.h"

#include <QTimer>
#include <QWidget>

namespace tavrin::sheet {

class NameLabel;

/// Says what has been done and offers to undo it, for some seconds.
class UndoBar final : public QWidget {
public:
    explicit UndoBar(QWidget* parent = nullptr);

    /// With what undoes it.
    Function<void(const UiListAction&)> onUndo;

    void offer(const QString& text, UiListAction undo);
    bool isOffering() const { return static_cast<bool>(action_); }
    /// As the button does; nothing when there is nothing to undo.
    void undo();
    void end();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    NameLabel* text_;
    UiListAction action_;
    QTimer timer_;
};

}  // namespace tavrin::sheet
