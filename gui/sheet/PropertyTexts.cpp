#include "gui/sheet/PropertyTexts.h"

#include "foundation/data/UiAttributes.h"
#include "gui/sheet/SkinColors.h"

namespace tavrin::sheet {
namespace {

template <class Definition>
QString getName(const Definition& definition) {
    if (const auto* name = definition.getAttributes().template get<String>(UiAttributes::kName)) {
        return toQt(*name);
    }
    QString name = toQt(definition.getName());
    name[0] = name[0].toUpper();
    return name;
}

template <class Definition>
QString getText(const Definition& definition) {
    const auto* text = definition.getAttributes().template get<String>(UiAttributes::kDescription);
    return text == nullptr ? QString() : toQt(*text);
}

}  // namespace

QString getDisplayName(const PropertyDefinition& property) {
    return getName(property);
}

QString getDisplayName(const TypeDefinition& type) {
    return getName(type);
}

QString getDescription(const PropertyDefinition& property) {
    return getText(property);
}

QString getDescription(const TypeDefinition& type) {
    return getText(type);
}

}  // namespace tavrin::sheet
