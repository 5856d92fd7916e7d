#include "gui/sheet/editors/ChoiceEditor.h"

#include "gui/sheet/SkinColors.h"

#include <QHBoxLayout>
#include <QWheelEvent>

namespace tavrin::sheet {
namespace {

/// Does not take the wheel from those who scroll past it.
class QuietComboBox final : public QComboBox {
public:
    using QComboBox::QComboBox;

protected:
    void wheelEvent(QWheelEvent* event) override {
        if (hasFocus()) {
            QComboBox::wheelEvent(event);
        } else {
            event->ignore();
        }
    }
};

}  // namespace

ChoiceEditor::ChoiceEditor(const UiChoices& choices) : box_(new QuietComboBox(this)) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(box_);
    for (const String& choice : choices) {
        box_->addItem(toQt(choice));
    }
    box_->setFocusPolicy(Qt::StrongFocus);
    box_->setMinimumContentsLength(6);
    box_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setFocusProxy(box_);
    connect(box_, &QComboBox::activated, this, [this](int choice) { tell(choice); });
}

void ChoiceEditor::showValue(const Value& value) {
    box_->setCurrentIndex(*value.get<int>());
}

}  // namespace tavrin::sheet
