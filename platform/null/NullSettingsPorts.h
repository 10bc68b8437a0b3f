#pragma once

#include "core/settings/FileLocations.h"

namespace quillmar {

// The ports of settings where the system offers nothing: each answers "not here" and changes nothing. System
// factories hand them out for ports without a backend; the command line and the tests use them too.

// No known place for the application's files: they stay in the working folder ("settings.json" and
// "Quillmar" beside the process).
class NullFileLocations final : public FileLocations {
public:
    std::filesystem::path settingsFile() const override;
    std::filesystem::path applicationSupport() const override;
};

} // namespace quillmar
