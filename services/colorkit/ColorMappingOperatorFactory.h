#pragma once

#include "foundation/String.h"
#include "services/colorkit/ColorMappingOperatorDescriptor.h"

#include <map>

namespace tavrin::colorkit {

/// Knows all operators. Immutable: any thread.
class ColorMappingOperatorFactory {
public:
    static const ColorMappingOperatorFactory& getInstance();

    /// By type name.
    const std::map<String, const ColorMappingOperatorDescriptor*>& getAllDescriptors() const {
        return descriptors_;
    }
    /// Null when there is no such operator.
    const ColorMappingOperatorDescriptor* findDescriptor(const String& typeName) const;

private:
    ColorMappingOperatorFactory();

    std::map<String, const ColorMappingOperatorDescriptor*> descriptors_;
};

}  // namespace tavrin::colorkit
