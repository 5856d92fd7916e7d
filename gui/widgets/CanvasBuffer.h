#pragma once

#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "foundation/Geometry.h"

#include <wx/gdicmn.h>
#include <wx/region.h>

#include <memory>
#include <vector>

class wxDC;
struct _cairo_surface;

namespace tavrin::widgets {

/// The pixels that a canvas shows, ready for the display, so that scrolling, and windows that move
/// away, cost no more than what has not been shown before. It stands for a view: a rectangle of
/// something larger that is scrolled in. Parts of it are stale until they are drawn. Main thread.
class CanvasBuffer {
public:
    /// Moves to a view, keeps what it has of it, and takes the rest as stale. `dc` is one that it
    /// will be painted on: pixels lie where its display takes them from. `scaleFactor` is the
    /// number of pixels of the display for one of the view; another one makes everything stale.
    void setView(const Bucket& view, int scaleFactor, const wxDC& dc);
    const Bucket& getView() const { return view_; }

    /// Everything is stale from now on.
    void invalidate();
    /// The stale rectangles, relative to the corner of the view. None overlap.
    std::vector<wxRect> getStale() const;

    /// Draws display-encoded pixels, one for each of the view, with the first one at `corner`,
    /// which is relative to the corner of the view; what lies beyond the view is left out. Waits
    /// for threads of the scheduler when there are many.
    void draw(const BitmapImpl<Rgb>& pixels, wxPoint corner);
    /// Draws the mark of a part that there are no pixels for.
    void drawMissing(const wxRect& part);
    /// Nothing is stale any more.
    void setDrawn() { stale_.Clear(); }

    /// Paints everything with the corner of the view at the origin.
    void paint(const wxDC& dc) const;

private:
    struct Destroy {
        void operator()(_cairo_surface* surface) const;
    };
    using Surface = std::unique_ptr<_cairo_surface, Destroy>;

    Surface makeSurface(const Bucket& view, const wxDC& dc) const;

    Bucket view_{0, 0, 0, 0};
    int scale_ = 1;
    Surface surface_;
    wxRegion stale_;
};

}  // namespace tavrin::widgets
