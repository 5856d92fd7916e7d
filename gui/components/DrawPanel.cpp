#include "gui/components/DrawPanel.h"

#include "foundation/logging/DebugLogger.h"
#include "gui/widgets/Conversions.h"
#include "gui/widgets/GuiSkin.h"
#include "gui/widgets/ScopedWindowFreezer.h"

#include <wx/dcclient.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace tavrin::components {
namespace {

constexpr int kFullRefreshDelay = 50;  // milliseconds
// So many pixels stay in the cache on their way from the provider to the display.
constexpr int kPixelsPerBand = 1 << 18;
constexpr long kCanvasStyle = wxTAB_TRAVERSAL | wxBORDER_NONE;

const char* const kNanMessage =
    "ERROR: The pixel contains NaN (Not a Number) value.\n"
    "This is due to internal error or missing check inside Tavrin Image Editor.\n"
    "Please contact our support and send us this image. We can fix these\n"
    "problems promptly if we have the image where it happens.";

int scaled(int number, float factor) {
    return static_cast<int>(static_cast<float>(number) * factor);
}

Pixel scaled(Pixel pixel, float factor) {
    return {scaled(pixel.x, factor), scaled(pixel.y, factor)};
}

const DebugLogger logger("DrawPanel::onCanvasPaint");

String describe(Pixel pixel) {
    return String::fromUtf8("(" + std::to_string(pixel.x) + ", " + std::to_string(pixel.y) + ")");
}

float powerOfTwo(int exponent) {
    return std::ldexp(1.0f, exponent);
}

wxPanel* makeCanvas(wxWindow* parent) {
    auto* canvas = new wxPanel;
    canvas->SetBackgroundStyle(wxBG_STYLE_PAINT);
    canvas->Create(parent, wxID_ANY, wxDefaultPosition, {0, 0}, kCanvasStyle);
    return canvas;
}

}  // namespace

DrawPanel::DrawPanel(wxWindow* parent) : wxPanel(parent) {
    makeAll();
    bindPainting();
    bindMouse();
    setImage({0, 0}, {}, {});
}

void DrawPanel::makeAll() {
    const widgets::GuiSkin& skin = widgets::GuiSkin::DEFAULT();
    SetBackgroundColour(skin.canvas);
    canvas_ = makeCanvas(this);
    canvas_->SetName("Image");
    probe_ = new widgets::PixelProbe(
        canvas_, [this](Pixel position) { return probePixel(position); }, kNanMessage);
    horizontalBar_ =
        new wxScrollBar(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxSB_HORIZONTAL);
    verticalBar_ = new wxScrollBar(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxSB_VERTICAL);
    corner_ = new wxPanel(this, wxID_ANY, wxDefaultPosition, {0, 0}, kCanvasStyle);
    corner_->SetBackgroundColour(skin.base);
}

void DrawPanel::bindPainting() {
    canvas_->Bind(wxEVT_PAINT, [this](wxPaintEvent&) { onCanvasPaint(); });
    for (wxScrollBar* bar : {horizontalBar_, verticalBar_}) {
        for (const auto& type :
             {wxEVT_SCROLL_THUMBTRACK, wxEVT_SCROLL_LINEUP, wxEVT_SCROLL_LINEDOWN,
              wxEVT_SCROLL_PAGEUP, wxEVT_SCROLL_PAGEDOWN, wxEVT_SCROLL_TOP, wxEVT_SCROLL_BOTTOM}) {
            bar->Bind(type, [this](wxScrollEvent&) { onScrolled(); });
        }
    }
    Bind(wxEVT_SIZE, [this](wxSizeEvent&) {
        Layout();
        refreshFullLater();
    });
}

void DrawPanel::bindMouse() {
    const auto bind = [this](const auto& type, const Function<void(wxMouseEvent&)>& handler) {
        canvas_->Bind(type, handler);
    };
    bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent& event) {
        if (onLeftDown) {
            onLeftDown(convert(event));
        }
    });
    bind(wxEVT_LEFT_UP, [this](wxMouseEvent& event) {
        if (onLeftUp) {
            onLeftUp(convert(event));
        }
    });
    bindScrollAndZoomEvents(this);
    bind(wxEVT_MIDDLE_DOWN, [this](wxMouseEvent& event) {
        panAnchor_ = convert(event).imagePosition;
        if (!canvas_->HasCapture()) {
            canvas_->CaptureMouse();
        }
    });
    bind(wxEVT_MIDDLE_UP, [this](wxMouseEvent&) { endPan(); });
    canvas_->Bind(wxEVT_MOUSE_CAPTURE_LOST, [](wxMouseCaptureLostEvent&) {});
    bind(wxEVT_RIGHT_DOWN, [this](wxMouseEvent& event) { showProbe(event); });
    bind(wxEVT_RIGHT_UP, [this](wxMouseEvent&) { probe_->Hide(); });
    bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent&) { probe_->Hide(); });
    bind(wxEVT_MOTION, [this](wxMouseEvent& event) { onMotion(event); });
    bind(wxEVT_LEFT_DCLICK, [](wxMouseEvent& event) {
        event.Skip();
        event.ResumePropagation(1);
    });
}

