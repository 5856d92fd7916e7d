#pragma once

#include "foundation/Function.h"
#include "foundation/Optional.h"
#include "foundation/String.h"
#include "gui/widgets/CustomControl.h"
#include "gui/widgets/DelayedCallback.h"
#include "gui/widgets/PopupList.h"
#include "gui/widgets/WheelSteps.h"

#include <wx/weakref.h>

#include <vector>

namespace tavrin::widgets {

/// A choice among items, shown in a list that drops down. Main thread.
class ComboBox : public CustomControl {
public:
    /// The width is in device-independent pixels. `onSelect` gets the id of the item that the user
    /// has chosen. `onEvent`, which may be empty, gets each mouse and key event first and says
    /// whether the control leaves it alone. `selectsClosed` lets the arrow keys, letters and, while
    /// the control has the keyboard, the wheel choose without opening the list.
    ComboBox(wxWindow* parent, wxWindowID id, int width, Function<void(int id)> onSelect,
             Function<bool(const wxEvent&)> onEvent, bool selectsClosed);
    ~ComboBox() override;

    /// Replaces the items; none is selected afterwards.
    void setData(std::vector<ComboBoxItem> items);
    const std::vector<ComboBoxItem>& getData() const { return items_; }
    /// An index that is not there selects nothing. `notify` calls the selection callback, also when
    /// the item is the old one.
    void selectIndex(int index, bool notify);
    Optional<int> getSelectedIndex() const;
    Optional<int> getSelectedId() const;
    bool isOpen() const { return popup_ != nullptr; }

protected:
    void paint(wxGraphicsContext& canvas) override;
    void onHoldLost() override;
    bool wantsKey(const wxKeyEvent& event) const override;
    wxSize DoGetBestClientSize() const override;

private:
    void bindEvents();
    void open();
    void close();
    void onPopupEnd(Optional<std::size_t> chosen);
    bool handleKey(const wxKeyEvent& event);
    bool handleCharacter(wxChar character);
    void onWheel(wxMouseEvent& event);
    void moveSelection(int steps);
    Optional<std::size_t> findTyped(std::size_t from) const;

    int width_;
    Function<void(int)> onSelect_;
    Function<bool(const wxEvent&)> onEvent_;
    bool selectsClosed_;
    std::vector<ComboBoxItem> items_;
    Optional<std::size_t> selected_;
    wxWeakRef<PopupList> popup_;
    String typed_;  // the first letters of the item that is looked for
    DelayedCallback forgetTyped_;
    WheelSteps wheel_;
};

}  // namespace tavrin::widgets
