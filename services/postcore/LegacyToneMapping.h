#pragma once

#include "foundation/EntityHolder.h"
#include "services/colorkit/IColorMappingOperator.h"
#include "services/postcore/ISettings.h"
#include "services/postcore/PropertyDescriptor.h"

#include <map>

namespace tavrin::postcore {

/// The fixed tone-mapping parameters that images carried before there were pipelines. Their ids are
/// those of no other property. Any thread.
const std::vector<PropertyDescriptor>& getLegacyTonemappingDescriptors();

/// Stands before other settings while an image's header is read: legacy tone-mapping parameters are
/// kept here and become a pipeline, all other properties are written to the target, which must live
/// as long. One thread.
class LegacyAwarePostParamsSettings final : public ISettings {
public:
    explicit LegacyAwarePostParamsSettings(ISettings& target) : target_(target) {}

    /// Not supported: throws an Exception.
    Property get(int id) const override;
    void set(int id, const Property& value) override;
    bool isReadOnly() const override { return false; }

    /// The pipeline that does what the legacy parameters did, with values outside an operator's
    /// range moved to its end; empty when none was written.
    EntityHolder<colorkit::IColorMappingOperator> getColorMappingPipeline() const;

private:
    ISettings& target_;
    std::map<int, Property> legacyValues_;
};

}  // namespace tavrin::postcore
