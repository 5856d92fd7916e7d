#pragma once

#include "foundation/Color.h"
#include "foundation/Function.h"
#include "foundation/Geometry.h"
#include "foundation/String.h"
#include "gui/widgets/FloatingWindow.h"

#include <vector>

namespace tavrin::widgets {

/// Shows the values of the pixel at the pointer, beside it. Hidden at first; Show() shows it. Main
/// thread.
class PixelProbe final : public FloatingWindow {
public:
    struct ProbedPixel {
        Rgb value;      ///< linear
        Rgb displayed;  ///< display-encoded
        float alpha = 0.0f;
        Pixel position;     ///< in the image
        String colorSpace;  ///< of what is displayed
    };
    /// Gets a position on the screen.
    using ProbeFunction = Function<ProbedPixel(Pixel)>;

    /// The message stands in place of values of which one is not a number.
    PixelProbe(wxWindow* parent, ProbeFunction probe, String nanMessage);

    /// Probes that position and moves beside it.
    void updatePosition(Pixel screenPosition);

    /// One line of what is shown: a name and its values.
    struct Line {
        wxString name;
        std::vector<wxString> values;
        bool operator==(const Line&) const = default;
    };
    /// The lines about a pixel: linear and displayed components, and alpha.
    static std::vector<Line> describe(const ProbedPixel& pixel);
    /// All that is shown, line by line.
    wxString getText() const;

private:
    void paint(wxGraphicsContext& canvas) override;
    void paintHead(wxGraphicsContext& canvas) const;
    void paintLines(wxGraphicsContext& canvas) const;
    wxSize getNeededSize() const;
    bool isNumber() const;

    ProbeFunction probe_;
    wxString nanMessage_;
    ProbedPixel pixel_;
};

}  // namespace tavrin::widgets
