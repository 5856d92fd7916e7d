#pragma once

#include "base/pipeline/Performer.h"
#include "base/settings/Settings.h"
#include "foundation/SharedPtr.h"
#include "foundation/String.h"
#include "gui/components/PropertySheetHost.h"
#include "services/colorkit/ColorMapping.h"

#include <wx/frame.h>
#include <wx/weakref.h>

#include <vector>

namespace tavrin::app {

/// The long-lived objects of the editor, in the order in which they need each other. Main thread.
class ImageEditorApp {
public:
    /// Shows the main window, and opens an image in it when exactly one is named.
    explicit ImageEditorApp(std::vector<String> arguments);
    /// Ends the main window, if it still is.
    ~ImageEditorApp();
    ImageEditorApp(const ImageEditorApp&) = delete;
    ImageEditorApp& operator=(const ImageEditorApp&) = delete;

private:
    void open(const std::vector<String>& names);

    SharedPtr<settings::Settings> settings_ = std::make_shared<settings::Settings>();
    SharedPtr<colorkit::ColorMapping> colorMapping_ = std::make_shared<colorkit::ColorMapping>();
    pipeline::Performer performer_{*settings_, *colorMapping_};
    SharedPtr<components::PropertySheetHost> propertySheetHost_ =
        std::make_shared<components::PropertySheetHost>();
    wxWeakRef<wxFrame> mainFrame_;  ///< ends when the user closes it
};

/// Runs the editor until its last window is closed; the program's exit code. wxWidgets has not been
/// started.
int run(const std::vector<String>& arguments);

}  // namespace tavrin::app
