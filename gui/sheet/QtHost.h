#pragma once

#include <wx/nativewin.h>

#include <memory>

class QWidget;

namespace tavrin::sheet {

/// A window with a Qt widget in it, which fills it and behaves like a part of it: mouse and
/// keyboard, Tab in both directions, showing, disabling, the sizes that it asks for. Keys and turns
/// of the wheel that the widget does not want work as elsewhere in the window. Modal dialogs of
/// wxWidgets block it. Main thread; a QtRuntime must live.
class QtHost : public wxNativeWindow {
public:
    /// Never null.
    QtHost(wxWindow* parent, wxWindowID id, std::unique_ptr<QWidget> content);
    ~QtHost() override;

    /// Null after release().
    QWidget* getContent() const;
    /// Deletes the widget and leaves an empty window.
    void release();
    /// The same for all that there are.
    static void releaseAll();

    bool Show(bool show = true) override;
    wxSize GetMinSize() const override;
    wxSize GetMaxSize() const override;

protected:
    void DoEnable(bool enable) override;
    wxSize DoGetBestSize() const override;

private:
    class Embedding;

    std::unique_ptr<Embedding> embedding_;
};

}  // namespace tavrin::sheet
