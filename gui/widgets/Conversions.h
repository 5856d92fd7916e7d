#pragma once

#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "foundation/Geometry.h"
#include "foundation/String.h"

#include <wx/bitmap.h>
#include <wx/colour.h>
#include <wx/gdicmn.h>
#include <wx/string.h>

namespace tavrin::widgets {

inline Pixel toPixel(wxPoint point) {
    return {point.x, point.y};
}
inline Pixel toPixel(wxSize size) {
    return {size.x, size.y};
}
inline wxPoint toWxPoint(Pixel pixel) {
    return {pixel.x, pixel.y};
}
inline wxSize toWxSize(Pixel pixel) {
    return {pixel.x, pixel.y};
}
inline Bucket toBucket(const wxRect& rectangle) {
    return {rectangle.x, rectangle.y, rectangle.x + rectangle.width,
            rectangle.y + rectangle.height};
}

wxString toWxString(const String& text);
String toString(const wxString& text);

/// A display-encoded component as 8 bits: below 0 and NaN are 0, above 1 is 255.
inline unsigned char toByte(float component) {
    // Selections without branches, which a compiler makes vector instructions of.
    const float low = component > 0.0f ? component : 0.0f;
    return static_cast<unsigned char>((low < 1.0f ? low : 1.0f) * 255.0f + 0.5f);
}
/// Of a display-encoded colour, without alpha.
inline wxColour toWxColour(const Rgb& color) {
    return {toByte(color.r), toByte(color.g), toByte(color.b)};
}

/// Display-encoded pixels for the screen, one bitmap pixel each, at scale factor 1. With alpha, the
/// fourth floats say how opaque the pixels are, and the colours are not multiplied by them. An
/// empty bitmap gives an invalid one. Waits for threads of the scheduler when the bitmap is large.
wxBitmap toWxBitmap(const BitmapImpl<Rgb>& bitmap, bool withAlpha);

}  // namespace tavrin::widgets