void DrawPanel::setImage(Pixel size, Provider valueProvider, Provider drawProvider) {
    imageSize_ = size;
    valueProvider_ = std::move(valueProvider);
    drawProvider_ = std::move(drawProvider);
    setZoom(0);
}

Pixel DrawPanel::getZoomedSize() const {
    return scaled(imageSize_, powerOfTwo(level_));
}

int DrawPanel::getBarThickness() const {
    // Of all bars alike, and before they have been hidden.
    static const int thickness = horizontalBar_->GetBestSize().y;
    return thickness;
}

bool DrawPanel::Layout() {
    const Pixel zoomed = getZoomedSize();
    Pixel available = widgets::toPixel(GetSize());
    const int thickness = getBarThickness();
    bool isWide = available.x < zoomed.x;
    bool isHigh = false;
    if (isWide) {
        available.y -= thickness;
        isHigh = available.y < zoomed.y;
        available.x -= isHigh ? thickness : 0;
    } else if (available.y < zoomed.y) {
        isHigh = true;
        available.x -= thickness;
        isWide = available.x < zoomed.x;
        available.y -= isWide ? thickness : 0;
    }
    const Pixel visible = {std::clamp(zoomed.x, 0, std::max(available.x, 0)),
                           std::clamp(zoomed.y, 0, std::max(available.y, 0))};
    canvas_->SetSize((available.x - visible.x) / 2, (available.y - visible.y) / 2, visible.x,
                     visible.y);
    horizontalBar_->SetSize(0, available.y, available.x, thickness);
    horizontalBar_->Show(isWide);
    horizontalBar_->SetScrollbar(horizontalBar_->GetThumbPosition(), visible.x, zoomed.x, kPageSize,
                                 true);
    verticalBar_->SetSize(available.x, 0, thickness, available.y);
    verticalBar_->Show(isHigh);
    verticalBar_->SetScrollbar(verticalBar_->GetThumbPosition(), visible.y, zoomed.y, kPageSize,
                               true);
    corner_->SetSize(available.x, available.y, thickness, thickness);
    corner_->Show(isWide && isHigh);
    return true;
}

Pixel DrawPanel::getThumbs() const {
    return {horizontalBar_->GetThumbPosition(), verticalBar_->GetThumbPosition()};
}

void DrawPanel::setThumbs(Pixel position) {
    horizontalBar_->SetThumbPosition(position.x);
    verticalBar_->SetThumbPosition(position.y);
    onScrolled();
}

Bucket DrawPanel::getView() const {
    const Pixel corner = getThumbs();
    const wxSize size = canvas_->GetClientSize();
    return {corner.x, corner.y, corner.x + size.x, corner.y + size.y};
}

void DrawPanel::setZoom(int level) {
    const Pixel view = widgets::toPixel(canvas_->GetClientSize());
    const Pixel thumbs = getThumbs();
    const Pixel middle = toImage({(view.x + 2 * thumbs.x) / 2, (view.y + 2 * thumbs.y) / 2});
    level_ = std::clamp(level, kSmallestLevel, kLargestLevel);
    {
        const widgets::ScopedWindowFreezer freezer(this);
        Layout();
        buffer_.invalidate();
        canvas_->Refresh(false);
        if (middle.x >= 0 && middle.x < imageSize_.x && middle.y >= 0 && middle.y < imageSize_.y) {
            const Pixel zoomed = scaled(middle, powerOfTwo(level_));
            const wxSize size = canvas_->GetClientSize();
            setThumbs({zoomed.x - size.x / 2, zoomed.y - size.y / 2});
        }
    }
    if (onZoomChanged) {
        onZoomChanged();
    }
}

void DrawPanel::scrollBy(int dx, int dy) {
    const Pixel thumbs = getThumbs();
    setThumbs({thumbs.x + kPageSize * dx, thumbs.y + kPageSize * dy});
}

void DrawPanel::onScrolled() {
    canvas_->Refresh(false);
    canvas_->Update();
    refreshFullLater();
}

void DrawPanel::refreshFull() {
    buffer_.invalidate();
    canvas_->Refresh(false);
    canvas_->Update();
}

void DrawPanel::refreshFullLater() {
    if (!fullRefresh_) {
        fullRefresh_ = [this] { refreshFull(); };
    }
    fullRefresh_.scheduleDelayed(kFullRefreshDelay);
}

void DrawPanel::onCanvasPaint() {
    wxPaintDC dc(canvas_);
    // What the buffer has of the view stays, so that scrolling asks for the strip that appears.
    buffer_.setView(getView(), static_cast<int>(canvas_->GetContentScaleFactor()), dc);
    for (const wxRect& part : buffer_.getStale()) {
        drawInBands(part);
    }
    buffer_.setDrawn();
    buffer_.paint(dc);
}

