#include "gui/widgets/ColorPickerDialog.h"

#include "gui/widgets/AutoSizedButton.h"
#include "gui/widgets/Conversions.h"

#include <wx/brush.h>
#include <wx/pen.h>
#include <wx/sizer.h>
#include <wx/spinctrl.h>
#include <wx/stattext.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace tavrin::widgets {
namespace {

constexpr int kMargin = 12;
constexpr int kFieldWidth = 64;
constexpr int kHexWidth = 84;
constexpr int kSwatch = 18;
constexpr int kSwatchGap = 4;
constexpr int kButtonHeight = 24;
constexpr int kButtonWidth = 75;
constexpr std::size_t kRecentColors = 8;

/// The colours that were accepted last, the newest first, for as long as the program runs.
std::vector<Rgb>& getRecentColors() {
    static std::vector<Rgb> colors;
    return colors;
}

void remember(const Rgb& color) {
    std::vector<Rgb>& colors = getRecentColors();
    std::erase(colors, color);
    colors.insert(colors.begin(), color);
    colors.resize(std::min(colors.size(), kRecentColors));
}

/// Light of common lamps and the plain colours, display-encoded.
constexpr unsigned kFixedColors[] = {0xFFFFFF, 0xFFD6AA, 0xFFF1E0, 0xC9E2FF,
                                     0xFF0000, 0x00FF00, 0x0000FF, 0x000000};

Rgb makeColor(unsigned hex) {
    const auto get = [&](int shift) { return static_cast<float>((hex >> shift) & 255) / 255.0f; };
    return decodeFromDisplay({get(16), get(8), get(0), 1.0f});
}

/// By what a colour is divided so that a display can show its hue.
float getScale(const Rgb& color) {
    const float high = std::max({color.r, color.g, color.b});
    return high > 1.0f ? high : 1.0f;
}

Rgb multiply(const Rgb& color, float factor) {
    return {color.r * factor, color.g * factor, color.b * factor, color.a};
}

class Swatch final : public ClickableControl {
public:
    Swatch(wxWindow* parent, const Rgb& color, Function<void()> onClick)
        : ClickableControl(parent, wxID_ANY), color_(color), onClick_(std::move(onClick)) {
        SetName("Swatch");
        SetInitialSize();
    }

private:
    void onClick() override { onClick_(); }
    bool clicksOnReturn() const override { return false; }
    wxSize DoGetBestClientSize() const override { return FromDIP(wxSize(kSwatch, kSwatch)); }
    void paint(wxGraphicsContext& canvas) override {
        const BoxState state = getBoxState();
        const wxColour line = state.focused   ? skin().borderFocus
                              : state.hovered ? skin().highlight
                                              : skin().border;
        drawBox(canvas, GetClientRect(), FromDIP(2), toWxColour(encodeForDisplay(color_)), line);
    }

    Rgb color_;
    Function<void()> onClick_;
};

/// The old colour and the new one side by side.
class Preview final : public CustomControl {
public:
    Preview(wxWindow* parent, const Rgb& before, const Rgb& now)
        : CustomControl(parent, wxID_ANY), before_(before), now_(now) {
        SetInitialSize();
    }
    bool AcceptsFocus() const override { return false; }

private:
    wxSize DoGetBestClientSize() const override { return FromDIP(wxSize(kFieldWidth, 28)); }
    void paint(wxGraphicsContext& canvas) override {
        const wxRect area = GetClientRect();
        const int half = area.width / 2;
        canvas.SetPen(*wxTRANSPARENT_PEN);
        canvas.SetBrush(wxBrush(toWxColour(encodeForDisplay(before_))));
        canvas.DrawRectangle(0, 0, half, area.height);
        canvas.SetBrush(wxBrush(toWxColour(encodeForDisplay(now_))));
        canvas.DrawRectangle(half, 0, area.width - half, area.height);
        drawBox(canvas, area, 0, {}, skin().border);
    }

    const Rgb before_;
    const Rgb& now_;
};

}  // namespace

ColorPickerDialog::ColorPickerDialog(wxWindow* parent, const String& title, const Rgb& color)
    : wxDialog(parent, wxID_ANY, toWxString(title)), initial_(color), color_(color) {
    build();
    show(Source::Program);
    Bind(wxEVT_CHAR_HOOK, &ColorPickerDialog::onKey, this);
}

void ColorPickerDialog::build() {
    const int margin = FromDIP(kMargin);
    wheel_ = new ColorWheel(this);
    wheel_->callOnChange([this](const Hsv& color) { onWheel(color); });
    auto* const left = new wxBoxSizer(wxVERTICAL);
    left->Add(wheel_);
    left->Add(makeSwatches(), wxSizerFlags().Border(wxTOP, margin));
    auto* const columns = new wxBoxSizer(wxHORIZONTAL);
    columns->Add(left, wxSizerFlags().Border(wxRIGHT, margin + margin / 2));
    columns->Add(makeFields(), wxSizerFlags(1));
    auto* const all = new wxBoxSizer(wxVERTICAL);
    all->Add(columns, wxSizerFlags(1).Expand().Border(wxALL, margin));
    all->Add(makeButtons(), wxSizerFlags().Right().Border(wxLEFT | wxRIGHT | wxBOTTOM, margin));
    applySkin(*this, GuiSkin::DEFAULT());
    SetSizerAndFit(all);
}

