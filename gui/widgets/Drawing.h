#pragma once

#include "gui/widgets/GuiSkin.h"

#include <wx/gdicmn.h>
#include <wx/graphics.h>
#include <wx/string.h>
#include <wx/window.h>

namespace tavrin::widgets {

// How all of our controls draw. Lengths are in pixels of the window, as FromDIP gives them.

enum class Direction { Up, Down, Left, Right };
enum class Align { Left, Center, Right };

/// A rectangle with round corners, a fill and a line of one pixel inside its edge; a colour that is
/// not valid leaves out its part.
void drawBox(wxGraphicsContext& canvas, const wxRect& area, double radius, const wxColour& fill,
             const wxColour& line);
/// The background of a field or button in its present state, with the line of the keyboard.
struct BoxState {
    bool enabled = true;
    bool hovered = false;
    bool pressed = false;
    bool focused = false;
};
void drawField(wxGraphicsContext& canvas, const wxWindow& window, const wxRect& area,
               const GuiSkin& skin, BoxState state);
void drawButton(wxGraphicsContext& canvas, const wxWindow& window, const wxRect& area,
                const GuiSkin& skin, BoxState state, bool isPrimary = false);

/// One line of text in the middle of the area's height, with an ellipsis where it is too long.
void drawText(wxGraphicsContext& canvas, const wxString& text, const wxRect& area,
              const wxFont& font, const wxColour& color, Align align = Align::Left);
/// The text cut to a width with an ellipsis at its end; empty when not even that fits.
wxString shortenText(wxGraphicsContext& canvas, const wxString& text, double width);

/// An open arrow around a place; size is the width of its wide side.
void drawArrow(wxGraphicsContext& canvas, wxPoint2DDouble center, double size, Direction direction,
               const wxColour& color, double lineWidth);

/// Breaks lines between words so that none is wider, and within words that are wider by themselves.
wxString wrapText(const wxWindow& window, const wxString& text, int width);

/// A colour between two, at 0 the first.
wxColour mix(const wxColour& from, const wxColour& to, double part);

/// Moves a rectangle into the part of a display that programs may use, where that point is.
wxRect keepOnDisplay(wxRect area, wxPoint point);

}  // namespace tavrin::widgets