void DrawPanel::drawInBands(const wxRect& part) {
    const int rows = std::max(kPixelsPerBand / part.width, 1);
    for (int y = part.y; y <= part.GetBottom(); y += rows) {
        if (!drawPart({part.x, y, part.width, std::min(rows, part.GetBottom() + 1 - y)})) {
            buffer_.drawMissing(part);
            return;
        }
    }
}

bool DrawPanel::drawPart(const wxRect& part) {
    const Bucket client = widgets::toBucket(part);
    const Pixel thumbs = {buffer_.getView().x0, buffer_.getView().y0};
    const Pixel first = toImage({thumbs.x + client.x0, thumbs.y + client.y0});
    const Pixel last = toImage({thumbs.x + client.x1 - 1, thumbs.y + client.y1 - 1});
    const Bucket region = {first.x, first.y, last.x + 1, last.y + 1};
    const auto bitmap = drawProvider_ ? drawProvider_(region, powerOfTwo(-level_)) : std::nullopt;
    if (!bitmap) {
        return false;
    }
    if (isDevelopmentEnviro()) {
        logger.debug("Repainting image", {{"from", describe({region.x0, region.y0})},
                                          {"to", describe({region.x1, region.y1})}});
    }
    const Pixel corner = scaled(first, powerOfTwo(level_));
    buffer_.draw(*bitmap, {corner.x - thumbs.x, corner.y - thumbs.y});
    return true;
}

Pixel DrawPanel::toImage(Pixel zoomed) const {
    return scaled(zoomed, powerOfTwo(-level_));
}

DrawPanel::MouseEvent DrawPanel::convert(const wxMouseEvent& event) const {
    const Pixel thumbs = getThumbs();
    const Pixel view = {event.GetX() + thumbs.x, event.GetY() + thumbs.y};
    return {event, view, toImage(view)};
}

void DrawPanel::onMotion(const wxMouseEvent& event) {
    if (event.Dragging() && event.MiddleIsDown()) {
        const Pixel anchor = scaled(panAnchor_, powerOfTwo(level_));
        setThumbs({anchor.x - event.GetX(), anchor.y - event.GetY()});
    }
    if (event.Dragging() && event.RightIsDown()) {
        showProbe(event);
    }
    if (cursorProvider) {
        canvas_->SetCursor(wxCursor(cursorProvider(convert(event))));
    }
}

void DrawPanel::endPan() {
    if (canvas_->HasCapture()) {
        canvas_->ReleaseMouse();
    }
}

void DrawPanel::scrollByWheel(const wxMouseEvent& event) {
    Pixel thumbs = getThumbs();
    (event.GetWheelAxis() == wxMOUSE_WHEEL_VERTICAL ? thumbs.y : thumbs.x) -=
        event.GetWheelRotation();
    setThumbs(thumbs);
}

void DrawPanel::zoomByWheel(const wxMouseEvent& event, int steps) {
    if (steps == 0) {
        return;
    }
    const wxPoint corner = canvas_->GetPosition();
    const Pixel thumbs = getThumbs();
    const Pixel held =
        toImage({event.GetX() - corner.x + thumbs.x, event.GetY() - corner.y + thumbs.y});
    setZoom(level_ + (steps > 0 ? 1 : -1));
    const Pixel zoomed = scaled(held, powerOfTwo(level_));
    setThumbs({zoomed.x - event.GetX(), zoomed.y - event.GetY()});
}

void DrawPanel::showProbe(const wxMouseEvent& event) {
    // While a button is held, the mouse is told of beyond the canvas too, where there are no
    // pixels.
    const bool isInside = canvas_->GetClientRect().Contains(event.GetPosition());
    if (isInside) {
        probe_->updatePosition(widgets::toPixel(canvas_->ClientToScreen(event.GetPosition())));
    }
    probe_->Show(isInside);
}

widgets::PixelProbe::ProbedPixel DrawPanel::probePixel(Pixel screenPosition) const {
    const wxPoint client = canvas_->ScreenToClient(widgets::toWxPoint(screenPosition));
    const Pixel thumbs = getThumbs();
    const Pixel position = toImage({client.x + thumbs.x, client.y + thumbs.y});
    const auto probe = [position](const Provider& provider) {
        const auto bitmap =
            provider ? provider({position.x, position.y, position.x + 1, position.y + 1}, 1.0f)
                     : std::nullopt;
        return bitmap && !bitmap->pixels().empty() ? bitmap->at(0, 0) : Rgb{0, 0, 0, 0};
    };
    const Rgb value = probe(valueProvider_);
    return {value, probe(drawProvider_), value.a, position, "sRGB"};
}

}  // namespace tavrin::components
