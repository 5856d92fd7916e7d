#include "gui/sheet/editors/ColorEditor.h"

#include "gui/sheet/IPropertySheetHost.h"
#include "gui/sheet/SheetButton.h"
#include "gui/sheet/SkinColors.h"
#include "gui/sheet/editors/ColorEncoding.h"
#include "gui/sheet/editors/ColorPopup.h"

#include <QHBoxLayout>
#include <QPainter>

namespace tavrin::sheet {
namespace {

class Swatch final : public QToolButton {
public:
    using QToolButton::QToolButton;

    void showColor(const QColor& color) {
        color_ = color;
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        const widgets::GuiSkin& skin = widgets::GuiSkin::DEFAULT();
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(toQt(hasFocus() ? skin.borderFocus : skin.border));
        painter.setBrush(isEnabled() ? color_ : toQt(skin.base));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), skin.cornerRadius,
                                skin.cornerRadius);
    }

private:
    QColor color_;
};

/// Light brighter than 1 keeps its hue.
CompressedRgb fitIntoRange(const CompressedRgb& color) {
    const float brightest = std::max({color.r, color.g, color.b, 1.0f});
    const auto fit = [brightest](float component) { return std::max(component, 0.0f) / brightest; };
    return {fit(color.r), fit(color.g), fit(color.b)};
}

}  // namespace

ColorEditor::ColorEditor(const PropertyDefinition& property, const EditorContext& context)
    : property_(property),
      context_(context),
      swatch_(new Swatch(this)),
      dropper_(makeIconButton(Glyph::Dropper, tr("Pick the colour from the image"), this)) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    const int height = widgets::GuiSkin::DEFAULT().controlHeight;
    swatch_->setFixedHeight(height);
    swatch_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    swatch_->setFocusPolicy(Qt::TabFocus);
    swatch_->setToolTip(tr("Choose the colour"));
    swatch_->setAccessibleName(tr("Choose the colour"));
    dropper_->setCheckable(true);
    layout->addWidget(swatch_, 1);
    layout->addWidget(dropper_);
    setFocusProxy(swatch_);
    connect(swatch_, &QToolButton::clicked, this, [this] { openPopup(); });
    connect(dropper_, &QToolButton::clicked, this, [this](bool isOn) { pick(isOn); });
}

void ColorEditor::showValue(const Value& value) {
    color_ = *value.get<CompressedRgb>();
    showColor();
    if (popup_) {
        popup_->showColor(color_);
    }
}

void ColorEditor::take(const CompressedRgb& color) {
    color_ = color;
    showColor();
    tell(color);
}

void ColorEditor::showColor() {
    static_cast<Swatch*>(swatch_)->showColor(toDisplay(color_));
    dropper_->setEnabled(context_.host.canPickColor());
}

void ColorEditor::openPopup() {
    popup_ = new ColorPopup(property_, this);
    popup_->showColor(color_);
    popup_->onEdited = [this](const CompressedRgb& color) { take(color); };
    popup_->openBelow(*swatch_);
}

void ColorEditor::pick(bool isOn) {
    picking_ = CallbackLifetime();
    if (isOn) {
        picking_ = context_.host.pickColor(context_.getItemId(),
                                           [this](const Optional<CompressedRgb>& picked) {
                                               dropper_->setChecked(false);
                                               if (picked) {
                                                   take(fitIntoRange(*picked));
                                               }
                                           });
    }
}

}  // namespace tavrin::sheet
