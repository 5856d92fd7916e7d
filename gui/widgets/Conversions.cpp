#include "gui/widgets/Conversions.h"

#include "foundation/Scheduler.h"

#include <wx/image.h>

#include <span>

namespace tavrin::widgets {
namespace {

// Below this many pixels for each thread, one thread is done before another has started.
constexpr int kPixelsPerTask = 65536;

void convertColors(std::span<const Rgb> row, unsigned char* bytes) {
    for (const Rgb& pixel : row) {
        *bytes++ = toByte(pixel.r);
        *bytes++ = toByte(pixel.g);
        *bytes++ = toByte(pixel.b);
    }
}

void convertAlpha(std::span<const Rgb> row, unsigned char* bytes) {
    for (const Rgb& pixel : row) {
        *bytes++ = toByte(pixel.a);
    }
}

}  // namespace

wxString toWxString(const String& text) {
    return wxString::FromUTF8(text.toUtf8());
}

String toString(const wxString& text) {
    return String::fromUtf8(text.utf8_string());
}

wxBitmap toWxBitmap(const BitmapImpl<Rgb>& bitmap, bool withAlpha) {
    if (bitmap.getPixelCount() == 0) {
        return {};
    }
    const int width = bitmap.getWidth();
    wxImage image(width, bitmap.getHeight(), false);
    if (withAlpha) {
        image.SetAlpha();
    }
    unsigned char* const colors = image.GetData();
    unsigned char* const alpha = withAlpha ? image.GetAlpha() : nullptr;
    Scheduler::defaultInstance().parallelForRanges(
        0, bitmap.getHeight(), 1 + kPixelsPerTask / width, TaskPriority::Interactive,
        [&](std::int64_t from, std::int64_t to) {
            for (std::int64_t y = from; y < to; ++y) {
                const auto row = bitmap.row(static_cast<int>(y));
                convertColors(row, colors + y * width * 3);
                if (withAlpha) {
                    convertAlpha(row, alpha + y * width);
                }
            }
        });
    return wxBitmap(image);
}

}  // namespace tavrin::widgets
