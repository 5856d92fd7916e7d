#include "gui/widgets/MessageDialog.h"

#include "gui/widgets/AutoSizedButton.h"
#include "gui/widgets/Conversions.h"
#include "gui/widgets/CustomControl.h"
#include "gui/widgets/Modality.h"

#include <wx/brush.h>
#include <wx/clipbrd.h>
#include <wx/dataobj.h>
#include <wx/pen.h>
#include <wx/scrolwin.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <algorithm>
#include <utility>

namespace tavrin::widgets {
namespace {

constexpr int kIconSize = 32;
constexpr int kMargin = 16;
constexpr int kWidestText = 420;
constexpr int kTallestText = 320;
constexpr int kButtonHeight = 24;
constexpr int kButtonWidth = 75;

class IconView final : public CustomControl {
public:
    IconView(wxWindow* parent, MessageIcon icon) : CustomControl(parent, wxID_ANY), icon_(icon) {
        SetInitialSize();
    }
    bool AcceptsFocus() const override { return false; }

private:
    wxSize DoGetBestClientSize() const override { return FromDIP(wxSize(kIconSize, kIconSize)); }

    void paint(wxGraphicsContext& canvas) override {
        const double size = FromDIP(kIconSize);
        const bool isWarning = icon_ == MessageIcon::Warning;
        const wxColour color = isWarning                     ? skin().warning
                               : icon_ == MessageIcon::Error ? skin().error
                                                             : skin().accent;
        canvas.SetBrush(wxBrush(color));
        canvas.SetPen(*wxTRANSPARENT_PEN);
        if (isWarning) {
            wxGraphicsPenInfo outline(color);
            canvas.SetPen(canvas.CreatePen(outline.Width(size * 0.12).Join(wxJOIN_ROUND)));
            const wxPoint2DDouble corners[] = {{size * 0.5, size * 0.12},
                                               {size * 0.92, size * 0.88},
                                               {size * 0.08, size * 0.88},
                                               {size * 0.5, size * 0.12}};
            canvas.DrawLines(4, corners);
        } else {
            canvas.DrawEllipse(0.5, 0.5, size - 1, size - 1);
        }
        paintSign(canvas, size);
    }

    void paintSign(wxGraphicsContext& canvas, double size) const {
        const wxColour color = icon_ == MessageIcon::Warning ? skin().border : skin().accentText;
        if (icon_ == MessageIcon::Question) {
            drawText(canvas, "?", GetClientRect(), GetFont().Bold().Scaled(2.0f), color,
                     Align::Center);
            return;
        }
        wxGraphicsPenInfo line(color);
        canvas.SetPen(canvas.CreatePen(line.Width(size * 0.11).Cap(wxCAP_ROUND)));
        if (icon_ == MessageIcon::Error) {
            canvas.StrokeLine(size * 0.35, size * 0.35, size * 0.65, size * 0.65);
            canvas.StrokeLine(size * 0.65, size * 0.35, size * 0.35, size * 0.65);
            return;
        }
        // The dot of an "i" is above its stem, that of a "!" below.
        const bool isWarning = icon_ == MessageIcon::Warning;
        const double dot = isWarning ? 0.80 : 0.27;
        canvas.StrokeLine(size * 0.5, size * (isWarning ? 0.38 : 0.46), size * 0.5,
                          size * (isWarning ? 0.60 : 0.74));
        canvas.StrokeLine(size * 0.5, size * dot, size * 0.5, size * dot + 0.1);
    }

    MessageIcon icon_;
};

long getStyle(const Message& message) {
    return (message.caption.isEmpty() ? wxBORDER_SIMPLE : wxCAPTION) |
           (message.closes ? wxCLOSE_BOX : 0) | (message.staysOnTop ? wxSTAY_ON_TOP : 0);
}

}  // namespace

MessageDialog::MessageDialog(wxWindow* parent, Message message)
    : wxDialog(parent, wxID_ANY, toWxString(message.caption), wxDefaultPosition, wxDefaultSize,
               getStyle(message)),
      message_(std::move(message)) {
    build();
    Bind(wxEVT_CHAR_HOOK, &MessageDialog::onKey, this);
    Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent& event) {
        if (message_.closes || !event.CanVeto()) {
            close();
        } else {
            event.Veto();
            message_.onCloseWanted ? message_.onCloseWanted() : void();
        }
    });
    if (message_.closesOnOutsideClick) {
        outsideClick_ = callOnClickOutside(*this, [this] { close(); });
    }
}

