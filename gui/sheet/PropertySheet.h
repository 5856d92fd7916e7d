#pragma once

#include "foundation/CallbackLifetime.h"
#include "foundation/SharedPtr.h"
#include "foundation/String.h"
#include "gui/sheet/EntityPathModel.h"
#include "gui/sheet/IPropertySheetHost.h"

#include <QWidget>
#include <vector>

class QCheckBox;

namespace tavrin::sheet {

class Collapsible;
class ListSection;

/// Shows the switch and the list of an entity and lets the user change them: every change is in the
/// entity at once, and every change of the entity is shown at once. Main thread.
class PropertySheet final : public QWidget {
    Q_OBJECT

public:
    PropertySheet(SharedPtr<EntityPathModel> model, const String& title,
                  SharedPtr<IPropertySheetHost> host);
    ~PropertySheet() override;

    ListSection& getList() const { return *list_; }
    QCheckBox& getSwitch() const { return *switch_; }
    Collapsible& getCollapsible() const { return *collapsible_; }

Q_SIGNALS:
    /// The sheet or a part of it has been opened or closed.
    void collapsibleStateChanged(bool isExpanded);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void showModel();

    SharedPtr<EntityPathModel> model_;
    SharedPtr<IPropertySheetHost> host_;
    Collapsible* collapsible_;
    QCheckBox* switch_;
    ListSection* list_;
    std::vector<CallbackLifetime> observers_;
};

/// Gives the widget and all that is in it their looks anew: after names or properties have changed
/// on which looks may depend.
void forcePolishStyleRecursive(QWidget& widget);

}  // namespace tavrin::sheet
