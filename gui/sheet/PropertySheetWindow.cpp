#include "gui/sheet/PropertySheetWindow.h"

#include "gui/sheet/PropertySheet.h"
#include "gui/sheet/SkinColors.h"
#include "gui/sheet/WrappedQtWidget.h"

namespace tavrin::sheet {

wxWindow* createPropertySheetWindow(wxWindow* parent, const PropertySheetOptions& options) {
    auto model = makeEntityPathModel(options.entity);
    auto* window =
        new WrappedQtWidget<PropertySheet>(parent, std::move(model), options.title, options.host);
    PropertySheet& sheet = *window->getWidget();
    sheet.setObjectName(toQt(options.objectName));
    forcePolishStyleRecursive(sheet);
    if (options.onCollapsibleStateChanged) {
        QObject::connect(&sheet, &PropertySheet::collapsibleStateChanged, &sheet,
                         options.onCollapsibleStateChanged);
    }
    return window;
}

}  // namespace tavrin::sheet
