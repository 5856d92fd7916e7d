#include "gui/widgets/Tooltip.h"

#include "gui/widgets/Conversions.h"
#include "gui/widgets/FloatingWindow.h"

#include <wx/dcclient.h>
#include <wx/utils.h>

namespace tavrin::widgets {
namespace {

constexpr int kDelay = 600;  // milliseconds
constexpr int kWidest = 300;
constexpr int kMargin = 8;

}  // namespace

class TooltipWindow final : public FloatingWindow {
public:
    TooltipWindow(wxWindow* parent, const String& text) : FloatingWindow(parent) {
        const int margin = FromDIP(kMargin);
        text_ = wrapText(*this, toWxString(text), FromDIP(kWidest));
        wxClientDC dc(this);
        dc.SetFont(GetFont());
        // The sides get more, as letters leave space above and below them.
        SetSize(dc.GetMultiLineTextExtent(text_) + wxSize(2 * margin, margin + margin / 2));
        placeBeside(wxGetMousePosition());
    }

private:
    void paint(wxGraphicsContext& canvas) override {
        const int margin = FromDIP(kMargin);
        drawBox(canvas, GetClientRect(), 0, skin().raised, skin().highlight);
        canvas.SetFont(GetFont(), skin().text);
        canvas.DrawText(text_, margin, margin * 3 / 4);
    }

    wxString text_;
};

Tooltip::Tooltip(wxWindow& window, const String& text) : window_(&window), text_(text) {
    delay_ = [this] { show(); };
    window.Bind(wxEVT_MOTION, &Tooltip::onMotion, this);
    window.Bind(wxEVT_LEAVE_WINDOW, &Tooltip::onLeave, this);
    for (const auto& type :
         {wxEVT_LEFT_DOWN, wxEVT_MIDDLE_DOWN, wxEVT_RIGHT_DOWN, wxEVT_MOUSEWHEEL}) {
        window.Bind(type, &Tooltip::onUse, this);
    }
    window.Bind(wxEVT_KEY_DOWN, &Tooltip::onKey, this);
}

Tooltip::~Tooltip() {
    hide();
    if (wxWindow* const window = window_.get()) {
        window->Unbind(wxEVT_MOTION, &Tooltip::onMotion, this);
        window->Unbind(wxEVT_LEAVE_WINDOW, &Tooltip::onLeave, this);
        for (const auto& type :
             {wxEVT_LEFT_DOWN, wxEVT_MIDDLE_DOWN, wxEVT_RIGHT_DOWN, wxEVT_MOUSEWHEEL}) {
            window->Unbind(type, &Tooltip::onUse, this);
        }
        window->Unbind(wxEVT_KEY_DOWN, &Tooltip::onKey, this);
    }
}

bool Tooltip::isShown() const {
    return popup_ != nullptr;
}

void Tooltip::setText(const String& text) {
    text_ = text;
    hide();
}

void Tooltip::onMotion(wxMouseEvent& event) {
    event.Skip();
    if (!dismissed_ && !isShown() && !event.Dragging()) {
        delay_.scheduleDelayed(kDelay);
    }
}

void Tooltip::onLeave(wxMouseEvent& event) {
    event.Skip();
    dismissed_ = false;
    hide();
}

void Tooltip::onUse(wxMouseEvent& event) {
    event.Skip();
    dismissed_ = true;
    hide();
}

void Tooltip::onKey(wxKeyEvent& event) {
    event.Skip();
    dismissed_ = true;
    hide();
}

void Tooltip::show() {
    wxWindow* const window = window_.get();
    if (window == nullptr || text_.isEmpty() || !window->IsShownOnScreen() ||
        !window->GetScreenRect().Contains(wxGetMousePosition())) {
        return;
    }
    popup_ = new TooltipWindow(window, text_);
    popup_->Show();
}

void Tooltip::hide() {
    delay_.cancel();
    if (popup_) {
        popup_->Destroy();
        popup_ = nullptr;
    }
}

}  // namespace tavrin::widgets
