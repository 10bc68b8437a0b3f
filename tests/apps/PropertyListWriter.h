#pragma once

#include <string>

#include "core/apps/PropertyValue.h"

namespace quillmar::testing_support {

// Writes `value` through libplist's own writers, so that tests read files made by another hand than ours.
std::string binaryPropertyList(const PropertyValue& value);
std::string xmlPropertyList(const PropertyValue& value);

} // namespace quillmar::testing_support
