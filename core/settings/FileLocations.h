#pragma once

#include <filesystem>

namespace quillmar {

// Where the application keeps what it saves. On Linux these follow the XDG base directories.
class FileLocations {
public:
    virtual ~FileLocations() = default;

    // The settings file ("settings.json").
    virtual std::filesystem::path settingsFile() const = 0;

    // The application-support folder "Quillmar", home of the JSON stores ("Quillmar/Clipboard/history.json").
    virtual std::filesystem::path applicationSupport() const = 0;
};

} // namespace quillmar
