#include "gui/sheet/editors/ColorPopup.h"

#include "gui/sheet/SkinColors.h"
#include "gui/sheet/editors/ColorEncoding.h"
#include "gui/sheet/editors/TextField.h"

#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>

namespace tavrin::sheet {
namespace {

constexpr QRect kField(8, 8, 180, 140);
constexpr QRect kHue(196, 8, 16, 140);
constexpr QRect kSwatch(8, 156, 40, 22);
constexpr QRect kText(140, 156, 72, 22);
constexpr QRect kNumbers(8, 184, 204, 22);
constexpr QSize kSize(220, 214);
// So that two colours that look the same are not one changed by the other.
constexpr float kSame = 1e-4f;

bool isSame(const CompressedRgb& a, const CompressedRgb& b) {
    return std::abs(a.r - b.r) < kSame && std::abs(a.g - b.g) < kSame &&
           std::abs(a.b - b.b) < kSame;
}

void drawRing(QPainter& painter, const QPointF& center) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::black, 3.0));
    painter.drawEllipse(center, 5.0, 5.0);
    painter.setPen(QPen(Qt::white, 1.5));
    painter.drawEllipse(center, 5.0, 5.0);
}

double getShare(double position, double start, double length) {
    return std::clamp((position - start) / length, 0.0, 1.0);
}

}  // namespace

ColorPopup::ColorPopup(const PropertyDefinition& property, QWidget* parent)
    : QFrame(parent, Qt::Popup), text_(new TextField(this)), numbers_(new VectorEditor(property)) {
    setAttribute(Qt::WA_DeleteOnClose);
    setFixedSize(kSize);
    auto* label = new QLabel("sRGB", this);
    label->setGeometry(100, kText.y(), 36, kText.height());
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    text_->setGeometry(kText);
    text_->setMaxLength(7);
    text_->setAccessibleName(tr("Hexadecimal colour"));
    connect(text_, &QLineEdit::editingFinished, this, [this] { takeText(); });
    numbers_->setParent(this);
    numbers_->setGeometry(kNumbers);
    numbers_->onEdited = [this](const Value& value) {
        const CompressedRgb linear = *value.get<CompressedRgb>();
        showColor(linear);
        take(linear);
    };
}

void ColorPopup::showColor(const CompressedRgb& linear) {
    if (held_ != Part::None) {
        return;
    }
    if (!isSame(fromDisplay(getColor()), linear)) {
        const QColor color = toDisplay(linear);
        hue_ = color.hsvHueF() >= 0.0f ? color.hsvHueF() : hue_;
        saturation_ = color.hsvSaturationF();
        brightness_ = color.valueF();
        update();
    }
    showTexts(linear);
}

void ColorPopup::openBelow(const QWidget& button) {
    QPoint corner = button.mapToGlobal(QPoint(0, button.height() + 2));
    const QRect screen = button.screen()->availableGeometry();
    if (corner.y() + height() > screen.bottom()) {
        corner = button.mapToGlobal(QPoint(0, -height() - 2));
    }
    corner.setX(std::clamp(corner.x(), screen.left(), screen.right() - width()));
    move(corner);
    show();
}

void ColorPopup::paintEvent(QPaintEvent*) {
    const widgets::GuiSkin& skin = widgets::GuiSkin::DEFAULT();
    QPainter painter(this);
    painter.fillRect(rect(), toQt(skin.border));
    painter.fillRect(rect().adjusted(1, 1, -1, -1), toQt(skin.base));
    QLinearGradient white(kField.topLeft(), kField.topRight());
    white.setColorAt(0.0, Qt::white);
    white.setColorAt(1.0, QColor::fromHsvF(hue_, 1.0f, 1.0f));
    painter.fillRect(kField, white);
    QLinearGradient black(kField.topLeft(), kField.bottomLeft());
    black.setColorAt(0.0, QColor(0, 0, 0, 0));
    black.setColorAt(1.0, Qt::black);
    painter.fillRect(kField, black);
    QLinearGradient hues(kHue.topLeft(), kHue.bottomLeft());
    for (int i = 0; i <= 6; ++i) {
        hues.setColorAt(i / 6.0, QColor::fromHsvF(static_cast<float>(i % 6) / 6.0f, 1.0f, 1.0f));
    }
    painter.fillRect(kHue, hues);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(toQt(skin.border));
    painter.setBrush(getColor());
    painter.drawRoundedRect(QRectF(kSwatch).adjusted(0.5, 0.5, -0.5, -0.5), skin.cornerRadius,
                            skin.cornerRadius);
    painter.setClipRect(kField);
    drawRing(painter, QPointF(kField.x() + saturation_ * kField.width(),
                              kField.y() + (1.0f - brightness_) * kField.height()));
    painter.setClipping(false);
    const double y = kHue.y() + hue_ * kHue.height();
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::black, 3.0));
    painter.drawRect(QRectF(kHue.x() - 1, y - 2, kHue.width() + 2, 4));
    painter.setPen(QPen(Qt::white, 1.5));
    painter.drawRect(QRectF(kHue.x() - 1, y - 2, kHue.width() + 2, 4));
}

void ColorPopup::mousePressEvent(QMouseEvent* event) {
    const QPoint position = event->position().toPoint();
    held_ = kField.contains(position) ? Part::Field
            : kHue.contains(position) ? Part::Hue
                                      : Part::None;
    if (held_ == Part::None) {
        return QFrame::mousePressEvent(event);
    }
    drag(event->position());
}

void ColorPopup::mouseMoveEvent(QMouseEvent* event) {
    drag(event->position());
}

void ColorPopup::mouseReleaseEvent(QMouseEvent*) {
    held_ = Part::None;
}

void ColorPopup::drag(const QPointF& position) {
    if (held_ == Part::Field) {
        saturation_ = static_cast<float>(getShare(position.x(), kField.x(), kField.width()));
        brightness_ =
            1.0f - static_cast<float>(getShare(position.y(), kField.y(), kField.height()));
        take(fromDisplay(getColor()));
    } else if (held_ == Part::Hue) {
        hue_ = static_cast<float>(getShare(position.y(), kHue.y(), kHue.height()));
        take(fromDisplay(getColor()));
    }
}

void ColorPopup::take(const CompressedRgb& linear) {
    showTexts(linear);
    update();
    if (onEdited) {
        onEdited(linear);
    }
}

void ColorPopup::takeText() {
    const QColor typed(text_->text().startsWith('#') ? text_->text() : "#" + text_->text());
    const bool isNew = text_->isModified() && typed.isValid();
    text_->setModified(false);
    const CompressedRgb linear = fromDisplay(isNew ? typed : getColor());
    showColor(linear);
    if (isNew) {
        take(linear);
    }
}

QColor ColorPopup::getColor() const {
    return QColor::fromHsvF(hue_, saturation_, brightness_);
}

void ColorPopup::showTexts(const CompressedRgb& linear) {
    numbers_->showValue(Value(linear));
    if (!text_->isModified()) {
        text_->setText(toDisplay(linear).name().toUpper());
    }
}

}  // namespace tavrin::sheet
