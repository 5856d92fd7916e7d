#include "gui/widgets/ColorWheel.h"

#include "gui/widgets/Conversions.h"

#include <wx/pen.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tavrin::widgets {
namespace {

constexpr int kDiscSize = 168;
constexpr int kBarWidth = 16;
constexpr int kGap = 12;
constexpr int kMark = 5;
constexpr float kKeyStep = 0.01f;
constexpr float kTurn = 2.0f * std::numbers::pi_v<float>;

}  // namespace

ColorWheel::ColorWheel(wxWindow* parent) : CustomControl(parent, wxID_ANY) {
    SetName("ColorWheel");
    SetInitialSize();
    const auto onDown = [this](wxMouseEvent& event) {
        SetFocus();
        hold();
        held_ = event.GetPosition().x < getBar().x - FromDIP(kGap) / 2 ? Held::Disc : Held::Bar;
        point(event.GetPosition());
    };
    Bind(wxEVT_LEFT_DOWN, onDown);
    Bind(wxEVT_LEFT_DCLICK, onDown);
    Bind(wxEVT_LEFT_UP, [this](wxMouseEvent&) {
        letGo();
        held_ = Held::Nothing;
    });
    Bind(wxEVT_MOTION, [this](wxMouseEvent& event) { point(event.GetPosition()); });
    Bind(wxEVT_KEY_DOWN, &ColorWheel::onKeyDown, this);
}

void ColorWheel::setColor(const Hsv& color) {
    const Hsv before = color_;
    color_ = color;
    if (color.value == 0.0f) {
        color_.saturation = before.saturation;
    }
    if (color.saturation == 0.0f || color.value == 0.0f) {
        color_.hue = before.hue;
    }
    Refresh();
}

void ColorWheel::change(const Hsv& color) {
    color_ = {color.hue - std::floor(color.hue), std::clamp(color.saturation, 0.0f, 1.0f),
              std::clamp(color.value, 0.0f, 1.0f)};
    Refresh();
    if (onChange_) {
        onChange_(color_);
    }
}

wxSize ColorWheel::DoGetBestClientSize() const {
    return FromDIP(wxSize(kDiscSize + kGap + kBarWidth, kDiscSize));
}

wxRect ColorWheel::getDisc() const {
    return {0, 0, FromDIP(kDiscSize), FromDIP(kDiscSize)};
}

wxRect ColorWheel::getBar() const {
    return {FromDIP(kDiscSize + kGap), 0, FromDIP(kBarWidth), FromDIP(kDiscSize)};
}

void ColorWheel::point(wxPoint position) {
    Hsv color = color_;
    if (held_ == Held::Disc) {
        const float radius = static_cast<float>(getDisc().width) / 2.0f;
        const float x = static_cast<float>(position.x) + 0.5f - radius;
        const float y = radius - static_cast<float>(position.y) - 0.5f;
        color.hue = std::atan2(y, x) / kTurn;
        color.saturation = std::hypot(x, y) / radius;
        change(color);
    } else if (held_ == Held::Bar) {
        color.value =
            1.0f - static_cast<float>(position.y) / static_cast<float>(getBar().height - 1);
        change(color);
    }
}

bool ColorWheel::wantsKey(const wxKeyEvent& event) const {
    const int key = event.GetKeyCode();
    return !event.HasAnyModifiers() &&
           (key == WXK_LEFT || key == WXK_RIGHT || key == WXK_UP || key == WXK_DOWN ||
            key == WXK_PAGEUP || key == WXK_PAGEDOWN);
}

void ColorWheel::onKeyDown(wxKeyEvent& event) {
    if (!wantsKey(event)) {
        event.Skip();
        return;
    }
    const int key = event.GetKeyCode();
    Hsv color = color_;
    if (key == WXK_PAGEUP || key == WXK_PAGEDOWN) {
        color.value += key == WXK_PAGEUP ? kKeyStep : -kKeyStep;
    } else {
        const float angle = color.hue * kTurn;
        const float x = color.saturation * std::cos(angle) +
                        kKeyStep * static_cast<float>((key == WXK_RIGHT) - (key == WXK_LEFT));
        const float y = color.saturation * std::sin(angle) +
                        kKeyStep * static_cast<float>((key == WXK_UP) - (key == WXK_DOWN));
        color.hue = std::atan2(y, x) / kTurn;
        color.saturation = std::hypot(x, y);
    }
    change(color);
}

void ColorWheel::makeDisc() {
    // In the display's own pixels, with an edge that is one of them wide.
    const int size = static_cast<int>(getDisc().width * GetContentScaleFactor());
    const float radius = static_cast<float>(size) / 2.0f;
    BitmapImpl<Rgb> pixels(size, size);
    for (int row = 0; row < size; ++row) {
        for (int column = 0; column < size; ++column) {
            const float x = static_cast<float>(column) + 0.5f - radius;
            const float y = radius - static_cast<float>(row) - 0.5f;
            const float distance = std::hypot(x, y);
            const float turn = std::atan2(y, x) / kTurn;
            Rgb& pixel = pixels.at(column, row);
            pixel = toRgb({turn < 0.0f ? turn + 1.0f : turn, std::min(distance / radius, 1.0f),
                           color_.value});
            pixel.a = std::clamp(radius - distance, 0.0f, 1.0f);
        }
    }
    disc_ = toWxBitmap(pixels, true);
    discValue_ = color_.value;
}

void ColorWheel::paint(wxGraphicsContext& canvas) {
    if (discValue_ != color_.value) {
        makeDisc();
    }
    const wxRect disc = getDisc();
    const wxRect bar = getBar();
    canvas.DrawBitmap(disc_, disc.x, disc.y, disc.width, disc.height);
    const Rgb full = toRgb({color_.hue, color_.saturation, 1.0f});
    canvas.SetPen(wxPen(HasFocus() ? skin().borderFocus : skin().border, 1));
    canvas.SetBrush(canvas.CreateLinearGradientBrush(bar.x, bar.y, bar.x, bar.GetBottom(),
                                                     toWxColour(full), *wxBLACK));
    canvas.DrawRectangle(bar.x + 0.5, bar.y + 0.5, bar.width - 1, bar.height - 1);

    const double radius = disc.width / 2.0;
    const double angle = static_cast<double>(color_.hue * kTurn);
    const double reach = static_cast<double>(color_.saturation) * radius;
    const wxPoint2DDouble mark(radius + reach * std::cos(angle), radius - reach * std::sin(angle));
    const double y = (1.0 - static_cast<double>(color_.value)) * (bar.height - 1);
    canvas.SetBrush(*wxTRANSPARENT_BRUSH);
    // Dark and light, so that the marks show on every colour.
    for (const int width : {3, 1}) {
        canvas.SetPen(wxPen(width == 3 ? skin().border : skin().accentText, width));
        const double half = FromDIP(kMark);
        canvas.DrawEllipse(mark.m_x - half, mark.m_y - half, 2 * half, 2 * half);
        canvas.StrokeLine(bar.x, y + 0.5, bar.x + bar.width, y + 0.5);
    }
}

}  // namespace tavrin::widgets
