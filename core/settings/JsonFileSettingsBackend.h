#pragma once

#include <filesystem>
#include <string_view>

#include "core/runtime/Clock.h"
#include "core/settings/SettingsBackend.h"

namespace quillmar {

// Settings as one JSON object in a file, written atomically. A file that cannot be parsed, or holds
// something other than an object, is moved aside with a timestamped name and never overwritten.
class JsonFileSettingsBackend final : public SettingsBackend {
public:
    JsonFileSettingsBackend(std::filesystem::path path, const Clock& clock);

    Result<nlohmann::json> load() override;
    Result<void> save(const nlohmann::json& values) override;

    const std::filesystem::path& path() const { return m_path; }

    // The settings object in `text`, or an Error saying why it is not usable. Outside data: never throws.
    static Result<nlohmann::json> parse(std::string_view text);

private:
    std::filesystem::path m_path;
    const Clock& m_clock;
};

} // namespace quillmar
