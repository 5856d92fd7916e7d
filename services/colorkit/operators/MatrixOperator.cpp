#include "services/colorkit/operators/MatrixOperator.h"

#include "services/colorkit/OperatorValues.h"

namespace tavrin::colorkit {
namespace {

constexpr const ParameterDeclaration* kParameters[] = {
    &MatrixOperator::kRed, &MatrixOperator::kGreen, &MatrixOperator::kBlue};

Vector3 toVector(const CompressedRgb& numbers) {
    return {numbers.r, numbers.g, numbers.b};
}

void appendStages(const OperatorValues& values, const MappingEnvironment&, StageList& stages) {
    const Matrix3 matrix{{toVector(values.get(MatrixOperator::kRed)),
                          toVector(values.get(MatrixOperator::kGreen)),
                          toVector(values.get(MatrixOperator::kBlue))}};
    if (matrix.rows != Matrix3::diagonal({1.0, 1.0, 1.0}).rows) {
        stages.addMatrix(matrix);
    }
}

}  // namespace

constinit const ColorMappingOperatorDescriptor MatrixOperator::kDescriptor{
    .typeName = "Matrix",
    .displayName = "Matrix",
    .category = OperatorCategory::NotOffered,
    .description = "Mixes red, green and blue by nine numbers.",
    .isEnabledByDefault = true,
    .parameters = kParameters,
    .appendStages = appendStages,
};

}  // namespace tavrin::colorkit
