#pragma once

#include "foundation/Optional.h"
#include "foundation/String.h"
#include "gui/widgets/CustomControl.h"
#include "gui/widgets/LineEditor.h"
#include "gui/widgets/Tooltip.h"
#include "gui/widgets/WheelSteps.h"

#include <memory>

namespace tavrin::widgets {

/// A number that is dragged or typed. To the right and up is more; Shift is finer and Control
/// coarser by ten. A click opens typing, which takes sums too ("2*1.5"); a double click sets the
/// default. The arrow keys and, while the control has the keyboard, the wheel step.
///
/// Emits wxEVT_SPINCTRLDOUBLE (of wx/spinctrl.h) when the user changes the value, also while it is
/// dragged. The user's values are rounded to the shown decimals; those of the program are kept as
/// they are.
class Spinner : public CustomControl {
public:
    /// Starts with the default. The width is in device-independent pixels; below 50 there are no
    /// arrows. Limits may be infinite. `precision` is the number of decimals shown at most; zeros
    /// at their end are left out. `extra` multiplies the speed of dragging, and 0 is 1; by itself
    /// it is a step for four pixels, where about a hundred steps make the range, or the value where
    /// the range is longer than kLongestRange.
    Spinner(wxWindow* parent, wxWindowID id, int width, float minimum, float maximum,
            float defaultValue, int precision, float extra);
    ~Spinner() override;

    /// As in the constructor. Where the value leaves the new range, it becomes the nearest limit;
    /// `notify` emits the event then.
    void configure(float minimum, float maximum, float defaultValue, int precision, float extra,
                   bool notify);

    float getValue() const { return value_; }
    /// Clamped to the range; NaN is kept and shown. `notify` emits the event, also when the value
    /// is the old one.
    void setValue(float value, bool notify);
    void setTooltip(const String& text);

    /// Longer ranges are treated like infinite ones.
    static constexpr float kLongestRange = 1000.0f;

protected:
    void paint(wxGraphicsContext& canvas) override;
    void onHoldLost() override;
    bool wantsKey(const wxKeyEvent& event) const override;
    wxSize DoGetBestClientSize() const override;

private:
    struct Drag {
        wxPoint last;  // on the screen
        double value;  // not rounded
        float start;
        bool moved = false;
    };

    bool hasShortRange() const;
    double getStep() const;
    double getFactor(const wxKeyboardState& keys) const;
    wxString format(int decimals) const;
    wxRect getTextArea() const;
    wxRect getArrowArea() const;
    void paintBar(wxGraphicsContext& canvas) const;
    void paintArrows(wxGraphicsContext& canvas) const;

    void changeTo(double value);
    void stepBy(double steps);
    void emit();
    void beginTyping(const wxString& text);
    void endTyping(bool accept);

    void bindMouse();
    void onLeftDown(const wxMouseEvent& event);
    void onLeftUp();
    void onDoubleClick(const wxMouseEvent& event);
    void onMotion(const wxMouseEvent& event);
    void onWheel(wxMouseEvent& event);
    void onKeyDown(wxKeyEvent& event);
    bool handleTypingKey(const wxKeyEvent& event);
    bool handleSteppingKey(const wxKeyEvent& event);
    void onCharacter(wxKeyEvent& event);
    wxPoint wrapPointer(wxPoint position);

    float minimum_;
    float maximum_;
    float default_;
    float value_;
    int precision_;
    float extra_;
    int width_;
    Optional<Drag> drag_;
    LineEditor editor_;
    wxString typedBefore_;            // what typing started with
    bool openedByLastClick_ = false;  // typing, so that a double click knows
    double repeatedStep_ = 0.0;       // of the arrow that is held
    DelayedCallback repeat_;
    WheelSteps wheel_;
    std::unique_ptr<Tooltip> tooltip_;
};

}  // namespace tavrin::widgets
