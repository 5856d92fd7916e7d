#include "gui/sheet/SkinColors.h"
#include "gui/sheet/editors/ChannelColors.h"
#include "gui/sheet/editors/CurveView.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace tavrin::sheet {

void CurveView::paintEvent(QPaintEvent*) {
    const widgets::GuiSkin& skin = widgets::GuiSkin::DEFAULT();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainterPath inside;
    inside.addRoundedRect(frame, skin.cornerRadius, skin.cornerRadius);
    painter.fillPath(inside, toQt(skin.canvas));
    painter.setClipPath(inside);
    paintHistogram(painter);
    paintGrid(painter);
    for (const auto& [points, color] : others_) {
        QColor faint = color;
        faint.setAlphaF(0.45f);
        paintCurve(painter, points, QPen(faint, 1.0));
    }
    const QColor color = isEnabled() ? color_ : toQt(skin.textDisabled);
    paintCurve(painter, points_, QPen(color, 1.75));
    painter.setClipping(false);
    paintPoints(painter);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(toQt(hasFocus() ? skin.borderFocus : skin.border));
    painter.drawPath(inside);
}

void CurveView::paintGrid(QPainter& painter) const {
    const widgets::GuiSkin& skin = widgets::GuiSkin::DEFAULT();
    const double reach = getReach();
    QColor line = toQt(skin.highlight);
    for (double stop = -reach; stop <= reach; stop += reach / 4.0) {
        line.setAlphaF(stop == 0.0 ? 0.40f : 0.13f);
        painter.setPen(QPen(line, 1.0));
        const double x = std::floor(toView(stop, 0.0).x()) + 0.5;
        const double y = std::floor(toView(0.0, stop).y()) + 0.5;
        painter.drawLine(QPointF(x, 0.0), QPointF(x, height()));
        painter.drawLine(QPointF(0.0, y), QPointF(width(), y));
    }
    line.setAlphaF(0.25f);
    painter.setPen(QPen(line, 1.0, Qt::DashLine));
    painter.drawLine(toView(-reach, -reach), toView(reach, reach));
}

void CurveView::paintHistogram(QPainter& painter) const {
    if (!histogram_) {
        return;
    }
    float largest = 0.0f;
    for (const auto& counts : histogram_->counts) {
        for (const float count : counts) {
            largest = std::max(largest, count);
        }
    }
    if (!(largest > 0.0f)) {
        return;
    }
    painter.save();
    painter.setCompositionMode(QPainter::CompositionMode_Plus);
    painter.setPen(Qt::NoPen);
    for (std::size_t channel = 0; channel < histogram_->counts.size(); ++channel) {
        const auto& counts = histogram_->counts[channel];
        QPainterPath area;
        area.moveTo(toView(histogram_->firstStop, 0.0).x(), height());
        const double width = (histogram_->lastStop - histogram_->firstStop) /
                             static_cast<double>(std::max<std::size_t>(counts.size(), 1));
        for (std::size_t i = 0; i < counts.size(); ++i) {
            const double x = histogram_->firstStop + (static_cast<double>(i) + 0.5) * width;
            // The root lifts what few pixels have.
            const double share = std::sqrt(counts[i] / largest);
            area.lineTo(toView(x, 0.0).x(), height() * (1.0 - 0.85 * share));
        }
        area.lineTo(toView(histogram_->lastStop, 0.0).x(), height());
        QColor fill = kChannelColors[channel];
        fill.setAlphaF(isEnabled() ? 0.24f : 0.10f);
        painter.setBrush(fill);
        painter.drawPath(area);
    }
    painter.restore();
}

void CurveView::paintCurve(QPainter& painter, const CurvePoints& points, const QPen& pen) const {
    const CurveShape shape(points);
    const double reach = getReach();
    const double left = toView(-reach, 0.0).x();
    const double right = toView(reach, 0.0).x();
    QPainterPath path;
    for (double x = 0.0; x <= width(); x += 1.0) {
        const double stop = (x - left) / (right - left) * 2.0 * reach - reach;
        const QPointF place(x, toView(0.0, shape.getHeight(stop)).y());
        x == 0.0 ? path.moveTo(place) : path.lineTo(place);
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(pen);
    painter.drawPath(path);
}

void CurveView::paintPoints(QPainter& painter) const {
    const widgets::GuiSkin& skin = widgets::GuiSkin::DEFAULT();
    for (std::size_t i = 0; i < points_.size(); ++i) {
        const bool isSelected = selected_ == i;
        const QColor color = isEnabled() ? color_ : toQt(skin.textDisabled);
        painter.setPen(QPen(isSelected ? toQt(skin.accentText) : toQt(skin.canvas), 1.5));
        painter.setBrush(isSelected ? toQt(skin.accent) : color);
        const double radius = hovered_ == i || isSelected ? 5.0 : 4.0;
        painter.drawEllipse(toView(points_[i].x, points_[i].y), radius, radius);
    }
}

}  // namespace tavrin::sheet
