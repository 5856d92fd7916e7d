#include "gui/widgets/Drawing.h"

#include <wx/brush.h>
#include <wx/display.h>
#include <wx/pen.h>

#include <algorithm>
#include <cmath>

namespace tavrin::widgets {
namespace {

const wxString kEllipsis = L"\u2026";

double getWidth(wxGraphicsContext& canvas, const wxString& text) {
    double width = 0.0;
    double height = 0.0;
    canvas.GetTextExtent(text, &width, &height);
    return width;
}

// The longest beginning of the text for which fits() holds, one character at least.
template <class Fits>
std::size_t findLongest(const wxString& text, Fits fits) {
    std::size_t shortest = 1;
    std::size_t longest = text.size();
    while (shortest < longest) {
        const std::size_t middle = (shortest + longest + 1) / 2;
        if (fits(text.Left(middle))) {
            shortest = middle;
        } else {
            longest = middle - 1;
        }
    }
    return shortest;
}

wxString wrapLine(const wxWindow& window, wxString line, int width) {
    const auto fits = [&](const wxString& part) { return window.GetTextExtent(part).x <= width; };
    wxString wrapped;
    while (!line.empty() && !fits(line)) {
        const std::size_t count = findLongest(line, fits);
        const std::size_t space = line.Left(count + 1).rfind(' ');
        const bool isBetweenWords = space != wxString::npos && space > 0;
        wrapped += line.Left(isBetweenWords ? space : count) + '\n';
        line = line.Mid(isBetweenWords ? space + 1 : count);
    }
    return wrapped + line;
}

}  // namespace

void drawBox(wxGraphicsContext& canvas, const wxRect& area, double radius, const wxColour& fill,
             const wxColour& line) {
    canvas.SetBrush(fill.IsOk() ? wxBrush(fill) : *wxTRANSPARENT_BRUSH);
    if (line.IsOk()) {
        canvas.SetPen(wxPen(line, 1));
        canvas.DrawRoundedRectangle(area.x + 0.5, area.y + 0.5, area.width - 1, area.height - 1,
                                    radius);
    } else {
        canvas.SetPen(*wxTRANSPARENT_PEN);
        canvas.DrawRoundedRectangle(area.x, area.y, area.width, area.height, radius);
    }
}

void drawField(wxGraphicsContext& canvas, const wxWindow& window, const wxRect& area,
               const GuiSkin& skin, BoxState state) {
    wxColour fill = skin.field;
    if (!state.enabled) {
        fill = mix(skin.base, skin.field, 0.4);
    } else if (state.hovered || state.pressed) {
        fill = mix(skin.field, skin.raised, 0.4);
    }
    drawBox(canvas, area, window.FromDIP(skin.cornerRadius), fill,
            state.focused ? skin.borderFocus : skin.border);
}

void drawButton(wxGraphicsContext& canvas, const wxWindow& window, const wxRect& area,
                const GuiSkin& skin, BoxState state, bool isPrimary) {
    wxColour fill = isPrimary ? skin.accent : skin.raised;
    if (!state.enabled) {
        fill = mix(skin.base, skin.raised, 0.4);
    } else if (state.pressed) {
        fill = mix(fill, skin.field, 0.5);
    } else if (state.hovered) {
        fill = mix(fill, skin.highlight, 0.2);
    }
    const wxColour line = !state.focused ? skin.border
                          : isPrimary    ? skin.accentText
                                         : skin.borderFocus;
    drawBox(canvas, area, window.FromDIP(skin.cornerRadius), fill, line);
}

wxString shortenText(wxGraphicsContext& canvas, const wxString& text, double width) {
    const auto fits = [&](const wxString& part) { return getWidth(canvas, part) <= width; };
    if (fits(text)) {
        return text;
    }
    const auto fitsWithEllipsis = [&](const wxString& part) { return fits(part + kEllipsis); };
    const wxString shortened = text.Left(findLongest(text, fitsWithEllipsis)) + kEllipsis;
    return fits(shortened) ? shortened : wxString();
}

void drawText(wxGraphicsContext& canvas, const wxString& text, const wxRect& area,
              const wxFont& font, const wxColour& color, Align align) {
    canvas.SetFont(font, color);
    const wxString shown = shortenText(canvas, text, area.width);
    if (shown.empty()) {
        return;
    }
    double width = 0.0;
    double height = 0.0;
    canvas.GetTextExtent(shown, &width, &height);
    const double space = area.width - width;
    const double x = align == Align::Left ? 0.0 : align == Align::Right ? space : space / 2;
    canvas.DrawText(shown, area.x + std::floor(x), area.y + std::floor((area.height - height) / 2));
}

void drawArrow(wxGraphicsContext& canvas, wxPoint2DDouble center, double size, Direction direction,
               const wxColour& color, double lineWidth) {
    wxGraphicsPenInfo info(color);
    info.Width(lineWidth).Cap(wxCAP_ROUND).Join(wxJOIN_ROUND);
    canvas.SetPen(canvas.CreatePen(info));
    const double half = size / 2;
    const double depth = size / 4;
    const double sign = direction == Direction::Up || direction == Direction::Left ? -1.0 : 1.0;
    const bool isVertical = direction == Direction::Up || direction == Direction::Down;
    wxPoint2DDouble points[3] = {
        {-half, -sign * depth}, {0.0, sign * depth}, {half, -sign * depth}};
    for (wxPoint2DDouble& point : points) {
        point = isVertical ? center + point : center + wxPoint2DDouble(point.m_y, point.m_x);
    }
    canvas.StrokeLines(3, points);
}

wxString wrapText(const wxWindow& window, const wxString& text, int width) {
    wxString wrapped;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        wrapped += (start == 0 ? wxString() : wxString("\n")) +
                   wrapLine(window, text.Mid(start, end - start), width);
        start = end + 1;
    }
    return wrapped;
}

wxColour mix(const wxColour& from, const wxColour& to, double part) {
    const auto blend = [&](unsigned char first, unsigned char second) {
        return static_cast<unsigned char>(std::lround(first + (second - first) * part));
    };
    return {blend(from.Red(), to.Red()), blend(from.Green(), to.Green()),
            blend(from.Blue(), to.Blue())};
}

wxRect keepOnDisplay(wxRect area, wxPoint point) {
    const int display = wxDisplay::GetFromPoint(point);
    const wxRect screen =
        wxDisplay(static_cast<unsigned>(display == wxNOT_FOUND ? 0 : display)).GetClientArea();
    area.x = std::max(screen.x, std::min(area.x, screen.x + screen.width - area.width));
    area.y = std::max(screen.y, std::min(area.y, screen.y + screen.height - area.height));
    return area;
}

}  // namespace tavrin::widgets
