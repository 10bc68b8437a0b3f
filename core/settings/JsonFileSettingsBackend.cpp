#include "core/settings/JsonFileSettingsBackend.h"

#include <fmt/format.h>

#include "core/base/Diagnostics.h"
#include "core/base/Files.h"
#include "core/base/UtcStamp.h"

namespace quillmar {

JsonFileSettingsBackend::JsonFileSettingsBackend(std::filesystem::path path, const Clock& clock)
    : m_path(std::move(path))
    , m_clock(clock)
{
}

Result<nlohmann::json> JsonFileSettingsBackend::parse(std::string_view text)
{
    auto values = nlohmann::json::parse(text, /*callback=*/nullptr, /*allow_exceptions=*/false);
    if (values.is_discarded())
        return Error { "settings.malformed", "The settings file is not valid JSON.", {} };
    if (!values.is_object())
        return Error { "settings.malformed", "The settings file does not hold a settings object.", {} };
    return values;
}

Result<nlohmann::json> JsonFileSettingsBackend::load()
{
    removeStaleTemporaries(m_path);
    QUILLMAR_TRY_ASSIGN(auto text, readFile(m_path));
    if (!text)
        return nlohmann::json::object();
    auto values = parse(*text);
    if (values)
        return values;

    QUILLMAR_TRY_ASSIGN(auto keptAt, moveAside(m_path, utcStamp(m_clock.now())));
    diagnostic("settings: {} ({}); kept it as {} and started from the defaults", m_path.string(),
        values.error().message, keptAt.filename().string());
    return Error { "settings.setAside", values.error().message, keptAt.string() };
}

Result<void> JsonFileSettingsBackend::save(const nlohmann::json& values)
{
    return writeFileAtomically(m_path, values.dump(/*indent=*/2) + "\n");
}

} // namespace quillmar
