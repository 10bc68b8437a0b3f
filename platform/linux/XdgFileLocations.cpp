#include "platform/linux/XdgFileLocations.h"

#include <cstdlib>

namespace quillmar {

XdgFileLocations::XdgFileLocations()
    : XdgFileLocations([](const char* name) -> std::optional<std::string> {
        if (const char* value = std::getenv(name))
            return std::string(value);
        return std::nullopt;
    })
{
}

XdgFileLocations::XdgFileLocations(Environment environment)
    : m_environment(std::move(environment))
{
}

std::filesystem::path XdgFileLocations::baseDirectory(const char* variable, const char* fallbackBelowHome) const
{
    if (auto value = m_environment(variable); value && !value->empty() && value->front() == '/')
        return *value;
    auto home = m_environment("HOME");
    // Without a home the current folder is the only place left that the user can find again.
    std::filesystem::path base = home && !home->empty() ? std::filesystem::path(*home) : std::filesystem::path(".");
    return base / fallbackBelowHome;
}

std::filesystem::path XdgFileLocations::settingsFile() const
{
    return baseDirectory("XDG_CONFIG_HOME", ".config") / "quillmar" / "settings.json";
}

std::filesystem::path XdgFileLocations::applicationSupport() const
{
    return baseDirectory("XDG_DATA_HOME", ".local/share") / "Quillmar";
}

} // namespace quillmar