void MessageDialog::build() {
    const GuiSkin& skin = GuiSkin::DEFAULT();
    const int margin = FromDIP(kMargin);
    auto* const row = new wxBoxSizer(wxHORIZONTAL);
    if (message_.icon != MessageIcon::None) {
        row->Add(new IconView(this, message_.icon), wxSizerFlags().Border(wxRIGHT, margin));
    }
    row->Add(makeText(), wxSizerFlags(1).CenterVertical());
    auto* const all = new wxBoxSizer(wxVERTICAL);
    all->Add(row, wxSizerFlags(1).Expand().Border(wxALL, margin));
    if (!message_.buttons.empty()) {
        all->Add(makeButtons(), wxSizerFlags().Right().Border(wxLEFT | wxRIGHT | wxBOTTOM, margin));
    }
    applySkin(*this, skin);
    SetSizerAndFit(all);
    wxRect area(GetSize());
    const wxWindow* const around =
        message_.centeredOver != nullptr ? message_.centeredOver : GetParent();
    if (around != nullptr) {
        area = area.CenterIn(around->GetScreenRect());
        SetPosition(keepOnDisplay(area, around->GetScreenRect().GetPosition()).GetPosition());
    } else {
        Centre();
    }
}

wxWindow* MessageDialog::makeText() {
    auto* const view = new wxScrolledWindow(this, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                            wxVSCROLL | wxBORDER_NONE);
    view->SetFont(GuiSkin::DEFAULT().getFont());
    view->SetScrollRate(0, FromDIP(8));
    auto* const text = new wxStaticText(view, wxID_ANY, "");
    text->SetFont(GuiSkin::DEFAULT().getFont());
    text->SetLabelText(wrapText(*view, toWxString(message_.text), FromDIP(kWidestText)));
    auto* const sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(text);
    view->SetSizer(sizer);
    const wxSize needed = text->GetBestSize();
    const bool isTall = needed.y > FromDIP(kTallestText);
    const int bar = isTall ? wxSystemSettings::GetMetric(wxSYS_VSCROLL_X, this) + FromDIP(4) : 0;
    view->SetMinSize({needed.x + bar, isTall ? FromDIP(kTallestText) : needed.y});
    view->FitInside();
    return view;
}

wxSizer* MessageDialog::makeButtons() {
    auto* const row = new wxBoxSizer(wxHORIZONTAL);
    for (std::size_t i = 0; i < message_.buttons.size(); ++i) {
        const bool isFirst = i == 0;
        auto* const button = new AutoSizedButton(
            this, wxID_ANY, message_.buttons[i], kButtonHeight, kButtonWidth,
            isFirst ? AutoSizedButton::Look::Primary : AutoSizedButton::Look::Default);
        button->callOnClick([this, i] { end(static_cast<int>(i)); });
        row->Add(button, wxSizerFlags().Border(wxLEFT, isFirst ? 0 : FromDIP(8)));
        if (isFirst) {
            button->SetFocus();
        }
    }
    return row;
}

int MessageDialog::showModal() {
    if (!ended_) {
        ShowModal();
    }
    return result_;
}

void MessageDialog::end(int result) {
    if (!ended_) {
        ended_ = true;
        result_ = result;
        if (IsModal()) {
            EndModal(0);
        }
    }
}

void MessageDialog::onKey(wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    if (key == WXK_ESCAPE) {
        if (message_.closes) {
            close();
        }
    } else if ((key == WXK_RETURN || key == WXK_NUMPAD_ENTER) && !message_.buttons.empty()) {
        end(0);
    } else if (key == 'C' && event.GetModifiers() == wxMOD_CONTROL) {
        copyText();
    } else {
        event.Skip();
    }
}

void MessageDialog::copyText() const {
    if (wxTheClipboard->Open()) {
        wxTheClipboard->SetData(new wxTextDataObject(toWxString(message_.text)));
        wxTheClipboard->Close();
    }
}

void showMessage(wxWindow* parent, const String& caption, const String& text, MessageIcon icon) {
    MessageDialog(parent, {.caption = caption, .text = text, .icon = icon, .buttons = {"OK"}})
        .showModal();
}

}  // namespace tavrin::widgets
