#pragma once

#include "base/pipeline/Performer.h"
#include "base/settings/Settings.h"
#include "foundation/CallbackLifetime.h"
#include "foundation/Flags.h"
#include "foundation/Optional.h"
#include "gui/components/AuiManager.h"
#include "gui/components/AuiNotebook.h"
#include "gui/components/DisplayedImage.h"
#include "gui/components/DrawPanel.h"
#include "gui/components/PassToMainThreadMixin.h"
#include "gui/components/PostprocessPanel.h"
#include "gui/components/PropertySheetHost.h"
#include "gui/widgets/DelayedCallback.h"
#include "gui/widgets/MessageDialog.h"
#include "services/colorkit/ColorMapping.h"

#include <wx/frame.h>

#include <set>
#include <vector>

namespace tavrin::windows {

/// The main window: it shows an image on a canvas beside the panels that finish it, and binds both
/// to the pipeline, which does the work. What it is given outlives it. Main thread.
class MainFrame final : public components::PassToMainThreadMixin<wxFrame>, private CallbacksOwner {
public:
    MainFrame(wxWindow* parent, settings::Settings& settings, colorkit::ColorMapping& colorMapping,
              pipeline::Performer& performer, SharedPtr<components::PropertySheetHost> host);
    ~MainFrame() override;

    components::DrawPanel& getCanvas() const { return *canvas_; }
    components::PostprocessPanel& getPostprocessPanel() const { return *postprocess_; }

private:
    enum class Status : std::uint32_t { Loaded = 1, Modified = 2, Loading = 4, Saving = 8 };

    void buildControls();
    void buildDocking();
    void sizePanes();
    void bindFrame();
    void bindMouse();
    void bindKeyboard();
    void bindLoadOperator();
    void bindSettings();

    void observe(const std::vector<int>& ids, const Function<void()>& handler);
    void setStatus(Status status, bool isSet);
    void reflectStatus();
    void updateTitle();
    void setModified();
    void repaint();
    void showImage();
    void showElement(const image::ElementInfo& element);
    void fitToImage();
    bool onKey(const wxKeyEvent& event);

    void onLoadStarted();
    void onLoadFinished();
    void onLoadFailed(const String& text);
    /// Of a load, to be shown at its end; at another time, of an operator that could not do its
    /// work, shown at once.
    void addWarning(const String& text);
    /// Shows a dialog without buttons until closeOpenDialog() or a click beside it.
    void showWaiting(const String& text);
    void closeOpenDialog();

    settings::Settings& settings_;
    colorkit::ColorMapping& colorMapping_;
    pipeline::Performer& performer_;
    SharedPtr<components::PropertySheetHost> host_;
    Flags<Status> status_;

    Optional<String> warnings_;      ///< of the load that runs
    std::set<String> toldWarnings_;  ///< since the last load, apart from those

    components::DisplayedImage displayed_;
    components::AuiManager docking_;
    components::DrawPanel* canvas_ = nullptr;
    components::AuiNotebook* sidePanel_ = nullptr;
    components::PostprocessPanel* postprocess_ = nullptr;
    widgets::MessageDialog* openDialog_ = nullptr;
    widgets::DelayedCallback titleTimer_;
};

}  // namespace tavrin::windows
