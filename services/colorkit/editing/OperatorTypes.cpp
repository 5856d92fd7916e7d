#include "services/colorkit/editing/OperatorTypes.h"

#include "foundation/data/UiAttributes.h"
#include "services/colorkit/ColorMapping.h"
#include "services/colorkit/ColorMappingOperatorFactory.h"
#include "services/colorkit/UnaryColorMappingOperator.h"
#include "services/colorkit/editing/ParameterBinding.h"

#include <memory>

namespace tavrin::colorkit {
namespace {

SharedPtr<const TypeDefinition> declareColorMapping() {
    using Data = ColorMapping::Data;
    auto type = std::make_shared<TypeDefinition>(Data::kTypeName);
    type->addProperty(Data::kPipeline, EntityHolder<IColorMappingOperator>());
    type->addProperty(Data::kEnabled, true);
    return type;
}

SharedPtr<const TypeDefinition> declareUnaryOperator() {
    using Data = UnaryColorMappingOperator::Data;
    auto type = std::make_shared<TypeDefinition>(Data::kTypeName);
    type->addProperty(Data::kPredecessor, EntityHolder<IColorMappingOperator>());
    type->addProperty(Data::kId, 0);
    return type;
}

SharedPtr<const TypeDefinition> declareOperator(const ColorMappingOperatorDescriptor& descriptor,
                                                const SharedPtr<const TypeDefinition>& base) {
    auto type = std::make_shared<TypeDefinition>(descriptor.typeName, base);
    type->setAttribute(UiAttributes::kName, String(descriptor.displayName));
    type->setAttribute(UiAttributes::kDescription, String(descriptor.description));
    type->addProperty(UnaryColorMappingOperator::Data::kEnabled, descriptor.isEnabledByDefault);
    for (const ParameterDeclaration* parameter : descriptor.parameters) {
        addProperty(*type, *parameter);
    }
    return type;
}

}  // namespace

TypeList declareOperatorTypes() {
    const auto base = declareUnaryOperator();
    TypeList types{declareColorMapping(), base};
    for (const auto& [name, descriptor] :
         ColorMappingOperatorFactory::getInstance().getAllDescriptors()) {
        types.push_back(declareOperator(*descriptor, base));
    }
    return types;
}

}  // namespace tavrin::colorkit
