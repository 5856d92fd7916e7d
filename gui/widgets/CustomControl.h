#pragma once

#include "gui/widgets/Drawing.h"
#include "gui/widgets/GuiSkin.h"

#include <wx/control.h>

namespace tavrin::widgets {

/// Base of the controls that draw themselves: it keeps the skin, knows what the pointer and the
/// keyboard do to the control, and moves on at Tab. Main thread.
class CustomControl : public wxControl, public ISkinnable {
public:
    ~CustomControl() override;

    void applySkin(const GuiSkin& skin) override;
    bool AcceptsFocus() const override { return true; }
    bool HasTransparentBackground() override { return false; }

protected:
    CustomControl(wxWindow* parent, wxWindowID id);

    /// Draws the whole client area, of which the parent's background is there already.
    virtual void paint(wxGraphicsContext& canvas) = 0;
    /// Called when the mouse is taken from the control while it is held, and when it gets disabled.
    virtual void onHoldLost() {}

    /// The keys that the control gets before the windows around it take them for commands.
    virtual bool wantsKey(const wxKeyEvent&) const { return false; }

    const GuiSkin& skin() const { return *skin_; }
    bool isHovered() const { return hovered_; }
    /// Takes all of the mouse until letGo().
    void hold();
    void letGo();
    BoxState getBoxState(bool pressed = false) const;
    wxColour getTextColor() const { return IsEnabled() ? skin_->text : skin_->textDisabled; }

    void DoEnable(bool enable) override;
    wxBorder GetDefaultBorder() const override { return wxBORDER_NONE; }

private:
    void onPaint();
    void setHovered(bool hovered);
    void onCharHook(wxKeyEvent& event);
    void onKey(wxKeyEvent& event);

    const GuiSkin* skin_;
    bool hovered_ = false;
};

/// Base of the controls that do one thing when they are clicked, by the mouse or by the space bar.
class ClickableControl : public CustomControl {
protected:
    ClickableControl(wxWindow* parent, wxWindowID id);

    /// May end this object.
    virtual void onClick() = 0;
    bool wantsKey(const wxKeyEvent& event) const override;
    /// Whether Return clicks too; otherwise it is left to the dialog.
    virtual bool clicksOnReturn() const { return true; }
    bool isPressed() const { return pressed_; }

private:
    void onHoldLost() override;
    void setPressed(bool pressed);
    void onLeftDown();
    void onLeftUp();
    void onMotion(const wxMouseEvent& event);
    void onKeyDown(wxKeyEvent& event);
    void onKeyUp(wxKeyEvent& event);

    bool pressed_ = false;
    bool pressedByKey_ = false;
};

}  // namespace tavrin::widgets
