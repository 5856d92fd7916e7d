#include "gui/widgets/CanvasBuffer.h"

#include "foundation/Scheduler.h"
#include "gui/widgets/DisplayPixels.h"

#include <cairo.h>
#include <wx/dc.h>
#include <wx/graphics.h>

#include <algorithm>
#include <cstdint>
#include <new>
#include <span>

namespace tavrin::widgets {
namespace {

// Below this many pixels for each thread, one thread is done before another has started.
constexpr int kPixelsPerTask = 65536;

wxRect toWxRect(const Bucket& bucket, Pixel origin) {
    return {bucket.x0 - origin.x, bucket.y0 - origin.y, bucket.width(), bucket.height()};
}

/// Each pixel `scale` times, in place; the pixels are at the beginning of the line.
void repeatPixels(std::uint32_t* line, std::size_t count, int scale) {
    for (std::size_t i = count; i-- > 0;) {
        std::fill_n(line + i * static_cast<std::size_t>(scale), scale, std::uint32_t{line[i]});
    }
}

cairo_t* getContext(const wxDC& dc) {
    return static_cast<cairo_t*>(dc.GetGraphicsContext()->GetNativeContext());
}

}  // namespace

void CanvasBuffer::Destroy::operator()(_cairo_surface* surface) const {
    cairo_surface_destroy(surface);
}

CanvasBuffer::Surface CanvasBuffer::makeSurface(const Bucket& view, const wxDC& dc) const {
    // In memory that is shared with the display server, where there is such.
    Surface surface(cairo_surface_create_similar_image(cairo_get_target(getContext(dc)),
                                                       CAIRO_FORMAT_RGB24, view.width() * scale_,
                                                       view.height() * scale_));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) {
        throw std::bad_alloc();
    }
    cairo_surface_set_device_scale(surface.get(), scale_, scale_);
    return surface;
}

void CanvasBuffer::setView(const Bucket& view, int scaleFactor, const wxDC& dc) {
    const bool isSameScale = scale_ == scaleFactor && surface_ != nullptr;
    if (isSameScale && view == view_) {
        return;
    }
    const Bucket kept = {std::max(view.x0, view_.x0), std::max(view.y0, view_.y0),
                         std::min(view.x1, view_.x1), std::min(view.y1, view_.y1)};
    const bool isSomethingKept = isSameScale && !kept.isEmpty();
    scale_ = scaleFactor;
    Surface moved = makeSurface(view, dc);
    wxRegion stale(toWxRect(view, {view.x0, view.y0}));
    if (isSomethingKept) {
        cairo_t* const context = cairo_create(moved.get());
        cairo_set_operator(context, CAIRO_OPERATOR_SOURCE);
        cairo_set_source_surface(context, surface_.get(), view_.x0 - view.x0, view_.y0 - view.y0);
        const wxRect part = toWxRect(kept, {view.x0, view.y0});
        cairo_rectangle(context, part.x, part.y, part.width, part.height);
        cairo_fill(context);
        cairo_destroy(context);
        stale.Subtract(part);
        if (!stale_.IsEmpty()) {
            stale_.Offset(view_.x0 - view.x0, view_.y0 - view.y0);
            stale_.Intersect(part);
            stale.Union(stale_);
        }
    }
    surface_ = std::move(moved);
    view_ = view;
    stale_ = stale;
}

void CanvasBuffer::invalidate() {
    stale_ = wxRegion(toWxRect(view_, {view_.x0, view_.y0}));
}

std::vector<wxRect> CanvasBuffer::getStale() const {
    std::vector<wxRect> parts;
    for (wxRegionIterator part(stale_); part; ++part) {
        parts.push_back(part.GetRect());
    }
    return parts;
}

void CanvasBuffer::draw(const BitmapImpl<Rgb>& pixels, wxPoint corner) {
    const int firstX = std::max(corner.x, 0);
    const int lastX = std::min(corner.x + pixels.getWidth(), view_.width());
    const int firstY = std::max(corner.y, 0);
    const int lastY = std::min(corner.y + pixels.getHeight(), view_.height());
    if (firstX >= lastX || firstY >= lastY) {
        return;
    }
    cairo_surface_flush(surface_.get());
    unsigned char* const data = cairo_image_surface_get_data(surface_.get());
    const std::ptrdiff_t stride = cairo_image_surface_get_stride(surface_.get());
    const auto convert = [&](std::int64_t y) {
        const auto row = pixels.row(static_cast<int>(y) - corner.y)
                             .subspan(static_cast<std::size_t>(firstX - corner.x),
                                      static_cast<std::size_t>(lastX - firstX));
        unsigned char* const line =
            data + y * scale_ * stride + std::ptrdiff_t(firstX) * scale_ * 4;
        toDisplayPixels(row, reinterpret_cast<std::uint32_t*>(line));
        if (scale_ > 1) {
            repeatPixels(reinterpret_cast<std::uint32_t*>(line), row.size(), scale_);
        }
        for (int copy = 1; copy < scale_; ++copy) {
            std::copy_n(line, row.size() * scale_ * 4, line + copy * stride);
        }
    };
    Scheduler::defaultInstance().parallelForRanges(
        firstY, lastY, 1 + kPixelsPerTask / (lastX - firstX), TaskPriority::Interactive,
        [&](std::int64_t from, std::int64_t to) {
            for (std::int64_t y = from; y < to; ++y) {
                convert(y);
            }
        });
    cairo_surface_mark_dirty(surface_.get());
}

void CanvasBuffer::drawMissing(const wxRect& part) {
    cairo_t* const context = cairo_create(surface_.get());
    cairo_rectangle(context, part.x, part.y, part.width, part.height);
    cairo_set_source_rgb(context, 1.0, 0.0, 0.0);
    cairo_fill(context);
    cairo_rectangle(context, part.x + 0.5, part.y + 0.5, part.width - 1, part.height - 1);
    cairo_set_source_rgb(context, 0.0, 1.0, 0.0);
    cairo_set_line_width(context, 1.0);
    cairo_stroke(context);
    cairo_destroy(context);
}

void CanvasBuffer::paint(const wxDC& dc) const {
    if (surface_ == nullptr) {
        return;
    }
    cairo_t* const context = getContext(dc);
    cairo_save(context);
    cairo_set_source_surface(context, surface_.get(), 0.0, 0.0);
    cairo_pattern_set_filter(cairo_get_source(context), CAIRO_FILTER_NEAREST);
    cairo_set_operator(context, CAIRO_OPERATOR_SOURCE);
    cairo_rectangle(context, 0, 0, view_.width(), view_.height());
    cairo_fill(context);
    cairo_restore(context);
}

}  // namespace tavrin::widgets
