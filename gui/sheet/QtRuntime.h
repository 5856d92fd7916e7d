#pragma once

#include <wx/modalhook.h>

#include <memory>

class QApplication;
class wxIdleEvent;

namespace tavrin::sheet {

/// Qt beside wxWidgets in one process: both are driven by the one event loop of wxWidgets. One for
/// the whole run, made when wxWidgets has started and ended when all its windows are gone. Main
/// thread.
class QtRuntime : private wxModalDialogHook {
public:
    /// Makes both libraries use X11 and their own dark looks. Before anything else of them runs,
    /// and while there is only one thread.
    static void prepareEnvironment();

    /// Takes font and scale from wxWidgets.
    QtRuntime();
    /// Takes the content from what QtHosts are left.
    ~QtRuntime() override;
    QtRuntime(const QtRuntime&) = delete;
    QtRuntime& operator=(const QtRuntime&) = delete;

private:
    void onIdle(wxIdleEvent& event);
    int Enter(wxDialog* dialog) override;
    void Exit(wxDialog* dialog) override;

    int modalDialogs_ = 0;
    std::unique_ptr<QApplication> application_;
};

}  // namespace tavrin::sheet
