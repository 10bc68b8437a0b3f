#pragma once

#include "core/settings/SettingsBackend.h"

namespace quillmar {

// Settings kept in memory: for tests and for runs that must leave no trace. Counts its saves.
class MemorySettingsBackend final : public SettingsBackend {
public:
    explicit MemorySettingsBackend(nlohmann::json values = nlohmann::json::object()) : m_values(std::move(values)) { }

    Result<nlohmann::json> load() override { return m_values; }
    Result<void> save(const nlohmann::json& values) override
    {
        m_values = values;
        ++m_saveCount;
        return {};
    }

    const nlohmann::json& values() const { return m_values; }
    int saveCount() const { return m_saveCount; }

private:
    nlohmann::json m_values;
    int m_saveCount = 0;
};

} // namespace quillmar
