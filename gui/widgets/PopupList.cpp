#include "gui/widgets/PopupList.h"

#include "gui/widgets/Conversions.h"

#include <wx/brush.h>
#include <wx/display.h>
#include <wx/pen.h>

#include <algorithm>
#include <utility>

namespace tavrin::widgets {
namespace {

constexpr int kRowPadding = 6;
constexpr int kTallest = 400;
constexpr int kScrollBar = 8;
constexpr int kRowsPerNotch = 3;
constexpr std::size_t kPage = 10;

}  // namespace

wxFont getItemFont(const ComboBoxItem& item, const wxFont& font) {
    return (item.flags & ComboBoxItem::kStrong) != 0 ? font.Bold() : font;
}

wxColour getItemColor(const ComboBoxItem& item, const GuiSkin& skin) {
    return (item.flags & ComboBoxItem::kColored) != 0 ? mix(skin.borderFocus, skin.text, 0.35)
                                                      : skin.text;
}

PopupList::PopupList(wxWindow* owner, const std::vector<ComboBoxItem>& items,
                     Optional<std::size_t> selected, Function<void(Optional<std::size_t>)> onEnd)
    : FloatingWindow(owner), items_(items), onEnd_(std::move(onEnd)) {
    SetName("PopupList");
    place(owner);
    bindMouse();
    Show();
    CaptureMouse();
    if (selected) {
        highlight(*selected);
    }
}

PopupList::~PopupList() {
    if (HasCapture()) {
        ReleaseMouse();
    }
}

void PopupList::place(wxWindow* owner) {
    const wxRect anchor = owner->GetScreenRect();
    int width = anchor.width;
    for (const ComboBoxItem& item : items_) {
        int textWidth = 0;
        const wxFont font = getItemFont(item, GetFont());
        GetTextExtent(toWxString(item.label), &textWidth, nullptr, nullptr, nullptr, &font);
        width = std::max(width, textWidth + FromDIP(2 * kRowPadding + kScrollBar) + 2);
    }
    const int index = wxDisplay::GetFromPoint(anchor.GetPosition());
    const wxRect screen = wxDisplay(static_cast<unsigned>(std::max(index, 0))).GetClientArea();
    const int below = screen.GetBottom() + 1 - anchor.GetBottom() - 1;
    const int above = anchor.y - screen.y;
    const int wanted = std::min(getContentHeight() + 2, FromDIP(kTallest));
    const bool flips = below < wanted && above > below;
    const int height = std::min(wanted, flips ? above : below);
    width = std::min(width, screen.width);
    const int x = std::clamp(anchor.x, screen.x, screen.GetRight() + 1 - width);
    SetSize(x, flips ? anchor.y - height : anchor.GetBottom() + 1, width, height);
}

void PopupList::bindMouse() {
    Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent& event) { onLeftDown(event); });
    Bind(wxEVT_LEFT_DCLICK, [this](wxMouseEvent& event) { onLeftDown(event); });
    Bind(wxEVT_LEFT_UP, [this](wxMouseEvent& event) { onLeftUp(event); });
    Bind(wxEVT_MOTION, [this](wxMouseEvent& event) { onMotion(event); });
    for (const auto& type : {wxEVT_RIGHT_DOWN, wxEVT_MIDDLE_DOWN}) {
        Bind(type, [this](wxMouseEvent&) { end({}); });
    }
    Bind(wxEVT_MOUSEWHEEL, [this](wxMouseEvent& event) {
        scrollTo(offset_ - wheel_.take(event) * kRowsPerNotch * getRowHeight());
    });
    Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { end({}); });
}

void PopupList::end(Optional<std::size_t> chosen) {
    if (HasCapture()) {
        ReleaseMouse();
    }
    Hide();
    if (const auto onEnd = std::exchange(onEnd_, nullptr)) {
        onEnd(chosen);
    }
}

void PopupList::onLeftDown(const wxMouseEvent& event) {
    const wxPoint position = event.GetPosition();
    if (!GetClientRect().Contains(position)) {
        end({});
    } else if (getThumb().Contains(position)) {
        thumbGrip_ = position.y - getThumb().y;
    } else {
        onMotion(event);
    }
}

void PopupList::onLeftUp(const wxMouseEvent& event) {
    const auto item = findItem(event.GetPosition());
    // The click that opened the list also ends over it where the list lies over the combo box.
    if (!std::exchange(thumbGrip_, std::nullopt) && pointerWasIn_ && item) {
        end(item);
    }
}

