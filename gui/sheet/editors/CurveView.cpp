#include "gui/sheet/editors/CurveView.h"

#include "gui/sheet/SkinColors.h"
#include "gui/sheet/editors/Steps.h"

#include <QKeyEvent>
#include <algorithm>
#include <cmath>

namespace tavrin::sheet {
namespace {

using colorkit::CurvePoint;

constexpr double kReach = 8.0;     // stops that are shown to each side, or all that there are
constexpr double kMargin = 6.0;    // for points at the edge
constexpr double kHold = 8.0;      // how close the mouse must be to a point
constexpr double kDragOut = 24.0;  // how far outside a point is let go of

}  // namespace

CurveView::CurveView(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setFixedHeight(sizeHint().height());
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void CurveView::showCurve(const CurvePoints& points, const QColor& color) {
    color_ = color;
    if (points != points_) {
        points_ = points;
        // It was a point of the other curve.
        held_.reset();
        isHeldOutside_ = false;
        hovered_.reset();
        if (selected_ && *selected_ >= points_.size()) {
            select(std::nullopt);
        }
    }
    update();
}

void CurveView::showOthers(std::vector<std::pair<CurvePoints, QColor>> others) {
    others_ = std::move(others);
    update();
}

void CurveView::showHistogram(const Optional<StopHistogram>& histogram) {
    histogram_ = histogram;
    update();
}

void CurveView::select(Optional<std::size_t> index) {
    selected_ = index;
    update();
    if (onSelected) {
        onSelected();
    }
}

void CurveView::moveSelected(CurvePoint place) {
    if (selected_) {
        CurvePoints points = points_;
        movePoint(points, *selected_, place);
        take(std::move(points));
    }
}

void CurveView::removeSelected() {
    if (!selected_) {
        return;
    }
    CurvePoints points = points_;
    points.erase(points.begin() + static_cast<std::ptrdiff_t>(*selected_));
    const std::size_t next = std::min(*selected_, points.size() - 1);
    held_.reset();
    take(points);
    select(points.empty() ? std::nullopt : Optional<std::size_t>(next));
}

QSize CurveView::sizeHint() const {
    return {200, 170};
}

QSize CurveView::minimumSizeHint() const {
    return {120, sizeHint().height()};
}

double CurveView::getReach() const {
    double reach = kReach;
    for (const CurvePoint& point : points_) {
        reach = std::max({reach, static_cast<double>(std::abs(point.x)),
                          static_cast<double>(std::abs(point.y))});
    }
    // The view stays as it is while a point is dragged.
    return reach > kReach ? colorkit::kLargestCurveStop : kReach;
}

QPointF CurveView::toView(double x, double y) const {
    const double reach = getReach();
    const QRectF place = QRectF(rect()).adjusted(kMargin, kMargin, -kMargin, -kMargin);
    return {place.left() + (x + reach) / (2.0 * reach) * place.width(),
            place.bottom() - (y + reach) / (2.0 * reach) * place.height()};
}

CurvePoint CurveView::fromView(const QPointF& position) const {
    const double reach = getReach();
    const QRectF place = QRectF(rect()).adjusted(kMargin, kMargin, -kMargin, -kMargin);
    const auto toStops = [reach](double share) {
        const double stops = std::clamp(share * 2.0 * reach - reach, -reach, reach);
        return static_cast<float>(std::round(stops * 100.0) / 100.0);
    };
    return {toStops((position.x() - place.left()) / place.width()),
            toStops((place.bottom() - position.y()) / place.height())};
}

Optional<std::size_t> CurveView::findPoint(const QPointF& position) const {
    Optional<std::size_t> nearest;
    double smallest = kHold;
    for (std::size_t i = 0; i < points_.size(); ++i) {
        const QPointF offset = toView(points_[i].x, points_[i].y) - position;
        const double distance = std::hypot(offset.x(), offset.y());
        if (distance <= smallest) {
            smallest = distance;
            nearest = i;
        }
    }
    return nearest;
}

void CurveView::take(CurvePoints points) {
    if (points == points_) {
        return;
    }
    points_ = std::move(points);
    update();
    if (onEdited) {
        onEdited(points_);
    }
    if (onSelected) {
        onSelected();
    }
}

void CurveView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return event->ignore();
    }
    held_ = findPoint(event->position());
    isHeldOutside_ = false;
    if (held_) {
        withoutHeld_ = points_;
        withoutHeld_.erase(withoutHeld_.begin() + static_cast<std::ptrdiff_t>(*held_));
    }
    select(held_);
}

