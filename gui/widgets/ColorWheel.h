#pragma once

#include "foundation/Function.h"
#include "gui/widgets/ColorCoding.h"
#include "gui/widgets/CustomControl.h"

#include <wx/bitmap.h>

#include <utility>

namespace tavrin::widgets {

/// A disc of hues, pale in the middle, and a bar of values beside it. The arrow keys move the mark
/// on the disc, and page up and down that on the bar. Main thread.
class ColorWheel final : public CustomControl {
public:
    explicit ColorWheel(wxWindow* parent);

    const Hsv& getColor() const { return color_; }
    /// Keeps the hue where the colour is grey, and the saturation where it is black: these say
    /// nothing of them. Does not call the callback.
    void setColor(const Hsv& color);
    /// Called while the user changes the colour.
    void callOnChange(Function<void(const Hsv&)> callback) { onChange_ = std::move(callback); }

private:
    enum class Held { Nothing, Disc, Bar };

    void paint(wxGraphicsContext& canvas) override;
    void onHoldLost() override { held_ = Held::Nothing; }
    wxSize DoGetBestClientSize() const override;
    bool wantsKey(const wxKeyEvent& event) const override;

    wxRect getDisc() const;
    wxRect getBar() const;
    void makeDisc();
    void point(wxPoint position);
    void onKeyDown(wxKeyEvent& event);
    void change(const Hsv& color);

    Hsv color_;
    Held held_ = Held::Nothing;
    wxBitmap disc_;
    float discValue_ = -1.0f;  // of the picture
    Function<void(const Hsv&)> onChange_;
};

}  // namespace tavrin::widgets
