#include "gui/sheet/editors/CurvesEditor.h"

#include "foundation/data/UiAttributes.h"
#include "gui/sheet/IPropertySheetHost.h"
#include "gui/sheet/PropertyTexts.h"
#include "gui/sheet/SheetButton.h"
#include "gui/sheet/SkinColors.h"
#include "gui/sheet/editors/ChannelColors.h"
#include "gui/sheet/editors/CurveView.h"
#include "gui/sheet/editors/NumberField.h"

#include <QHBoxLayout>
#include <QLabel>

namespace tavrin::sheet {
namespace {

constexpr int kLeastTabWidth = 24;

NumberScale makeStopScale() {
    NumberScale scale;
    scale.minimum = -colorkit::kLargestCurveStop;
    scale.maximum = colorkit::kLargestCurveStop;
    scale.decimals = 2;
    return scale;
}

/// A curve that is called as a channel has its colour.
QColor getColor(const QString& name) {
    for (std::size_t i = 0; i < kChannelColors.size(); ++i) {
        if (name == kChannelNames[i]) {
            return kChannelColors[i];
        }
    }
    return toQt(widgets::GuiSkin::DEFAULT().text);
}

}  // namespace

CurvesEditor::CurvesEditor(std::vector<const PropertyDefinition*> properties,
                           const EditorContext& context)
    : context_(context), view_(new CurveView(this)) {
    for (const PropertyDefinition* property : properties) {
        curves_.push_back({property, nullptr, getColor(getDisplayName(*property)), {}});
    }
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    makeTabs();
    layout->addWidget(view_);
    layout->addWidget(makeNumbers());
    view_->setAccessibleName(tr("Curve"));
    view_->setToolTip(makeTooltip(
        tr("Double-click or Insert adds a point. Delete, or dragging it out, removes it.")));
    view_->onEdited = [this](const CurvePoints& points) { take(points); };
    view_->onSelected = [this] { showNumbers(); };
    histogramObserver_ = context_.host.addHistogramObserver([this] { showHistogram(); });
    choose(0);
}

void CurvesEditor::makeTabs() {
    if (curves_.size() < 2) {
        return;
    }
    auto* row = new QHBoxLayout;
    row->setSpacing(2);
    for (std::size_t i = 0; i < curves_.size(); ++i) {
        Curve& curve = curves_[i];
        curve.button = new QToolButton(this);
        curve.button->setText(getDisplayName(*curve.property));
        curve.button->setToolTip(makeTooltip(getDescription(*curve.property)));
        curve.button->setCheckable(true);
        curve.button->setAutoExclusive(true);
        curve.button->setFixedHeight(widgets::GuiSkin::DEFAULT().controlHeight);
        curve.button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        curve.button->setMinimumWidth(kLeastTabWidth);
        QPalette palette = curve.button->palette();
        palette.setColor(QPalette::ButtonText, curve.color);
        palette.setColor(QPalette::Disabled, QPalette::ButtonText, curve.color.darker(200));
        curve.button->setPalette(palette);
        row->addWidget(curve.button, 1);
        connect(curve.button, &QToolButton::clicked, this, [this, i] { choose(i); });
    }
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
}

QWidget* CurvesEditor::makeNumbers() {
    auto* numbers = new QWidget(this);
    auto* row = new QHBoxLayout(numbers);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    const auto addField = [&](const QString& label, const QString& name) {
        auto* field = new NumberField(makeStopScale(), numbers);
        field->setAccessibleName(name);
        row->addWidget(new QLabel(label, numbers));
        row->addWidget(field, 1);
        field->onEdited = [this](double) {
            view_->moveSelected(
                {static_cast<float>(x_->getNumber()), static_cast<float>(y_->getNumber())});
        };
        return field;
    };
    x_ = addField(tr("In"), tr("Stops in"));
    y_ = addField(tr("Out"), tr("Stops out"));
    remove_ = makeIconButton(Glyph::Minus, tr("Remove the point"), numbers);
    reset_ = makeIconButton(Glyph::Reset, tr("Make the curve straight"), numbers);
    row->addWidget(remove_);
    row->addWidget(reset_);
    connect(remove_, &QToolButton::clicked, this, [this] { view_->removeSelected(); });
    connect(reset_, &QToolButton::clicked, this, [this] {
        take({});
        view_->select(std::nullopt);
    });
    return numbers;
}

void CurvesEditor::showObject(const GenericObject& object) {
    for (Curve& curve : curves_) {
        curve.points = object.get<CurvePoints>(curve.property->getName());
    }
    showCurves();
}

void CurvesEditor::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    showHistogram();
}

void CurvesEditor::choose(std::size_t index) {
    current_ = index;
    if (curves_[current_].button != nullptr) {
        curves_[current_].button->setChecked(true);
    }
    view_->select(std::nullopt);
    showCurves();
}

void CurvesEditor::take(const CurvePoints& points) {
    curves_[current_].points = points;
    showCurves();
    if (onEdited) {
        onEdited(curves_[current_].property->getName(), Value(points));
    }
}

void CurvesEditor::showCurves() {
    std::vector<std::pair<CurvePoints, QColor>> others;
    for (const Curve& curve : curves_) {
        if (&curve != &curves_[current_] && !curve.points.empty()) {
            others.emplace_back(curve.points, curve.color);
        }
    }
    view_->showOthers(std::move(others));
    view_->showCurve(curves_[current_].points, curves_[current_].color);
    showNumbers();
}

void CurvesEditor::showNumbers() {
    const Optional<std::size_t> selected = view_->getSelected();
    const bool isSelected = selected && *selected < view_->getPoints().size();
    for (QWidget* part : std::initializer_list<QWidget*>{x_, y_, remove_}) {
        part->setEnabled(isSelected);
    }
    reset_->setEnabled(!curves_[current_].points.empty());
    if (isSelected) {
        x_->showNumber(view_->getPoints()[*selected].x);
        y_->showNumber(view_->getPoints()[*selected].y);
    } else {
        x_->clear();
        y_->clear();
    }
}

void CurvesEditor::showHistogram() {
    if (isVisible()) {
        view_->showHistogram(context_.host.getHistogram(context_.getItemId()));
    }
}

}  // namespace tavrin::sheet
