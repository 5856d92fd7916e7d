#pragma once

#include "foundation/Function.h"
#include "gui/sheet/Collapsible.h"
#include "gui/sheet/NameLabel.h"

#include <QHBoxLayout>

namespace tavrin::sheet {

/// The title of a Collapsible.
class CollapsibleHeader final : public QWidget {
public:
    CollapsibleHeader(const QString& title, Collapsible::Level level, QWidget* parent);

    /// With whether the body is to be shown.
    Function<void(bool)> onExpand;

    NameLabel& getName() const { return *name_; }
    QHBoxLayout& getRow() const { return *row_; }
    void showState(bool isExpanded, bool hasBody);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    Collapsible::Level level_;
    QHBoxLayout* row_;
    QWidget* chevron_;
    NameLabel* name_;
    bool isExpanded_ = true;
    bool hasBody_ = false;
    bool isPressed_ = false;
};

}  // namespace tavrin::sheet
