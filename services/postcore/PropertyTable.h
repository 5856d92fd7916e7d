#pragma once

#include "services/postcore/PropertyDescriptor.h"

namespace tavrin::postcore {

/// The descriptors of all post-processing parameters, by topic.
std::vector<PropertyDescriptor> makePropertyTable();

}  // namespace tavrin::postcore
