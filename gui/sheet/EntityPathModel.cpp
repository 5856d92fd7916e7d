#include "gui/sheet/EntityPathModel.h"

#include <utility>

namespace tavrin::sheet {
namespace {

template <class T>
String findFirst(const Entity& entity) {
    const GenericObject& data = entity.getData();
    for (const PropertyDefinition& property : data.getType().getProperties()) {
        if (data.getValue(property.getName()).template get<T>() != nullptr) {
            return property.getName();
        }
    }
    throw Exception("The type \"" + data.getType().getName() +
                    "\" has not both a switch and a list.");
}

}  // namespace

EntityPathModel::EntityPathModel(SharedPtr<Entity> entity, String switchName, String listName)
    : entity_(std::move(entity)),
      switchName_(std::move(switchName)),
      listName_(std::move(listName)) {
    static_cast<void>(isOn());
    static_cast<void>(getList());
}

bool EntityPathModel::isOn() const {
    return entity_->getData().get<bool>(switchName_);
}

void EntityPathModel::setOn(bool isOn) {
    entity_->set(switchName_, isOn);
}

const GenericList& EntityPathModel::getList() const {
    return entity_->getData().get<GenericList>(listName_);
}

const Attributes& EntityPathModel::getListAttributes() const {
    return getAttributes(listName_);
}

void EntityPathModel::changeList(const UiListAction& action) {
    entity_->modify<GenericList>(listName_, action);
}

std::vector<CallbackLifetime> EntityPathModel::addObserver(const Function<void()>& callback) {
    std::vector<CallbackLifetime> lifetimes;
    for (const PropertyDefinition& property : entity_->getData().getType().getProperties()) {
        lifetimes.push_back(entity_->addObserver(property.getName(), callback));
    }
    return lifetimes;
}

const Attributes& EntityPathModel::getAttributes(const String& property) const {
    const TypeDefinition& type = entity_->getData().getType();
    return type.getProperties()[type.indexOf(property)].getAttributes();
}

bool EntityPathModel::isEditable(const String& property) const {
    const auto* predicate = getAttributes(property).get<UiPredicate>(UiAttributes::kEnabledIf);
    return predicate == nullptr || (*predicate)(entity_->getData());
}

SharedPtr<EntityPathModel> makeEntityPathModel(SharedPtr<Entity> entity) {
    const String switchName = findFirst<bool>(*entity);
    const String listName = findFirst<GenericList>(*entity);
    return std::make_shared<EntityPathModel>(std::move(entity), switchName, listName);
}

}  // namespace tavrin::sheet
