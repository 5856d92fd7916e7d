#include "gui/widgets/PixelProbe.h"

#include "gui/widgets/Conversions.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace tavrin::widgets {
namespace {

constexpr int kMargin = 8;
constexpr int kSwatch = 18;
constexpr int kLineHeight = 16;
constexpr int kNameWidth = 52;
constexpr int kValueWidth = 68;
constexpr int kMessageWidth = 360;

wxString formatValue(float value) {
    if (!std::isfinite(value)) {
        return std::isnan(value) ? "NaN" : value > 0 ? "inf" : "-inf";
    }
    // Beyond these, digits after the point say less than an exponent.
    const float size = std::abs(value);
    const bool isPlain = size == 0.0f || (size >= 1e-4f && size < 1e4f);
    return isPlain ? wxString::FromCDouble(static_cast<double>(value), 4)
                   : wxString::Format("%.3e", static_cast<double>(value));
}

wxString getHex(const Rgb& color) {
    return toWxColour(color).GetAsString(wxC2S_HTML_SYNTAX);
}

}  // namespace

PixelProbe::PixelProbe(wxWindow* parent, ProbeFunction probe, String nanMessage)
    : FloatingWindow(parent), probe_(std::move(probe)), nanMessage_(toWxString(nanMessage)) {
    SetName("PixelProbe");
}

std::vector<PixelProbe::Line> PixelProbe::describe(const ProbedPixel& pixel) {
    const Rgb& value = pixel.value;
    const auto getByte = [](float component) {
        return wxString::Format("%d", static_cast<int>(toByte(component)));
    };
    return {{"Linear", {formatValue(value.r), formatValue(value.g), formatValue(value.b)}},
            {toWxString(pixel.colorSpace),
             {getByte(pixel.displayed.r), getByte(pixel.displayed.g), getByte(pixel.displayed.b)}},
            {"Alpha", {formatValue(pixel.alpha)}}};
}

bool PixelProbe::isNumber() const {
    const Rgb& value = pixel_.value;
    return !std::isnan(value.r) && !std::isnan(value.g) && !std::isnan(value.b) &&
           !std::isnan(value.a) && !std::isnan(pixel_.alpha);
}

wxString PixelProbe::getText() const {
    wxString text = wxString::Format("%d, %d", pixel_.position.x, pixel_.position.y);
    if (!isNumber()) {
        return text + "\n" + nanMessage_;
    }
    text += " " + getHex(pixel_.displayed);
    for (const Line& line : describe(pixel_)) {
        text += "\n" + line.name;
        for (const wxString& value : line.values) {
            text += " " + value;
        }
    }
    return text;
}

void PixelProbe::updatePosition(Pixel screenPosition) {
    pixel_ = probe_(screenPosition);
    SetClientSize(getNeededSize());
    placeBeside(toWxPoint(screenPosition));
    Refresh();
    Update();
}

wxSize PixelProbe::getNeededSize() const {
    const wxSize margins = FromDIP(wxSize(2 * kMargin, 2 * kMargin));
    const int head = FromDIP(kSwatch);
    if (!isNumber()) {
        const wxString message = wrapText(*this, nanMessage_, FromDIP(kMessageWidth));
        const int lines = 1 + static_cast<int>(message.Freq('\n'));
        return margins + wxSize(FromDIP(kMessageWidth), head + (lines + 1) * FromDIP(kLineHeight));
    }
    const int lines = static_cast<int>(describe(pixel_).size());
    return margins + wxSize(FromDIP(kNameWidth + 3 * kValueWidth),
                            head + FromDIP(kMargin) / 2 + lines * FromDIP(kLineHeight));
}

void PixelProbe::paint(wxGraphicsContext& canvas) {
    drawBox(canvas, GetClientRect(), 0, skin().field, mix(skin().raised, skin().highlight, 0.4));
    paintHead(canvas);
    if (isNumber()) {
        paintLines(canvas);
    } else {
        canvas.SetFont(GetFont(), skin().warning);
        canvas.DrawText(wrapText(*this, nanMessage_, FromDIP(kMessageWidth)), FromDIP(kMargin),
                        FromDIP(kMargin + kSwatch + kMargin));
    }
}

void PixelProbe::paintHead(wxGraphicsContext& canvas) const {
    const int margin = FromDIP(kMargin);
    const int swatch = FromDIP(kSwatch);
    const wxRect head(margin, margin, GetClientSize().x - 2 * margin, swatch);
    if (isNumber()) {
        drawBox(canvas, {head.x, head.y, FromDIP(kNameWidth) - margin, swatch}, 0,
                toWxColour(pixel_.displayed), skin().border);
        drawText(canvas, getHex(pixel_.displayed),
                 {head.x + FromDIP(kNameWidth), head.y, head.width, swatch}, GetFont().Bold(),
                 skin().text);
    }
    drawText(canvas, wxString::Format("%d, %d", pixel_.position.x, pixel_.position.y), head,
             GetFont(), skin().textWeak, Align::Right);
}

void PixelProbe::paintLines(wxGraphicsContext& canvas) const {
    // Of the three components, light enough to be read.
    const wxColour components[] = {{0xF0, 0x90, 0x88}, {0x8C, 0xCF, 0x8C}, {0x8C, 0xB4, 0xF0}};
    const int margin = FromDIP(kMargin);
    const int height = FromDIP(kLineHeight);
    int y = margin + FromDIP(kSwatch) + margin / 2;
    for (const Line& line : describe(pixel_)) {
        drawText(canvas, line.name, {margin, y, FromDIP(kNameWidth) - 4, height}, GetFont(),
                 skin().textWeak);
        const bool isColor = line.values.size() == std::size(components);
        for (std::size_t i = 0; i < line.values.size(); ++i) {
            const int x = margin + FromDIP(kNameWidth) + static_cast<int>(i) * FromDIP(kValueWidth);
            drawText(canvas, line.values[i], {x, y, FromDIP(kValueWidth) - 2, height}, GetFont(),
                     isColor ? components[i] : skin().text);
        }
        y += height;
    }
}

}  // namespace tavrin::widgets
