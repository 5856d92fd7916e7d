#pragma once

#include "gui/widgets/DelayedCallback.h"
#include "gui/widgets/GuiSkin.h"

#include <wx/graphics.h>
#include <wx/window.h>

#include <cstddef>
#include <vector>

namespace tavrin::widgets {

/// One line of text that is typed into a control: its caret, selection, keys and clipboard. The
/// control, which outlives it, hands on its events and lets it draw; the editor asks it to repaint.
/// Main thread.
class LineEditor {
public:
    explicit LineEditor(wxWindow& owner) : owner_(owner) {}

    /// Starts with a text, all of it selected.
    void begin(const wxString& text);
    void end();
    bool isActive() const { return active_; }

    const wxString& getText() const { return text_; }
    /// Replaces what is selected.
    void insert(const wxString& text);
    void selectAll();

    /// Whether a key with a modifier is one that edits.
    static bool isEditingKey(const wxKeyEvent& event);
    /// Of a key that has gone down; false when it is none that edits.
    bool handleKey(const wxKeyEvent& event);
    /// Of a character event; false when it is no character that shows.
    bool handleCharacter(const wxKeyEvent& event);
    /// Sets the caret where the mouse is, in client coordinates, or extends the selection to there.
    void pointAt(int x, bool select);

    /// Draws text, selection and caret, scrolled so that the caret shows.
    void paint(wxGraphicsContext& canvas, const wxRect& area, const wxFont& font,
               const GuiSkin& skin);

private:
    std::size_t selectionStart() const { return std::min(caret_, anchor_); }
    std::size_t selectionEnd() const { return std::max(caret_, anchor_); }
    void moveCaret(std::size_t position, bool select);
    void erase(std::size_t from, std::size_t to);
    std::size_t findWord(bool forward) const;
    bool handleShortcut(int key);
    void copy() const;
    void paste();
    void showCaret();
    void scrollToCaret(int width);

    wxWindow& owner_;
    wxString text_;
    std::size_t caret_ = 0;
    std::size_t anchor_ = 0;  // the other end of the selection
    bool active_ = false;
    bool caretShown_ = false;
    DelayedCallback blink_;
    // Of the last drawing: where characters begin, and the end of the last, from the text's start.
    std::vector<double> stops_{0.0};
    double scroll_ = 0.0;
    int left_ = 0;
};

}  // namespace tavrin::widgets
