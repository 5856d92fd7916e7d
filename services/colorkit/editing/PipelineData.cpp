#include "services/colorkit/editing/PipelineData.h"

#include "foundation/Exception.h"
#include "foundation/data/TypeDatabase.h"
#include "foundation/data/UniqueIdGenerator.h"
#include "services/colorkit/ColorMappingOperatorFactory.h"
#include "services/colorkit/Pipeline.h"
#include "services/colorkit/UnaryColorMappingOperator.h"
#include "services/colorkit/editing/OperatorTypes.h"
#include "services/colorkit/editing/ParameterBinding.h"

#include <algorithm>
#include <memory>

namespace tavrin::colorkit {
namespace {

using OperatorData = UnaryColorMappingOperator::Data;

const TypeDeclaration kDeclaration(declareOperatorTypes);

OperatorValues toValues(const GenericObject& object) {
    const String& name = object.getType().getName();
    const auto* descriptor = ColorMappingOperatorFactory::getInstance().findDescriptor(name);
    if (descriptor == nullptr) {
        throw Exception("There is no colour-mapping operator \"" + name + "\".");
    }
    OperatorValues values(*descriptor);
    values.setEnabled(object.get<bool>(OperatorData::kEnabled));
    for (std::size_t i = 0; i < descriptor->parameters.size(); ++i) {
        values.setAt(i, getParameter(object, *descriptor->parameters[i]));
    }
    return values;
}

GenericObject toObject(const IColorMappingOperator& source) {
    const OperatorValues& values = source.getValues();
    const ColorMappingOperatorDescriptor& descriptor = values.getDescriptor();
    GenericObject object = GenericObject::construct(String(descriptor.typeName));
    object.set(OperatorData::kId, source.getId());
    object.set(OperatorData::kEnabled, values.isEnabled());
    for (std::size_t i = 0; i < descriptor.parameters.size(); ++i) {
        setParameter(object, *descriptor.parameters[i], values.getAt(i));
    }
    return object;
}

bool isDataSame(const GenericObject& left, const GenericObject& right) {
    GenericObject other = right;
    if (&left.getType() == &right.getType() &&
        (left.get<int>(OperatorData::kId) == 0 || right.get<int>(OperatorData::kId) == 0)) {
        other.set(OperatorData::kId, left.get<int>(OperatorData::kId));
    }
    return left == other;
}

}  // namespace

EntityHolder<IColorMappingOperator> createPipeline(const GenericList& operators) {
    checkOperatorCount(operators.size());
    EntityHolder<IColorMappingOperator> last;
    for (const GenericObject& object : operators) {
        const OperatorValues values = toValues(object);
        const int givenId = object.get<int>(OperatorData::kId);
        const int id = givenId != 0 ? givenId : UniqueIdGenerator::getInstance().getNext();
        last = std::make_shared<UnaryColorMappingOperator>(OperatorData{last, id}, values);
    }
    return last;
}

GenericList convertPipelineToDataObjects(const EntityHolder<IColorMappingOperator>& pipeline,
                                         HiddenItems hiddenItems) {
    GenericList objects;
    for (const IColorMappingOperator* each : listOperators(pipeline)) {
        const bool isHidden =
            each->getValues().getDescriptor().category == OperatorCategory::NotOffered;
        if (!isHidden || hiddenItems == HiddenItems::Include) {
            objects.push_back(toObject(*each));
        }
    }
    return objects;
}

bool areOperatorsDataSame(const GenericList& left, const GenericList& right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), isDataSame);
}

GenericObject toDataObject(const ColorMapping& colorMapping) {
    using Data = ColorMapping::Data;
    GenericObject object = GenericObject::construct(Data::kTypeName);
    object.set(Data::kPipeline, colorMapping.getPipeline());
    object.set(Data::kEnabled, colorMapping.isEnabled());
    return object;
}

}  // namespace tavrin::colorkit
