#pragma once

#include <nlohmann/json.hpp>

#include "core/base/Result.h"

namespace quillmar {

// Where the settings dictionary lives between runs (a JSON file, memory, later the macOS user defaults).
class SettingsBackend {
public:
    virtual ~SettingsBackend() = default;

    // The saved dictionary: an object, empty when nothing was saved yet. An Error when what is stored
    // cannot be used; code "settings.setAside" means it was kept aside and saving may go on.
    virtual Result<nlohmann::json> load() = 0;

    // Replaces what is stored with `values`, an object.
    virtual Result<void> save(const nlohmann::json& values) = 0;
};

} // namespace quillmar
