#pragma once

#include "services/colorkit/ColorMappingOperatorDescriptor.h"

#include <type_traits>
#include <vector>

namespace tavrin::colorkit {

/// The values of an operator: its switch and one value for each of its parameters, always within
/// the declared ranges. A plain value.
class OperatorValues {
public:
    /// The declared defaults. The descriptor must outlive the values.
    explicit OperatorValues(const ColorMappingOperatorDescriptor& descriptor);

    const ColorMappingOperatorDescriptor& getDescriptor() const { return *descriptor_; }

    /// An operator that is switched off stays in its pipeline and does nothing.
    bool isEnabled() const { return isEnabled_; }
    OperatorValues& setEnabled(bool enabled);

    /// By the operator's constant of a parameter.
    template <class T>
    T get(const Parameter<T>& parameter) const {
        return static_cast<T>(std::get<Stored<T>>(getAt(indexOf(parameter))));
    }
    /// Throws an Exception when the value is not allowed.
    template <class T>
    OperatorValues& set(const Parameter<T>& parameter, std::type_identity_t<T> value) {
        setAt(indexOf(parameter), static_cast<Stored<T>>(value));
        return *this;
    }

    /// By the index of the parameter in the descriptor.
    const ParameterValue& getAt(std::size_t index) const { return values_[index]; }
    /// Throws an Exception when the value is not allowed.
    void setAt(std::size_t index, const ParameterValue& value);

    /// Of the same operator type with the same values.
    friend bool operator==(const OperatorValues&, const OperatorValues&) = default;

private:
    template <class T>
    using Stored = std::conditional_t<std::is_enum_v<T>, int, T>;

    std::size_t indexOf(const ParameterDeclaration& parameter) const;

    const ColorMappingOperatorDescriptor* descriptor_;
    bool isEnabled_;
    std::vector<ParameterValue> values_;
};

}  // namespace tavrin::colorkit
