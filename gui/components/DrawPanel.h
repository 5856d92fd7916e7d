#pragma once

#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "foundation/Function.h"
#include "foundation/Geometry.h"
#include "foundation/Optional.h"
#include "gui/widgets/CanvasBuffer.h"
#include "gui/widgets/DelayedCallback.h"
#include "gui/widgets/PixelProbe.h"
#include "gui/widgets/ZoomableScrollable.h"

#include <wx/event.h>
#include <wx/panel.h>
#include <wx/scrolbar.h>

namespace tavrin::components {

/// The canvas: shows an image at powers of two of its size, scrolls and pans it, and probes its
/// pixels. It asks for exactly what has to be painted anew, at its scale, and keeps only what is on
/// the display. Main thread; the providers are called there too.
///
/// There are three kinds of coordinates: client coordinates of the canvas; zoomed ones, which are
/// pixels of the image at its zoom; and those of the image.
class DrawPanel final : public wxPanel, public widgets::ZoomableScrollable {
public:
    /// A mouse event of the canvas, with where that is in the image.
    struct MouseEvent : wxMouseEvent {
        MouseEvent(const wxMouseEvent& event, Pixel view, Pixel image)
            : wxMouseEvent(event), viewPosition(view), imagePosition(image) {}

        Pixel viewPosition;   ///< in zoomed coordinates
        Pixel imagePosition;  ///< in those of the image
    };

    /// The pixels of a region of the image, one for every `scale` × `scale` pixels of it. Empty
    /// when there are none yet. Has to answer from what is computed already.
    using Provider = Function<Optional<BitmapImpl<Rgb>>(const Bucket& region, float scale)>;

    /// The image is shown from 1/32 to 32 times its size.
    static constexpr int kSmallestLevel = -5;
    static constexpr int kLargestLevel = 5;

    explicit DrawPanel(wxWindow* parent);
    ~DrawPanel() override { endPan(); }

    /// Shows an image of this size at 1:1. `valueProvider` gives the values that the probe tells,
    /// `drawProvider` what is shown, as colours of the display.
    void setImage(Pixel size, Provider valueProvider, Provider drawProvider);

    /// Shows the image at 2^level times its size, clamped to what there is; what is in the middle
    /// stays there.
    void setZoom(int level);
    void zoomIn() { setZoom(level_ + 1); }
    void zoomOut() { setZoom(level_ - 1); }
    int getZoom() const { return level_; }
    Pixel getImageSize() const { return imageSize_; }
    Pixel getZoomedSize() const;

    /// Scrolls by so many pages, of kPageSize zoomed pixels.
    void scrollBy(int dx, int dy);
    static constexpr int kPageSize = 15;

    /// Asks for all that is shown anew and paints it: the image has changed.
    void refreshFull();
    /// The same soon; a burst of requests ends in one repaint.
    void refreshFullLater();

    bool Layout() override;

    // Any of them may be empty.
    Function<void()> onZoomChanged;
    Function<void(const MouseEvent&)> onLeftDown;
    Function<void(const MouseEvent&)> onLeftUp;
    Function<wxStockCursor(const MouseEvent&)> cursorProvider;

    void scrollByWheel(const wxMouseEvent& event) override;
    void zoomByWheel(const wxMouseEvent& event, int steps) override;

private:
    void makeAll();
    void bindPainting();
    void bindMouse();

    int getBarThickness() const;
    Pixel getThumbs() const;
    void setThumbs(Pixel position);
    Bucket getView() const;
    void onScrolled();

    void onCanvasPaint();
    void drawInBands(const wxRect& part);
    /// False where the provider has no pixels.
    bool drawPart(const wxRect& part);

    MouseEvent convert(const wxMouseEvent& event) const;
    Pixel toImage(Pixel zoomed) const;
    void onMotion(const wxMouseEvent& event);
    void showProbe(const wxMouseEvent& event);
    void endPan();
    widgets::PixelProbe::ProbedPixel probePixel(Pixel screenPosition) const;

    int level_ = 0;
    Pixel imageSize_{0, 0};
    Provider valueProvider_;
    Provider drawProvider_;
    wxPanel* canvas_ = nullptr;
    widgets::PixelProbe* probe_ = nullptr;
    wxScrollBar* horizontalBar_ = nullptr;
    wxScrollBar* verticalBar_ = nullptr;
    wxPanel* corner_ = nullptr;
    widgets::DelayedCallback fullRefresh_;
    widgets::CanvasBuffer buffer_;  ///< of the view, which is in zoomed coordinates
    Pixel panAnchor_{0, 0};         ///< what of the image is held by the middle button
};

}  // namespace tavrin::components