wxSizer* ColorPickerDialog::makeFields() {
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    auto* const grid = new wxFlexGridSizer(3, FromDIP(wxSize(8, 6)));
    const auto addLabel = [&](const char* label) {
        grid->Add(new wxStaticText(this, wxID_ANY, label), wxSizerFlags().Center());
    };
    addLabel("");
    addLabel("Linear");
    addLabel("sRGB");
    const char* const names[] = {"R", "G", "B"};
    for (std::size_t i = 0; i < linear_.size(); ++i) {
        addLabel(names[i]);
        linear_[i] = new Spinner(this, wxID_ANY, kFieldWidth, 0, kInfinity, 1, 4, 0);
        linear_[i]->SetName(wxString("Linear ") + names[i]);
        linear_[i]->Bind(wxEVT_SPINCTRLDOUBLE, [this](wxSpinDoubleEvent&) {
            change(
                {linear_[0]->getValue(), linear_[1]->getValue(), linear_[2]->getValue(), color_.a},
                Source::Linear);
        });
        bytes_[i] = new Spinner(this, wxID_ANY, kFieldWidth, 0, 255, 255, 0, 0);
        bytes_[i]->SetName(wxString("sRGB ") + names[i]);
        bytes_[i]->Bind(wxEVT_SPINCTRLDOUBLE, [this](wxSpinDoubleEvent&) { onBytes(); });
        grid->Add(linear_[i]);
        grid->Add(bytes_[i]);
    }
    auto* const bottom = new wxBoxSizer(wxHORIZONTAL);
    bottom->Add(new wxStaticText(this, wxID_ANY, "Hex"),
                wxSizerFlags().CenterVertical().Border(wxRIGHT, FromDIP(8)));
    hex_ = new TextField(this, wxID_ANY, kHexWidth);
    hex_->callOnAccept([this](const String& text) { onHex(text); });
    bottom->Add(hex_, wxSizerFlags(1));
    preview_ = new Preview(this, initial_, color_);
    auto* const all = new wxBoxSizer(wxVERTICAL);
    all->Add(preview_, wxSizerFlags().Expand().Border(wxBOTTOM, FromDIP(8)));
    all->Add(grid);
    all->Add(bottom, wxSizerFlags().Expand().Border(wxTOP, FromDIP(8)));
    return all;
}

wxSizer* ColorPickerDialog::makeSwatches() {
    auto* const grid =
        new wxGridSizer(static_cast<int>(kRecentColors), FromDIP(wxSize(kSwatchGap, kSwatchGap)));
    std::vector<Rgb> colors;
    std::ranges::transform(kFixedColors, std::back_inserter(colors), makeColor);
    std::ranges::copy(getRecentColors(), std::back_inserter(colors));
    for (const Rgb& color : colors) {
        grid->Add(new Swatch(this, color, [this, color] { change(color, Source::Program); }));
    }
    return grid;
}

wxSizer* ColorPickerDialog::makeButtons() {
    auto* const accept = new AutoSizedButton(this, wxID_ANY, "OK", kButtonHeight, kButtonWidth,
                                             AutoSizedButton::Look::Primary);
    accept->callOnClick([this] { EndModal(wxID_OK); });
    auto* const cancel = new AutoSizedButton(this, wxID_ANY, "Cancel", kButtonHeight, kButtonWidth);
    cancel->callOnClick([this] { EndModal(wxID_CANCEL); });
    auto* const row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(accept, wxSizerFlags().Border(wxRIGHT, FromDIP(8)));
    row->Add(cancel);
    return row;
}

void ColorPickerDialog::change(const Rgb& color, Source source) {
    color_ = color;
    show(source);
    if (onChange_) {
        onChange_(color_);
    }
}

void ColorPickerDialog::show(Source source) {
    // Kept while what shows a part of the brightness takes it down and up again.
    if (source != Source::Wheel && source != Source::Bytes) {
        scale_ = getScale(color_);
    }
    const Rgb displayed = encodeForDisplay(multiply(color_, 1.0f / scale_));
    if (source != Source::Wheel) {
        wheel_->setColor(toHsv(displayed));
    }
    const float linear[] = {color_.r, color_.g, color_.b};
    const float coded[] = {displayed.r, displayed.g, displayed.b};
    for (std::size_t i = 0; i < linear_.size(); ++i) {
        if (source != Source::Linear) {
            linear_[i]->setValue(linear[i], false);
        }
        if (source != Source::Bytes) {
            bytes_[i]->setValue(static_cast<float>(toByte(coded[i])), false);
        }
    }
    if (source != Source::Hex) {
        hex_->setText(getHexText(displayed));
    }
    preview_->Refresh();
}

void ColorPickerDialog::onWheel(const Hsv& color) {
    Rgb picked = multiply(decodeFromDisplay(toRgb(color)), scale_);
    picked.a = color_.a;
    change(picked, Source::Wheel);
}

void ColorPickerDialog::onBytes() {
    const auto get = [&](std::size_t i) { return bytes_[i]->getValue() / 255.0f; };
    change(multiply(decodeFromDisplay({get(0), get(1), get(2), color_.a}), scale_), Source::Bytes);
}

void ColorPickerDialog::onHex(const String& text) {
    if (auto color = parseHexText(text)) {
        color->a = color_.a;
        change(decodeFromDisplay(*color), Source::Program);
    } else {
        show(Source::Program);
    }
}

void ColorPickerDialog::onKey(wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    if (key == WXK_RETURN || key == WXK_NUMPAD_ENTER) {
        EndModal(wxID_OK);
    } else if (key == WXK_ESCAPE) {
        EndModal(wxID_CANCEL);
    } else {
        event.Skip();
    }
}

bool ColorPickerDialog::showModal() {
    const bool accepted = ShowModal() == wxID_OK;
    if (accepted) {
        remember(color_);
    }
    return accepted;
}

}  // namespace tavrin::widgets
