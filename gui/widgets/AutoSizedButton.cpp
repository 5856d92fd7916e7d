#include "gui/widgets/AutoSizedButton.h"

#include "gui/widgets/Conversions.h"

#include <algorithm>

namespace tavrin::widgets {
namespace {

constexpr int kPadding = 10;
constexpr int kIconPadding = 5;
constexpr int kGap = 5;

}  // namespace

AutoSizedButton::AutoSizedButton(wxWindow* parent, wxWindowID id, const String& label, int height,
                                 int minimumWidth, Look look)
    : ClickableControl(parent, id), height_(height), minimumWidth_(minimumWidth), look_(look) {
    SetName("Button");
    SetLabel(toWxString(label));
    SetInitialSize();
}

void AutoSizedButton::setIcon(const wxBitmapBundle& enabled, const wxBitmapBundle& disabled) {
    enabledIcon_ = enabled;
    disabledIcon_ = disabled;
    InvalidateBestSize();
    SetInitialSize();
    Refresh();
}

void AutoSizedButton::setTooltip(const String& text) {
    tooltip_ = std::make_unique<Tooltip>(*this, text);
}

void AutoSizedButton::onClick() {
    // A copy, as the callback may end this object.
    if (const Function<void()> callback = onClick_) {
        callback();
    }
}

wxSize AutoSizedButton::getIconSize() const {
    return enabledIcon_.IsOk() ? enabledIcon_.GetPreferredLogicalSizeFor(this) : wxSize(0, 0);
}

wxSize AutoSizedButton::DoGetBestClientSize() const {
    const int icon = getIconSize().x;
    const wxString label = GetLabel();
    const int text = label.empty() ? 0 : GetTextExtent(label).x;
    const int gap = icon > 0 && text > 0 ? FromDIP(kGap) : 0;
    const int padding = FromDIP(text > 0 ? kPadding : kIconPadding);
    return {std::max(icon + gap + text + 2 * padding, FromDIP(minimumWidth_)), FromDIP(height_)};
}

void AutoSizedButton::paint(wxGraphicsContext& canvas) {
    const wxRect area = GetClientRect();
    const bool isPrimary = look_ == Look::Primary;
    drawButton(canvas, *this, area, skin(), getBoxState(isPressed()), isPrimary);
    const wxSize icon = getIconSize();
    canvas.SetFont(GetFont(), getTextColor());
    double width = 0.0;
    canvas.GetTextExtent(GetLabel(), &width, nullptr);
    const int gap = icon.x > 0 && width > 0.0 ? FromDIP(kGap) : 0;
    const int text = std::min(static_cast<int>(width + 0.999), area.width - 4 - icon.x - gap);
    const int left = area.x + (area.width - icon.x - gap - text) / 2;
    if (icon.x > 0) {
        const wxBitmapBundle& bundle = IsEnabled() ? enabledIcon_ : disabledIcon_;
        canvas.DrawBitmap(bundle.GetBitmapFor(this), left, area.y + (area.height - icon.y) / 2,
                          icon.x, icon.y);
    }
    const wxColour color = isPrimary && IsEnabled() ? skin().accentText : getTextColor();
    drawText(canvas, GetLabel(), {left + icon.x + gap, area.y, text, area.height}, GetFont(),
             color);
}

}  // namespace tavrin::widgets
