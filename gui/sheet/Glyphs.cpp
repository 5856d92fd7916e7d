#include "gui/sheet/Glyphs.h"

#include "gui/sheet/SkinColors.h"

#include <QIconEngine>
#include <QPainterPath>
#include <initializer_list>

namespace tavrin::sheet {
namespace {

constexpr double kSide = 14.0;

// In a square of that many units around 0.
using Line = std::initializer_list<QPointF>;

void drawLine(QPainter& painter, Line points) {
    painter.drawPolyline(std::data(points), static_cast<int>(points.size()));
}

void drawDots(QPainter& painter, const QColor& color, Line points, double radius) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    for (const QPointF& point : points) {
        painter.drawEllipse(point, radius, radius);
    }
}

void drawReset(QPainter& painter) {
    painter.drawArc(QRectF(-4.5, -4.5, 9, 9), 140 * 16, -280 * 16);
    drawLine(painter, {{-4.6, -6.0}, {-4.2, -2.4}, {-0.7, -3.0}});
}

void drawDropper(QPainter& painter) {
    drawLine(painter, {{1.0, -1.0}, {-4.0, 4.0}, {-5.5, 5.5}});
    drawLine(painter, {{-0.8, -3.2}, {3.2, 0.8}});
    drawLine(painter, {{1.6, -1.6}, {4.4, -4.4}});
}

void drawShape(QPainter& painter, Glyph glyph, const QColor& color) {
    switch (glyph) {
        case Glyph::Check:
            return drawLine(painter, {{-3.8, 0.2}, {-1.2, 2.9}, {3.8, -2.9}});
        case Glyph::Down:
            return drawLine(painter, {{-3.5, -1.75}, {0, 1.75}, {3.5, -1.75}});
        case Glyph::Right:
            return drawLine(painter, {{-1.75, -3.5}, {1.75, 0}, {-1.75, 3.5}});
        case Glyph::Handle:
            return drawDots(painter, color,
                            {{-1.75, -4}, {1.75, -4}, {-1.75, 0}, {1.75, 0}, {-1.75, 4}, {1.75, 4}},
                            0.9);
        case Glyph::More:
            return drawDots(painter, color, {{-4.5, 0}, {0, 0}, {4.5, 0}}, 1.25);
        case Glyph::Plus:
            drawLine(painter, {{-4, 0}, {4, 0}});
            return drawLine(painter, {{0, -4}, {0, 4}});
        case Glyph::Minus:
            return drawLine(painter, {{-4, 0}, {4, 0}});
        case Glyph::Reset:
            return drawReset(painter);
        case Glyph::Folder:
            return drawLine(
                painter,
                {{-5.5, 4}, {-5.5, -4}, {-1.5, -4}, {0, -2.5}, {5.5, -2.5}, {5.5, 4}, {-5.5, 4}});
        case Glyph::Dropper:
            return drawDropper(painter);
        case Glyph::Previous:
            return drawLine(painter, {{1.75, -3.5}, {-1.75, 0}, {1.75, 3.5}});
        case Glyph::Next:
            return drawLine(painter, {{-1.75, -3.5}, {1.75, 0}, {-1.75, 3.5}});
    }
}

class GlyphEngine final : public QIconEngine {
public:
    explicit GlyphEngine(Glyph glyph) : glyph_(glyph) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const widgets::GuiSkin& skin = widgets::GuiSkin::DEFAULT();
        // The place is in pixels of the icon, which are more than units at larger scales.
        painter->save();
        painter->translate(QRectF(rect).center());
        painter->scale(rect.width() / kSide, rect.height() / kSide);
        drawGlyph(*painter, glyph_, QRectF(-kSide / 2, -kSide / 2, kSide, kSide),
                  toQt(mode == QIcon::Disabled ? skin.textDisabled : skin.text));
        painter->restore();
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return pixmap;
    }
    QIconEngine* clone() const override { return new GlyphEngine(glyph_); }

private:
    Glyph glyph_;
};

}  // namespace

void drawGlyph(QPainter& painter, Glyph glyph, const QRectF& place, const QColor& color) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(place.center());
    const double scale = std::min({1.0, place.width() / kSide, place.height() / kSide});
    painter.scale(scale, scale);
    painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    drawShape(painter, glyph, color);
    painter.restore();
}

QIcon makeIcon(Glyph glyph) {
    return QIcon(new GlyphEngine(glyph));
}

}  // namespace tavrin::sheet