void CurveView::mouseMoveEvent(QMouseEvent* event) {
    if (held_) {
        return dragTo(event->position());
    }
    const Optional<std::size_t> hovered = findPoint(event->position());
    if (hovered != hovered_) {
        hovered_ = hovered;
        setCursor(hovered_ ? Qt::SizeAllCursor : Qt::ArrowCursor);
        update();
    }
}

void CurveView::dragTo(const QPointF& position) {
    const QRectF inside = QRectF(rect()).adjusted(-kDragOut, -kDragOut, kDragOut, kDragOut);
    isHeldOutside_ = !inside.contains(position);
    if (isHeldOutside_) {
        // As if it were gone already, until it comes back or is let go.
        take(withoutHeld_);
        selected_.reset();
        return;
    }
    CurvePoints points = withoutHeld_;
    points.insert(points.begin() + static_cast<std::ptrdiff_t>(*held_), CurvePoint());
    movePoint(points, *held_, fromView(position));
    selected_ = held_;
    take(std::move(points));
}

void CurveView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return event->ignore();
    }
    held_.reset();
    if (isHeldOutside_) {
        isHeldOutside_ = false;
        select(std::nullopt);
    }
}

void CurveView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && !findPoint(event->position())) {
        add(fromView(event->position()));
    }
}

void CurveView::add(CurvePoint point) {
    const std::size_t added = points_.empty() ? 3 : 1;
    if (points_.size() + added > colorkit::kMostCurvePoints) {
        return;
    }
    CurvePoints points = points_;
    selected_ = addPoint(points, point);
    take(std::move(points));
}

void CurveView::addAfterSelected() {
    double x = 0.0;
    if (selected_) {
        const bool isLast = *selected_ + 1 == points_.size();
        const double next = isLast ? getReach() : points_[*selected_ + 1].x;
        x = (points_[*selected_].x + next) / 2.0;
    }
    add({static_cast<float>(x), static_cast<float>(CurveShape(points_).getHeight(x))});
}

void CurveView::leaveEvent(QEvent*) {
    hovered_.reset();
    update();
}

void CurveView::keyPressEvent(QKeyEvent* event) {
    const auto step = static_cast<float>(0.1 * getStepFactor(event->modifiers()));
    const auto move = [&](float x, float y) {
        if (selected_) {
            moveSelected({points_[*selected_].x + x, points_[*selected_].y + y});
        }
    };
    const auto selectNext = [&](std::size_t offset) {
        if (!points_.empty()) {
            select(selected_ ? (*selected_ + offset) % points_.size() : 0);
        }
    };
    switch (event->key()) {
        case Qt::Key_Left:
            return move(-step, 0.0f);
        case Qt::Key_Right:
            return move(step, 0.0f);
        case Qt::Key_Up:
            return move(0.0f, step);
        case Qt::Key_Down:
            return move(0.0f, -step);
        case Qt::Key_PageUp:
            return selectNext(points_.size() - 1);
        case Qt::Key_PageDown:
            return selectNext(1);
        case Qt::Key_Insert:
        case Qt::Key_Plus:
            return addAfterSelected();
        case Qt::Key_Delete:
        case Qt::Key_Backspace:
            return removeSelected();
        default:
            event->ignore();
    }
}

void CurveView::focusInEvent(QFocusEvent*) {
    update();
}

void CurveView::focusOutEvent(QFocusEvent*) {
    update();
}

}  // namespace tavrin::sheet
