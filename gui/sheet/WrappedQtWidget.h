#pragma once

#include "gui/sheet/QtHost.h"

#include <QWidget>
#include <utility>

namespace tavrin::sheet {

/// A QtHost that makes its widget, a T, from the arguments after its parent.
template <class T>
class WrappedQtWidget : public QtHost {
public:
    template <class... Arguments>
    explicit WrappedQtWidget(wxWindow* parent, Arguments&&... arguments)
        : QtHost(parent, wxID_ANY, std::make_unique<T>(std::forward<Arguments>(arguments)...)) {}

    /// Null after release().
    T* getWidget() const { return static_cast<T*>(getContent()); }
};

}  // namespace tavrin::sheet
