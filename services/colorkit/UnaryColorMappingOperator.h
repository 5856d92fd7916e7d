#pragma once

#include "services/colorkit/IColorMappingOperator.h"

#include <utility>

namespace tavrin::colorkit {

/// An operator with one input, which is what every operator in the factory is.
class UnaryColorMappingOperator final : public IColorMappingOperator {
public:
    struct Data {
        // The type of data objects and its properties; the types of operators add the switch.
        static constexpr const char* kTypeName = "UnaryColorMappingOperator";
        static constexpr const char* kPredecessor = "predecessor";
        static constexpr const char* kId = "id";
        static constexpr const char* kEnabled = "enabled";

        EntityHolder<IColorMappingOperator> predecessor;
        int id = 0;
    };

    UnaryColorMappingOperator(Data data, OperatorValues values)
        : data_(std::move(data)), values_(std::move(values)) {}

    const EntityHolder<IColorMappingOperator>& getPredecessor() const override {
        return data_.predecessor;
    }
    int getId() const override { return data_.id; }
    const OperatorValues& getValues() const override { return values_; }

private:
    Data data_;
    OperatorValues values_;
};

}  // namespace tavrin::colorkit
