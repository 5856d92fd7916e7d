#pragma once

#include "foundation/CallbackLifetime.h"
#include "foundation/Function.h"
#include "foundation/SharedPtr.h"
#include "foundation/data/Entity.h"
#include "foundation/data/UiAttributes.h"

#include <cstddef>
#include <vector>

namespace tavrin::sheet {

/// What a sheet shows of an entity: a switch and a list of objects, which it changes in place. Main
/// thread.
class EntityPathModel {
public:
    /// Throws an Exception when the entity has no property of one of these names.
    EntityPathModel(SharedPtr<Entity> entity, String switchName, String listName);

    bool isOn() const;
    void setOn(bool isOn);
    const GenericList& getList() const;
    /// The menus of the list.
    const Attributes& getListAttributes() const;
    /// However much the action does, it is one change.
    void changeList(const UiListAction& action);

    /// What the entity says about whether they may be edited now.
    bool isSwitchEditable() const { return isEditable(switchName_); }
    bool isListEditable() const { return isEditable(listName_); }

    /// Called after every change of any property of the entity, as long as the answer lives.
    [[nodiscard]] std::vector<CallbackLifetime> addObserver(const Function<void()>& callback);

private:
    const Attributes& getAttributes(const String& property) const;
    bool isEditable(const String& property) const;

    SharedPtr<Entity> entity_;
    String switchName_;
    String listName_;
};

/// Of the entity's first switch and its first list. Throws an Exception when it lacks one of them.
SharedPtr<EntityPathModel> makeEntityPathModel(SharedPtr<Entity> entity);

}  // namespace tavrin::sheet
