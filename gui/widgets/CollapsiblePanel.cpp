#include "gui/widgets/CollapsiblePanel.h"

#include "gui/widgets/Conversions.h"
#include "gui/widgets/CustomControl.h"
#include "gui/widgets/LayOutAround.h"
#include "gui/widgets/ScopedWindowFreezer.h"

#include <wx/brush.h>
#include <wx/pen.h>
#include <wx/sizer.h>

#include <algorithm>

namespace tavrin::widgets {
namespace {

constexpr int kArrowWidth = 20;
constexpr int kLeastHeight = 20;
constexpr int kBodyGap = 6;

}  // namespace

/// The header shows what it does: an arrow that points to the body, or to the side.
class CollapsiblePanel::Header final : public ClickableControl {
public:
    Header(CollapsiblePanel* panel, const String& title, wxWindow* control, wxSize size)
        : ClickableControl(panel, wxID_ANY), panel_(*panel), size_(size) {
        SetName("CollapsibleHeader");
        SetLabel(toWxString(title));
        auto* const sizer = new wxBoxSizer(wxHORIZONTAL);
        sizer->AddStretchSpacer();
        if (control != nullptr) {
            control->Reparent(this);
            sizer->Add(control, wxSizerFlags().CenterVertical().Border(wxRIGHT, FromDIP(4)));
            control_ = control;
        }
        SetSizer(sizer);
        SetInitialSize();
        // What the control is drawn on.
        SetBackgroundColour(getFill());
    }

    void applySkin(const GuiSkin& skin) override {
        ClickableControl::applySkin(skin);
        SetBackgroundColour(getFill());
    }

private:
    wxColour getFill() const { return mix(skin().base, skin().raised, 0.6); }

    void onClick() override { panel_.toggle(); }

    wxSize DoGetBestClientSize() const override {
        const int control = control_ == nullptr ? 0 : control_->GetBestSize().x + FromDIP(8);
        const wxSize needed(FromDIP(kArrowWidth) + GetTextExtent(GetLabel()).x + control,
                            FromDIP(kLeastHeight));
        return {std::max(needed.x, FromDIP(size_).x), std::max(needed.y, FromDIP(size_).y)};
    }

    void paint(wxGraphicsContext& canvas) override {
        const wxRect area = GetClientRect();
        const BoxState state = getBoxState(isPressed());
        drawBox(canvas, area, FromDIP(2), getFill(),
                state.focused ? skin().borderFocus : wxColour());
        const wxColour color =
            state.hovered || state.focused ? skin().text : mix(skin().textWeak, skin().text, 0.5);
        const int arrow = FromDIP(kArrowWidth);
        drawArrow(canvas, {area.x + arrow / 2.0, area.y + area.height / 2.0}, FromDIP(8),
                  panel_.isCollapsed() ? Direction::Right : Direction::Down, color,
                  FromDIP(3) / 2.0);
        const int right = control_ == nullptr ? area.width : control_->GetPosition().x;
        drawText(canvas, GetLabel(), {arrow, area.y, right - arrow, area.height}, GetFont().Bold(),
                 IsEnabled() ? color : skin().textDisabled);
    }

    CollapsiblePanel& panel_;
    wxSize size_;
    wxWindow* control_ = nullptr;
};

CollapsiblePanel::CollapsiblePanel(wxWindow* parent, const GuiSkin& skin, const String& title,
                                   wxWindow* body, wxWindow* headerControl, long style,
                                   wxSize headerSize)
    : wxPanel(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
              style | wxTAB_TRAVERSAL | wxBORDER_NONE),
      body_(body) {
    body_->Reparent(this);
    header_ = new Header(this, title, headerControl, headerSize);
    header_->MoveBeforeInTabOrder(body_);
    auto* const sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(header_, wxSizerFlags().Expand());
    sizer->Add(body_, wxSizerFlags(1).Expand().Border(wxTOP, FromDIP(kBodyGap)));
    SetSizer(sizer);
    applySkin(skin);
}

void CollapsiblePanel::applySkin(const GuiSkin& skin) {
    SetBackgroundColour(skin.base);
    SetForegroundColour(skin.text);
    header_->applySkin(skin);
}

void CollapsiblePanel::setCollapsed(bool collapsed) {
    if (collapsed != isCollapsed()) {
        const ScopedWindowFreezer freezer(wxGetTopLevelParent(this));
        body_->Show(!collapsed);
        layOutAround(*this);
        Refresh();
    }
}

void CollapsiblePanel::toggle() {
    setCollapsed(!isCollapsed());
    // A copy, as the callback may end this object.
    if (const Function<void(bool)> callback = onCollapse_) {
        callback(isCollapsed());
    }
}

}  // namespace tavrin::widgets
