#pragma once

#include "foundation/SharedPtr.h"
#include "gui/components/IViewportHost.h"
#include "gui/sheet/IPropertySheetHost.h"

class wxWindow;

namespace tavrin::components {

/// Serves the property sheets of the program: dialogs, and what they see of the displayed image
/// through a viewport host. Without one there is nothing to see. Main thread.
class PropertySheetHost final : public sheet::IPropertySheetHost {
public:
    /// The window that dialogs belong to; null for none. Outlives the host or is taken back.
    void setWindow(wxWindow* window) { window_ = window; }
    /// Null takes it away; registrations with the one before then mean nothing any more.
    void setViewportHost(SharedPtr<INotifiableViewportHost> viewportHost) {
        viewportHost_ = std::move(viewportHost);
    }
    /// Null without one.
    INotifiableViewportHost* getViewportHost() const { return viewportHost_.get(); }

    Optional<Path> chooseFile(const String& title, const Path& current,
                              const String& extension) override;
    Optional<sheet::StopHistogram> getHistogram(int operatorId) override;
    CallbackLifetime addHistogramObserver(Function<void()> observer) override;
    bool canPickColor() const override;
    CallbackLifetime pickColor(int operatorId,
                               Function<void(const Optional<CompressedRgb>&)> onPicked) override;
    void showError(const String& message) override;

private:
    wxWindow* window_ = nullptr;
    SharedPtr<INotifiableViewportHost> viewportHost_;
};

}  // namespace tavrin::components
