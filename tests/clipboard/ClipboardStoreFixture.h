#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "core/base/Files.h"
#include "core/clipboard/ClipboardSettings.h"
#include "core/clipboard/ClipboardStore.h"
#include "core/runtime/VirtualRuntime.h"
#include "core/settings/MemorySettingsBackend.h"
#include "tests/clipboard/ClipboardFakes.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {

// A store over fakes on virtual time, with its folder in a temporary folder.
class ClipboardStoreFixture {
public:
    ClipboardStoreFixture()
        : m_settings(std::make_unique<Settings>(std::make_unique<MemorySettingsBackend>()))
    {
        m_front.front = AppIdentity { "com.example.editor", "Editor" };
    }

    ClipboardStore& store()
    {
        if (!m_store)
            remake();
        return *m_store;
    }

    // A new store over the same folder and settings, as after a restart.
    void remake()
    {
        m_store.reset();
        m_store = std::make_unique<ClipboardStore>(m_runtime, *m_settings, folder(),
            ClipboardPorts { m_pasteboard, m_front, m_session, m_keys, m_notices });
        m_store->setCleansLinks(true);
    }

    void start() { store().start(); }
    void tick() { m_runtime.advance(ClipboardStore::pollInterval); }

    std::vector<std::string> texts()
    {
        std::vector<std::string> result;
        for (const auto& item : store().items())
            result.push_back(item.text.value_or(item.imageFile.value_or("?")));
        return result;
    }

    std::filesystem::path folder() const { return m_temporary.path() / "Clipboard"; }
    std::filesystem::path historyFile() const { return folder() / "history.json"; }
    bool historySaved() const { return std::filesystem::exists(historyFile()); }
    nlohmann::json savedHistory() const
    {
        auto text = readFile(historyFile());
        if (!text || !*text)
            return nullptr;
        return nlohmann::json::parse(**text, nullptr, false);
    }

    Settings& settings() { return *m_settings; }

    VirtualRuntime m_runtime;
    TemporaryFolder m_temporary;
    std::unique_ptr<Settings> m_settings;
    FakePasteboard m_pasteboard { m_runtime.clock() };
    FakeFrontApplications m_front;
    FakeSessionEvents m_session;
    FakeKeystrokes m_keys;
    FakeNotices m_notices;
    std::unique_ptr<ClipboardStore> m_store;
};

} // namespace quillmar
