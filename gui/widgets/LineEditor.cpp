#include "gui/widgets/LineEditor.h"

#include <wx/brush.h>
#include <wx/clipbrd.h>
#include <wx/dataobj.h>
#include <wx/pen.h>

#include <algorithm>
#include <cmath>

namespace tavrin::widgets {
namespace {

constexpr int kBlink = 530;  // milliseconds

wxString keepPrintable(const wxString& text) {
    wxString kept;
    for (const wxUniChar character : text) {
        if (character >= 32 && character != 127) {
            kept += character;
        }
    }
    return kept;
}

}  // namespace

void LineEditor::begin(const wxString& text) {
    text_ = text;
    active_ = true;
    scroll_ = 0.0;
    blink_ = [this] {
        caretShown_ = !caretShown_;
        owner_.Refresh();
        blink_.scheduleDelayed(kBlink);
    };
    selectAll();
}

void LineEditor::end() {
    active_ = false;
    blink_.cancel();
    owner_.Refresh();
}

void LineEditor::selectAll() {
    anchor_ = 0;
    moveCaret(text_.size(), true);
}

void LineEditor::showCaret() {
    caretShown_ = true;
    blink_.scheduleDelayed(kBlink);
    owner_.Refresh();
}

void LineEditor::moveCaret(std::size_t position, bool select) {
    caret_ = std::min(position, text_.size());
    if (!select) {
        anchor_ = caret_;
    }
    showCaret();
}

void LineEditor::erase(std::size_t from, std::size_t to) {
    text_.erase(from, to - from);
    moveCaret(from, false);
}

void LineEditor::insert(const wxString& text) {
    const std::size_t start = selectionStart();
    const wxString printable = keepPrintable(text);
    erase(start, selectionEnd());
    text_.insert(start, printable);
    moveCaret(start + printable.size(), false);
}

std::size_t LineEditor::findWord(bool forward) const {
    const auto isSpace = [&](std::size_t i) { return wxIsspace(text_[i]); };
    std::size_t place = caret_;
    if (forward) {
        while (place < text_.size() && !isSpace(place)) {
            ++place;
        }
        while (place < text_.size() && isSpace(place)) {
            ++place;
        }
    } else {
        while (place > 0 && isSpace(place - 1)) {
            --place;
        }
        while (place > 0 && !isSpace(place - 1)) {
            --place;
        }
    }
    return place;
}

bool LineEditor::handleKey(const wxKeyEvent& event) {
    const bool select = event.ShiftDown();
    const bool byWord = event.ControlDown();
    const bool hasSelection = caret_ != anchor_;
    const std::size_t previous = byWord ? findWord(false) : caret_ - (caret_ > 0 ? 1 : 0);
    const std::size_t next = byWord ? findWord(true) : caret_ + (caret_ < text_.size() ? 1 : 0);
    switch (event.GetKeyCode()) {
        case WXK_LEFT:
        case WXK_NUMPAD_LEFT:
            moveCaret(hasSelection && !select ? selectionStart() : previous, select);
            return true;
        case WXK_RIGHT:
        case WXK_NUMPAD_RIGHT:
            moveCaret(hasSelection && !select ? selectionEnd() : next, select);
            return true;
        case WXK_HOME:
        case WXK_NUMPAD_HOME:
            moveCaret(0, select);
            return true;
        case WXK_END:
        case WXK_NUMPAD_END:
            moveCaret(text_.size(), select);
            return true;
        case WXK_BACK:
            erase(hasSelection ? selectionStart() : previous, selectionEnd());
            return true;
        case WXK_DELETE:
        case WXK_NUMPAD_DELETE:
            erase(selectionStart(), hasSelection ? selectionEnd() : next);
            return true;
        default:
            return event.ControlDown() && !event.AltDown() && handleShortcut(event.GetKeyCode());
    }
}

bool LineEditor::isEditingKey(const wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    const bool isMove = key == WXK_LEFT || key == WXK_RIGHT || key == WXK_HOME || key == WXK_END ||
                        key == WXK_BACK || key == WXK_DELETE;
    return event.ControlDown() && !event.AltDown() &&
           (isMove || key == 'A' || key == 'C' || key == 'X' || key == 'V');
}

bool LineEditor::handleShortcut(int key) {
    switch (key) {
        case 'A':
            selectAll();
            return true;
        case 'C':
            copy();
            return true;
        case 'X':
            copy();
            insert("");
            return true;
        case 'V':
            paste();
            return true;
        default:
            return false;
    }
}

bool LineEditor::handleCharacter(const wxKeyEvent& event) {
    const wxChar character = event.GetUnicodeKey();
    if (character < 32 || character == 127 || event.GetModifiers() == wxMOD_CONTROL ||
        event.GetModifiers() == wxMOD_ALT) {
        return false;
    }
    insert(wxString(character));
    return true;
}

void LineEditor::copy() const {
    if (caret_ == anchor_ || !wxTheClipboard->Open()) {
        return;
    }
    wxTheClipboard->SetData(
        new wxTextDataObject(text_.Mid(selectionStart(), selectionEnd() - selectionStart())));
    wxTheClipboard->Close();
}

void LineEditor::paste() {
    wxTextDataObject data;
    if (!wxTheClipboard->Open()) {
        return;
    }
    const bool isText = wxTheClipboard->GetData(data);
    wxTheClipboard->Close();
    if (isText) {
        insert(data.GetText());
    }
}

void LineEditor::pointAt(int x, bool select) {
    const double place = x - left_ + scroll_;
    std::size_t nearest = 0;
    for (std::size_t i = 1; i < stops_.size(); ++i) {
        if (std::abs(stops_[i] - place) < std::abs(stops_[nearest] - place)) {
            nearest = i;
        }
    }
    moveCaret(nearest, select);
}

void LineEditor::scrollToCaret(int width) {
    const double caret = stops_[caret_];
    scroll_ = std::clamp(scroll_, caret - width + 1, caret);
    scroll_ = std::clamp(scroll_, 0.0, std::max(0.0, stops_.back() - width + 1));
}

void LineEditor::paint(wxGraphicsContext& canvas, const wxRect& area, const wxFont& font,
                       const GuiSkin& skin) {
    canvas.SetFont(font, skin.text);
    wxArrayDouble widths;
    canvas.GetPartialTextExtents(text_, widths);
    stops_.assign(1, 0.0);
    stops_.insert(stops_.end(), widths.begin(), widths.end());
    stops_.resize(text_.size() + 1, stops_.back());
    left_ = area.x;
    scrollToCaret(area.width);
    double height = 0.0;
    canvas.GetTextExtent("0", nullptr, &height);
    const double x = area.x - scroll_;
    const double y = area.y + std::floor((area.height - height) / 2);
    canvas.PushState();
    canvas.Clip(area.x - 1, area.y, area.width + 2, area.height);
    if (caret_ != anchor_) {
        canvas.SetPen(*wxTRANSPARENT_PEN);
        canvas.SetBrush(wxBrush(skin.accent));
        canvas.DrawRectangle(x + stops_[selectionStart()], y,
                             stops_[selectionEnd()] - stops_[selectionStart()], height);
    }
    canvas.DrawText(text_, x, y);
    if (caretShown_) {
        canvas.SetPen(*wxTRANSPARENT_PEN);
        canvas.SetBrush(wxBrush(skin.text));
        canvas.DrawRectangle(std::floor(x + stops_[caret_]), y, 1, height);
    }
    canvas.PopState();
}

}  // namespace tavrin::widgets
