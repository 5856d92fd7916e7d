#pragma once

#include "foundation/String.h"
#include "gui/widgets/Tooltip.h"

#include <memory>

namespace tavrin::components {

/// Gives a control a tooltip.
template <class Base>
class TooltipMixin : public Base {
public:
    using Base::Base;

    void setTooltip(const String& text) {
        if (tooltip_) {
            tooltip_->setText(text);
        } else {
            tooltip_ = std::make_unique<widgets::Tooltip>(*this, text);
        }
    }

private:
    std::unique_ptr<widgets::Tooltip> tooltip_;
};

}  // namespace tavrin::components