void PopupList::onMotion(const wxMouseEvent& event) {
    if (thumbGrip_) {
        const int room = GetClientSize().y - 2 - getThumb().height;
        const int hidden = getContentHeight() - (GetClientSize().y - 2);
        scrollTo((event.GetPosition().y - 1 - *thumbGrip_) * hidden / std::max(room, 1));
    } else if (const auto item = findItem(event.GetPosition())) {
        pointerWasIn_ = true;
        highlighted_ = item;
        Refresh();
    }
}

bool PopupList::handleKey(int key) {
    if (items_.empty()) {
        return false;
    }
    const std::size_t last = items_.size() - 1;
    const std::size_t now = highlighted_.value_or(0);
    switch (key) {
        case WXK_UP:
        case WXK_NUMPAD_UP:
            highlight(now - (now > 0 ? 1 : 0));
            return true;
        case WXK_DOWN:
        case WXK_NUMPAD_DOWN:
            highlight(highlighted_ ? std::min(now + 1, last) : 0);
            return true;
        case WXK_PAGEUP:
        case WXK_NUMPAD_PAGEUP:
            highlight(now - std::min(now, kPage));
            return true;
        case WXK_PAGEDOWN:
        case WXK_NUMPAD_PAGEDOWN:
            highlight(std::min(now + kPage, last));
            return true;
        case WXK_HOME:
        case WXK_NUMPAD_HOME:
            highlight(0);
            return true;
        case WXK_END:
        case WXK_NUMPAD_END:
            highlight(last);
            return true;
        case WXK_RETURN:
        case WXK_NUMPAD_ENTER:
        case WXK_SPACE:
            end(highlighted_);
            return true;
        default:
            return false;
    }
}

void PopupList::highlight(std::size_t item) {
    highlighted_ = item;
    const int top = static_cast<int>(item) * getRowHeight();
    const int shown = GetClientSize().y - 2;
    scrollTo(std::clamp(offset_, top + getRowHeight() - shown, top));
    Refresh();
}

int PopupList::getRowHeight() const {
    return FromDIP(skin().controlHeight - 2);
}

int PopupList::getContentHeight() const {
    return getRowHeight() * static_cast<int>(std::max<std::size_t>(items_.size(), 1));
}

void PopupList::scrollTo(int offset) {
    offset_ = std::clamp(offset, 0, std::max(0, getContentHeight() - (GetClientSize().y - 2)));
    Refresh();
}

wxRect PopupList::getThumb() const {
    const int shown = GetClientSize().y - 2;
    const int content = getContentHeight();
    if (content <= shown) {
        return {};
    }
    const int width = FromDIP(kScrollBar);
    const int height = std::max(FromDIP(20), shown * shown / content);
    const int y = (shown - height) * offset_ / (content - shown);
    return {GetClientSize().x - 1 - width, 1 + y, width, height};
}

Optional<std::size_t> PopupList::findItem(wxPoint position) const {
    if (!GetClientRect().Contains(position)) {
        return {};
    }
    const int item = (position.y - 1 + offset_) / getRowHeight();
    return item >= 0 && static_cast<std::size_t>(item) < items_.size() ? Optional<std::size_t>(item)
                                                                       : std::nullopt;
}

void PopupList::paint(wxGraphicsContext& canvas) {
    const wxRect area = GetClientRect();
    drawBox(canvas, area, 0, skin().field, mix(skin().raised, skin().highlight, 0.3));
    canvas.Clip(1, 1, area.width - 2, area.height - 2);
    const wxRect thumb = getThumb();
    const int width = area.width - 2 - (thumb.IsEmpty() ? 0 : thumb.width);
    for (std::size_t i = 0; i < items_.size(); ++i) {
        wxRect row(1, 1 + static_cast<int>(i) * getRowHeight() - offset_, width, getRowHeight());
        if (!row.Intersects(area)) {
            continue;
        }
        const bool isHighlighted = i == highlighted_;
        if (isHighlighted) {
            canvas.SetPen(*wxTRANSPARENT_PEN);
            canvas.SetBrush(wxBrush(skin().accent));
            canvas.DrawRectangle(row.x, row.y, row.width, row.height);
        }
        drawText(canvas, toWxString(items_[i].label), row.Deflate(FromDIP(kRowPadding) - 1, 0),
                 getItemFont(items_[i], GetFont()),
                 isHighlighted ? skin().accentText : getItemColor(items_[i], skin()));
    }
    if (!thumb.IsEmpty()) {
        drawBox(canvas, wxRect(thumb).Deflate(FromDIP(2), FromDIP(2)), FromDIP(2),
                thumbGrip_ ? skin().highlight : mix(skin().raised, skin().highlight, 0.4), {});
    }
}

}  // namespace tavrin::widgets
