#include "services/colorkit/Pipeline.h"

#include "foundation/Exception.h"
#include "foundation/NumberText.h"
#include "foundation/data/UniqueIdGenerator.h"
#include "services/colorkit/UnaryColorMappingOperator.h"
#include "services/colorkit/operators/ContrastOperator.h"
#include "services/colorkit/operators/ExposureOperator.h"
#include "services/colorkit/operators/HighlightCompressionOperator.h"
#include "services/colorkit/operators/SaturationOperator.h"
#include "services/colorkit/operators/WhiteBalanceOperator.h"

#include <algorithm>
#include <memory>

namespace tavrin::colorkit {

void checkOperatorCount(std::size_t count) {
    if (count > kMostOperators) {
        throw Exception("The tone mapping has " + Str::getNumberText(static_cast<int>(count)) +
                        " operators; at most " +
                        Str::getNumberText(static_cast<int>(kMostOperators)) + " are possible.");
    }
}

EntityHolder<IColorMappingOperator> makePipeline(const std::vector<OperatorValues>& operators) {
    checkOperatorCount(operators.size());
    EntityHolder<IColorMappingOperator> last;
    for (const OperatorValues& values : operators) {
        const int id = UniqueIdGenerator::getInstance().getNext();
        last = std::make_shared<UnaryColorMappingOperator>(
            UnaryColorMappingOperator::Data{last, id}, values);
    }
    return last;
}

std::vector<const IColorMappingOperator*> listOperators(
    const EntityHolder<IColorMappingOperator>& pipeline) {
    std::vector<const IColorMappingOperator*> operators;
    for (const IColorMappingOperator* current = pipeline.get(); current != nullptr;
         current = current->getPredecessor().get()) {
        operators.push_back(current);
    }
    std::reverse(operators.begin(), operators.end());
    return operators;
}

EntityHolder<IColorMappingOperator> createDefaultPipeline() {
    // The compression lowers middle grey by a quarter of a stop, which the exposure gives back. The
    // operators that are linear in light come first, the compression last, so that nothing after
    // it can push values above white.
    OperatorValues exposure(ExposureOperator::kDescriptor);
    exposure.set(ExposureOperator::kStops, 0.25f);
    return makePipeline({
        exposure,
        OperatorValues(WhiteBalanceOperator::kDescriptor),
        OperatorValues(SaturationOperator::kDescriptor),
        OperatorValues(ContrastOperator::kDescriptor),
        OperatorValues(HighlightCompressionOperator::kDescriptor),
    });
}

bool arePipelinesSame(const EntityHolder<IColorMappingOperator>& left,
                      const EntityHolder<IColorMappingOperator>& right) {
    const auto lefts = listOperators(left);
    const auto rights = listOperators(right);
    return std::equal(lefts.begin(), lefts.end(), rights.begin(), rights.end(),
                      [](const IColorMappingOperator* a, const IColorMappingOperator* b) {
                          return a->getValues() == b->getValues();
                      });
}

}  // namespace tavrin::colorkit
