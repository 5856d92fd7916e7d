#include "gui/widgets/ComboBox.h"

#include "foundation/Text.h"
#include "gui/widgets/Conversions.h"

#include <algorithm>
#include <utility>

namespace tavrin::widgets {
namespace {

constexpr int kArrowWidth = 18;
constexpr int kTypingTime = 1000;  // milliseconds between letters of one word

}  // namespace

ComboBox::ComboBox(wxWindow* parent, wxWindowID id, int width, Function<void(int id)> onSelect,
                   Function<bool(const wxEvent&)> onEvent, bool selectsClosed)
    : CustomControl(parent, id),
      width_(width),
      onSelect_(std::move(onSelect)),
      onEvent_(std::move(onEvent)),
      selectsClosed_(selectsClosed) {
    SetName("ComboBox");
    SetInitialSize();
    forgetTyped_ = [this] { typed_ = {}; };
    bindEvents();
}

ComboBox::~ComboBox() {
    if (popup_) {
        popup_->Destroy();
    }
}

void ComboBox::bindEvents() {
    Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent&) {
        SetFocus();
        open();
    });
    Bind(wxEVT_LEFT_DCLICK, [this](wxMouseEvent&) { open(); });
    Bind(wxEVT_MOUSEWHEEL, &ComboBox::onWheel, this);
    Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& event) {
        event.Skip();
        close();
    });
    Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
        if (!handleKey(event)) {
            event.Skip();
        }
    });
    Bind(wxEVT_CHAR, [this](wxKeyEvent& event) {
        if (event.ControlDown() || event.AltDown() || !handleCharacter(event.GetUnicodeKey())) {
            event.Skip();
        }
    });
    if (onEvent_) {
        const auto offer = [this](wxEvent& event) {
            if (!onEvent_(event)) {
                event.Skip();
            }
        };
        // Bound last, called first.
        for (const auto& type : {wxEVT_LEFT_DOWN, wxEVT_LEFT_DCLICK, wxEVT_LEFT_UP,
                                 wxEVT_RIGHT_DOWN, wxEVT_RIGHT_UP, wxEVT_MOUSEWHEEL}) {
            Bind(type, offer);
        }
        Bind(wxEVT_KEY_DOWN, offer);
    }
}

void ComboBox::setData(std::vector<ComboBoxItem> items) {
    close();
    items_ = std::move(items);
    selected_.reset();
    Refresh();
}

void ComboBox::selectIndex(int index, bool notify) {
    const bool isThere = index >= 0 && static_cast<std::size_t>(index) < items_.size();
    selected_ = isThere ? Optional<std::size_t>(index) : std::nullopt;
    Refresh();
    if (notify && selected_ && onSelect_) {
        // A copy, as the callback may end this object.
        const Function<void(int)> callback = onSelect_;
        callback(items_[*selected_].id);
    }
}

Optional<int> ComboBox::getSelectedIndex() const {
    return selected_ ? Optional<int>(static_cast<int>(*selected_)) : std::nullopt;
}

Optional<int> ComboBox::getSelectedId() const {
    return selected_ ? Optional<int>(items_[*selected_].id) : std::nullopt;
}

void ComboBox::open() {
    if (!isOpen() && !items_.empty()) {
        popup_ = new PopupList(this, items_, selected_,
                               [this](Optional<std::size_t> chosen) { onPopupEnd(chosen); });
        Refresh();
    }
}

void ComboBox::close() {
    if (isOpen()) {
        popup_->end({});
    }
}

void ComboBox::onPopupEnd(Optional<std::size_t> chosen) {
    // The list is ended when it no longer handles the event that has led here.
    const wxWeakRef<wxWindow> list = std::exchange(popup_, nullptr).get();
    CallAfter([list] {
        if (list) {
            list->Destroy();
        }
    });
    Refresh();
    if (chosen && chosen != selected_) {
        CallAfter([this, index = *chosen, id = items_[*chosen].id] {
            if (index < items_.size() && items_[index].id == id) {
                selectIndex(static_cast<int>(index), true);
            }
        });
    }
}

void ComboBox::onHoldLost() {
    close();
}

