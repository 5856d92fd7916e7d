#include "services/postcore/RenderElementInfo.h"

#include "foundation/Optional.h"

namespace tavrin::postcore {
namespace {

constexpr const char* kType = "type";
constexpr const char* kNames = "names";
constexpr const char* kFlags = "flags";

Optional<std::uint32_t> readNumber(const Json& object, const char* name) {
    const auto found = object.find(name);
    if (found == object.end() || !found->is_number_unsigned()) {
        return {};
    }
    const auto number = found->get<std::uint64_t>();
    if (number > 0xFFFFFFFFu) {
        return {};
    }
    return static_cast<std::uint32_t>(number);
}

Optional<RenderElementInfo::Names> readNames(const Json& object) {
    const auto found = object.find(kNames);
    if (found == object.end() || !found->is_array() || found->size() != 2 ||
        !found->at(0).is_string() || !found->at(1).is_string()) {
        return {};
    }
    return RenderElementInfo::Names{toString(found->at(0)), toString(found->at(1))};
}

}  // namespace

String RenderElementInfo::serializeToString() const {
    Json object = Json::object();
    object[kType] = data_.type.value;
    object[kNames] =
        Json::array({toJson(data_.names.rendererName), toJson(data_.names.elementName)});
    object[kFlags] = data_.flags.bits();
    object.update(others_);
    return dumpJson(object);
}

Result<RenderElementInfo> RenderElementInfo::deserialize(const String& text) {
    Result<Json> json = parseJson(text);
    if (!json) {
        return Failure(json.error());
    }
    if (!json->is_object()) {
        return Failure("The element description is not a JSON object.");
    }
    const auto type = readNumber(*json, kType);
    const auto names = readNames(*json);
    const auto flags = readNumber(*json, kFlags);
    if (!type || !names || !flags) {
        return Failure(
            "The element description lacks a valid \"type\" number, two \"names\" or a \"flags\" "
            "number.");
    }
    RenderElementInfo info({{*type}, *names, Flags<RenderElementFlag>::fromBits(*flags)});
    for (const auto& [name, value] : json->items()) {
        if (name != kType && name != kNames && name != kFlags) {
            info.others_[name] = value;
        }
    }
    return info;
}

}  // namespace tavrin::postcore
