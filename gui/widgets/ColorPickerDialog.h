#pragma once

#include "foundation/Color.h"
#include "foundation/Function.h"
#include "foundation/String.h"
#include "gui/widgets/ColorWheel.h"
#include "gui/widgets/Spinner.h"
#include "gui/widgets/TextField.h"

#include <wx/dialog.h>

#include <array>
#include <utility>

namespace tavrin::widgets {

/// Asks for a colour of linear components, which may be above 1: then the wheel and the 8-bit
/// fields show the colour with its largest component as 1, and change it at its brightness. Main
/// thread.
class ColorPickerDialog final : public wxDialog {
public:
    ColorPickerDialog(wxWindow* parent, const String& title, const Rgb& color);

    /// Called while the user changes the colour, before it is accepted.
    void callOnChange(Function<void(const Rgb&)> callback) { onChange_ = std::move(callback); }
    const Rgb& getColor() const { return color_; }
    /// Whether the user accepts the colour, which then is among the recent ones.
    bool showModal();

private:
    /// Where a change comes from, which is not set anew by it.
    enum class Source { Program, Wheel, Linear, Bytes, Hex };

    void build();
    wxSizer* makeFields();
    wxSizer* makeSwatches();
    wxSizer* makeButtons();
    void change(const Rgb& color, Source source);
    void show(Source source);
    void onWheel(const Hsv& color);
    void onBytes();
    void onHex(const String& text);
    void onKey(wxKeyEvent& event);

    Rgb initial_;
    Rgb color_;
    float scale_ = 1.0f;  ///< of the colour to the one of the wheel and of the 8-bit fields
    ColorWheel* wheel_ = nullptr;
    wxWindow* preview_ = nullptr;
    std::array<Spinner*, 3> linear_{};
    std::array<Spinner*, 3> bytes_{};
    TextField* hex_ = nullptr;
    Function<void(const Rgb&)> onChange_;
};

}  // namespace tavrin::widgets
