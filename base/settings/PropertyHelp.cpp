#include "base/settings/PropertyHelp.h"

#include "base/settings/PropertyHelpTable.h"
#include "foundation/FatalError.h"
#include "services/postcore/PropertyDescriptor.h"
#include "services/postcore/PropertyText.h"

#include <initializer_list>
#include <map>

namespace tavrin::settings {
namespace {

using postcore::PropertyDescriptor;

String fillIn(const String& text, const PropertyDescriptor& descriptor) {
    return text.replaced("%TYPE", postcore::toString(descriptor.type))
        .replaced("%NAME", descriptor.name)
        .replaced("%DEFAULT", postcore::getConfSerialization(descriptor.defaultValue))
        .replaced("%MIN", postcore::getConfSerialization(descriptor.minimum))
        .replaced("%MAX", postcore::getConfSerialization(descriptor.maximum))
        .trimmed();
}

std::vector<int> join(std::initializer_list<const std::vector<int>*> lists) {
    std::vector<int> joined;
    for (const std::vector<int>* list : lists) {
        joined.insert(joined.end(), list->begin(), list->end());
    }
    return joined;
}

/// The table as it is looked up.
class HelpIndex {
public:
    static const HelpIndex& getInstance() {
        static const HelpIndex instance;
        return instance;
    }

    const String& getText(int id) const {
        static const String kNone;
        const auto found = texts_.find(id);
        return found == texts_.end() ? kNone : found->second;
    }
    const std::vector<int>& getIds(PropertyGroup group) const { return ids_.at(group); }
    const std::vector<int>& getPostIds() const { return postIds_; }
    const std::vector<int>& getAllIds() const { return allIds_; }

private:
    HelpIndex() {
        std::map<int, PropertyGroup> groups;
        for (const PropertyHelpRow& row : getPropertyHelpTable()) {
            const PropertyDescriptor* descriptor = PropertyDescriptor::get(row.id);
            if (descriptor == nullptr) {
                fatalError("There is help on a property that does not exist.");
            }
            texts_[row.id] = fillIn(String(row.text).trimmed(), *descriptor);
            groups[row.id] = row.group;
        }
        for (const auto& [id, group] : groups) {
            ids_[group].push_back(id);
        }
        postIds_ = join({&getIds(PropertyGroup::Denoise), &getIds(PropertyGroup::BloomGlare),
                         &getIds(PropertyGroup::Camera), &getIds(PropertyGroup::SharpenBlur)});
        allIds_ = join({&postIds_, &getIds(PropertyGroup::LightMix)});
    }

    std::map<int, String> texts_;
    std::map<PropertyGroup, std::vector<int>> ids_;
    std::vector<int> postIds_;
    std::vector<int> allIds_;
};

const std::vector<int>& getIds(PropertyGroup group) {
    return HelpIndex::getInstance().getIds(group);
}

}  // namespace

const String& getPropertyHelp(int id) {
    return HelpIndex::getInstance().getText(id);
}

const std::vector<int>& denoisePropertyIds() {
    return getIds(PropertyGroup::Denoise);
}

const std::vector<int>& lightMixPropertyIds() {
    return getIds(PropertyGroup::LightMix);
}

const std::vector<int>& bloomGlarePropertyIds() {
    return getIds(PropertyGroup::BloomGlare);
}

const std::vector<int>& cameraPropertyIds() {
    return getIds(PropertyGroup::Camera);
}

const std::vector<int>& sharpenBlurPropertyIds() {
    return getIds(PropertyGroup::SharpenBlur);
}

const std::vector<int>& postPropertyIds() {
    return HelpIndex::getInstance().getPostIds();
}

const std::vector<int>& allPropertyIds() {
    return HelpIndex::getInstance().getAllIds();
}

}  // namespace tavrin::settings
