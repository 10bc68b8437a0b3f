#pragma once

#include <memory>
#include <vector>

#include "core/apps/InstalledBundle.h"
#include "core/base/TextCollation.h"

namespace quillmar {

// Orders applications by name as the user's locale sorts them, ignoring case (accents still count).
class BundleNameCollation final {
public:
    // Sorts ascending by name; bundles whose names collate equal keep their order.
    void sort(std::vector<InstalledBundle>& bundles) const;

private:
    TextCollation m_collation;
};

} // namespace quillmar