void ComboBox::moveSelection(int steps) {
    const int last = static_cast<int>(items_.size()) - 1;
    const int now = getSelectedIndex().value_or(-1);
    const int next = std::clamp(now + steps, 0, std::max(last, 0));
    if (next <= last && next != now) {
        selectIndex(next, true);
    }
}

void ComboBox::onWheel(wxMouseEvent& event) {
    if (!HasFocus() || isOpen() || !selectsClosed_) {
        event.Skip();
        return;
    }
    if (const int steps = wheel_.take(event); steps != 0) {
        moveSelection(-steps);
    }
}

bool ComboBox::wantsKey(const wxKeyEvent& event) const {
    const int key = event.GetKeyCode();
    if (isOpen()) {
        return key != WXK_TAB;
    }
    const bool isArrow =
        key == WXK_UP || key == WXK_DOWN || key == WXK_NUMPAD_UP || key == WXK_NUMPAD_DOWN;
    const bool isCharacter = event.GetUnicodeKey() > 32 && event.GetUnicodeKey() != 127;
    return !event.ControlDown() &&
           (isArrow || (!event.AltDown() && (isCharacter || key == WXK_SPACE || key == WXK_F4)));
}

bool ComboBox::handleKey(const wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    const bool isUp = key == WXK_UP || key == WXK_NUMPAD_UP;
    const bool isDown = key == WXK_DOWN || key == WXK_NUMPAD_DOWN;
    if (isOpen()) {
        if (key == WXK_ESCAPE || key == WXK_F4 || ((isUp || isDown) && event.AltDown())) {
            close();
            return true;
        }
        return popup_->handleKey(key);
    }
    if (event.ControlDown()) {
        return false;
    }
    const bool opens = event.AltDown() ? isUp || isDown : key == WXK_F4 || key == WXK_SPACE;
    if (opens || ((isUp || isDown) && !selectsClosed_)) {
        open();
        return true;
    }
    if (isUp || isDown) {
        moveSelection(isUp ? -1 : 1);
    }
    return isUp || isDown;
}

bool ComboBox::handleCharacter(wxChar character) {
    if (character <= 32 || character == 127 || items_.empty()) {
        return false;
    }
    // The same letter again goes to the next item, another one makes the word longer.
    const String letter = Str::toLowerCase(toString(wxString(character)));
    const bool isAgain = typed_ == letter;
    const bool isFirst = typed_.isEmpty() || isAgain;
    typed_ = isAgain ? letter : typed_ + letter;
    forgetTyped_.scheduleDelayed(kTypingTime);
    const auto now = isOpen() ? popup_->getHighlighted() : selected_;
    const auto found = findTyped(now.value_or(items_.size() - 1) + (isFirst ? 1 : 0));
    if (found && isOpen()) {
        popup_->highlight(*found);
    } else if (found && selectsClosed_ && found != selected_) {
        selectIndex(static_cast<int>(*found), true);
    }
    return true;
}

Optional<std::size_t> ComboBox::findTyped(std::size_t from) const {
    for (std::size_t i = 0; i < items_.size(); ++i) {
        const std::size_t item = (from + i) % items_.size();
        if (Str::toLowerCase(items_[item].label).startsWith(typed_)) {
            return item;
        }
    }
    return {};
}

wxSize ComboBox::DoGetBestClientSize() const {
    return FromDIP(wxSize(width_, skin().controlHeight));
}

void ComboBox::paint(wxGraphicsContext& canvas) {
    const wxRect area = GetClientRect();
    drawField(canvas, *this, area, skin(), getBoxState(isOpen()));
    const int arrow = FromDIP(kArrowWidth);
    const int padding = FromDIP(skin().padding);
    if (selected_) {
        const ComboBoxItem& item = items_[*selected_];
        drawText(canvas, toWxString(item.label),
                 {area.x + padding, area.y, area.width - padding - arrow, area.height},
                 getItemFont(item, GetFont()),
                 IsEnabled() ? getItemColor(item, skin()) : skin().textDisabled);
    }
    drawArrow(canvas, {area.x + area.width - arrow / 2.0 - 1, area.y + area.height / 2.0},
              FromDIP(8), Direction::Down, IsEnabled() ? skin().textWeak : skin().raised,
              FromDIP(3) / 2.0);
}

}  // namespace tavrin::widgets
