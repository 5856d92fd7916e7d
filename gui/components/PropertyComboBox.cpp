#include "gui/components/PropertyComboBox.h"

#include "gui/widgets/Conversions.h"
#include "services/postcore/PropertyText.h"

#include <wx/control.h>
#include <wx/dcclient.h>

#include <algorithm>

namespace tavrin::components {
namespace {

using postcore::Property;

// What the frame and the arrow of the control take, in device-independent pixels.
constexpr int kFrameWidth = 35;

// How many callbacks about unknown values run, of all combo boxes together. Such a callback may
// show a dialog, whose event loop brings what it has written itself. Main thread.
int unknownValueDepth = 0;

class DepthScope {
public:
    DepthScope() { ++unknownValueDepth; }
    ~DepthScope() { --unknownValueDepth; }
    DepthScope(const DepthScope&) = delete;
    DepthScope& operator=(const DepthScope&) = delete;
};

}  // namespace

PropertyComboBox::PropertyComboBox(wxWindow* parent, settings::Settings& settings, int id,
                                   int width)
    : PassToMainThreadMixin(
          parent, wxID_ANY, width, [this](int item) { write(item); },
          Function<bool(const wxEvent&)>(), true),
      settings_(settings),
      id_(id),
      formatLabel_(postcore::getConfSerialization) {
    bindAll();
}

void PropertyComboBox::bindAll() {
    keep(settings_.addObserver(id_, doPassToMainThread(Function<void(int, const Property&)>(
                                        [this](int, const Property&) { follow(); }))));
}

void PropertyComboBox::setItems(const std::vector<Property>& values) {
    values_ = values;
    wxClientDC dc(this);
    dc.SetFont(GetFont());
    const int room = std::max(GetSize().x - FromDIP(kFrameWidth), 0);
    std::vector<widgets::ComboBoxItem> items;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const wxString label = widgets::toWxString(formatLabel_(values[i]));
        items.push_back({widgets::toString(wxControl::Ellipsize(label, dc, wxELLIPSIZE_MIDDLE, room,
                                                                wxELLIPSIZE_FLAGS_NONE)),
                         static_cast<int>(i)});
    }
    setData(std::move(items));
    Refresh();
}

const Property* PropertyComboBox::getSelectedValue() const {
    const auto item = getSelectedId();
    return item ? &values_[static_cast<std::size_t>(*item)] : nullptr;
}

void PropertyComboBox::follow() {
    // What was told may have been replaced meanwhile.
    const Property value = settings_.get(id_);
    const auto found = std::ranges::find(values_, value);
    if (found != values_.end()) {
        selectIndex(static_cast<int>(found - values_.begin()), false);
    } else if (unknownValueDepth == 0 && onUnknownValue_) {
        const DepthScope scope;
        // A copy, as the callback may end this object.
        const Function<void(int, const Property&)> callback = onUnknownValue_;
        callback(id_, value);
    }
}

void PropertyComboBox::write(int item) {
    settings_.set(id_, values_[static_cast<std::size_t>(item)]);
    Refresh(true);
    Update();
}

bool PropertyComboBox::Enable(bool enable) {
    const bool hasChanged = PassToMainThreadMixin::Enable(enable);
    Refresh(true);
    return hasChanged;
}

}  // namespace tavrin::components
