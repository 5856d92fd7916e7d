#include "gui/widgets/LayOutAround.h"

#include <wx/scrolwin.h>

namespace tavrin::widgets {

void layOutAround(wxWindow& window) {
    for (wxWindow* around = &window; around != nullptr; around = around->GetParent()) {
        around->InvalidateBestSize();
        if (dynamic_cast<wxScrollHelper*>(around) != nullptr) {
            around->Layout();
            around->FitInside();
            return;
        }
        around->Layout();
        if (around->IsTopLevel()) {
            return;
        }
    }
}

}  // namespace tavrin::widgets
