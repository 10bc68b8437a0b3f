#include "core/uninstaller/LeftoverLocation.h"

namespace quillmar {

namespace {

constexpr std::array<LeftoverLocation, 16> locations { {
    { "Application Support", "App data", true },
    { "Application Support/CrashReporter", "Crash reports", false },
    { "Caches", "Cache", true },
    { "Preferences", "Preferences", false },
    { "Preferences/ByHost", "Preferences", false },
    { "SyncedPreferences", "Synced preferences", false },
    { "Containers", "Sandbox container", false },
    { "Group Containers", "Shared container", false },
    { "Saved Application State", "Saved window state", false },
    { "Autosave Information", "Autosave", false },
    { "Logs", "Logs", true },
    { "HTTPStorages", "Web storage", false },
    { "WebKit", "Web data", false },
    { "Cookies", "Cookies", false },
    { "LaunchAgents", "Launch agent", false },
    { "Application Scripts", "Scripts", false },
} };

} // namespace

std::span<const LeftoverLocation> LeftoverLocation::all()
{
    return locations;
}

} // namespace quillmar
