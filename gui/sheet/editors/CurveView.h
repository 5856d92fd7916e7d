#pragma once

#include "foundation/Function.h"
#include "foundation/Optional.h"
#include "gui/sheet/IPropertySheetHost.h"
#include "gui/sheet/editors/CurveShape.h"

#include <QColor>
#include <QWidget>

namespace tavrin::sheet {

/// A curve over stops from middle grey, with a histogram behind it. Points are dragged, added by a
/// double click, and removed by Delete or by dragging them out. With the keyboard, arrows move the
/// selected point (with Shift ten times as far) and Page Up and Page Down select another.
class CurveView final : public QWidget {
public:
    explicit CurveView(QWidget* parent = nullptr);

    /// Each change by the user.
    Function<void(const CurvePoints&)> onEdited;
    Function<void()> onSelected;

    void showCurve(const CurvePoints& points, const QColor& color);
    /// Thin, behind the curve.
    void showOthers(std::vector<std::pair<CurvePoints, QColor>> others);
    void showHistogram(const Optional<StopHistogram>& histogram);

    const CurvePoints& getPoints() const { return points_; }
    Optional<std::size_t> getSelected() const { return selected_; }
    void select(Optional<std::size_t> index);
    void moveSelected(colorkit::CurvePoint place);
    void removeSelected();

    /// Where a place of the curve is in the widget.
    QPointF toView(double x, double y) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    double getReach() const;
    colorkit::CurvePoint fromView(const QPointF& position) const;
    Optional<std::size_t> findPoint(const QPointF& position) const;
    void take(CurvePoints points);
    /// Nothing when there are as many as possible.
    void add(colorkit::CurvePoint point);
    /// Halfway to the next point, on the curve.
    void addAfterSelected();
    void dragTo(const QPointF& position);

    void paintGrid(QPainter& painter) const;
    void paintHistogram(QPainter& painter) const;
    void paintCurve(QPainter& painter, const CurvePoints& points, const QPen& pen) const;
    void paintPoints(QPainter& painter) const;

    CurvePoints points_;
    QColor color_;
    std::vector<std::pair<CurvePoints, QColor>> others_;
    Optional<StopHistogram> histogram_;
    Optional<std::size_t> selected_;
    Optional<std::size_t> hovered_;
    Optional<std::size_t> held_;
    /// As they were when the point was taken, without it: what remains when it is dragged out.
    CurvePoints withoutHeld_;
    bool isHeldOutside_ = false;
};

}  // namespace tavrin::sheet
