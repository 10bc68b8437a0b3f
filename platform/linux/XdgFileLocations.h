#pragma once

#include <functional>
#include <optional>
#include <string>

#include "core/settings/FileLocations.h"

namespace quillmar {

// Linux locations from the XDG base directories: settings in "$XDG_CONFIG_HOME/quillmar/settings.json"
// (default ~/.config), the application-support folder at "$XDG_DATA_HOME/Quillmar" (default
// ~/.local/share). A relative XDG value is ignored, as the XDG rules require.
class XdgFileLocations final : public FileLocations {
public:
    using Environment = std::function<std::optional<std::string>(const char* name)>;

    // Reads the process environment.
    XdgFileLocations();
    explicit XdgFileLocations(Environment environment);

    std::filesystem::path settingsFile() const override;
    std::filesystem::path applicationSupport() const override;

private:
    std::filesystem::path baseDirectory(const char* variable, const char* fallbackBelowHome) const;

    Environment m_environment;
};

} // namespace quillmar
