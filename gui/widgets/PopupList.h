#pragma once

#include "foundation/Function.h"
#include "foundation/Optional.h"
#include "foundation/String.h"
#include "gui/widgets/FloatingWindow.h"
#include "gui/widgets/WheelSteps.h"

#include <cstddef>
#include <vector>

namespace tavrin::widgets {

/// One choice of a combo box.
struct ComboBoxItem {
    String label;
    int id = 0;
    /// Any of these, added: bold; in the colour of what the program makes itself.
    static constexpr int kStrong = 1;
    static constexpr int kColored = 2;
    int flags = 0;
};

/// The font and colour in which an item is drawn on a dark ground.
wxFont getItemFont(const ComboBoxItem& item, const wxFont& font);
wxColour getItemColor(const ComboBoxItem& item, const GuiSkin& skin);

/// The list that a combo box drops down. It holds the mouse while it is shown; the keyboard stays
/// where it is, and the combo box hands on its keys. Main thread.
class PopupList final : public FloatingWindow {
public:
    /// Shows below the owner or, where there is more room, above it. `onEnd` is called once, with
    /// the chosen item or nothing, when the list is no longer shown; it may not end the list. The
    /// items outlive the list.
    PopupList(wxWindow* owner, const std::vector<ComboBoxItem>& items,
              Optional<std::size_t> selected, Function<void(Optional<std::size_t>)> onEnd);
    ~PopupList() override;

    /// False for keys that mean nothing to a list.
    bool handleKey(int key);
    void highlight(std::size_t item);
    Optional<std::size_t> getHighlighted() const { return highlighted_; }
    void end(Optional<std::size_t> chosen);

private:
    void paint(wxGraphicsContext& canvas) override;
    void place(wxWindow* owner);
    void bindMouse();
    void onLeftDown(const wxMouseEvent& event);
    void onLeftUp(const wxMouseEvent& event);
    void onMotion(const wxMouseEvent& event);

    int getRowHeight() const;
    int getContentHeight() const;
    wxRect getThumb() const;
    Optional<std::size_t> findItem(wxPoint position) const;
    void scrollTo(int offset);

    const std::vector<ComboBoxItem>& items_;
    Optional<std::size_t> highlighted_;
    Function<void(Optional<std::size_t>)> onEnd_;
    int offset_ = 0;             // pixels of the content above the window
    Optional<int> thumbGrip_;    // where the thumb is held, from its top
    bool pointerWasIn_ = false;  // since the list has been shown
    WheelSteps wheel_;
};

}  // namespace tavrin::widgets
