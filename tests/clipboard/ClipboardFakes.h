#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/clipboard/PasteboardSnapshot.h"
#include "core/desktop/FrontApplications.h"
#include "core/desktop/Keystrokes.h"
#include "core/desktop/Pasteboard.h"
#include "core/desktop/SessionEvents.h"
#include "core/desktop/UserNotices.h"
#include "core/runtime/Clock.h"

namespace quillmar {

// A pasteboard in memory. Every copy, write or clear moves the change count on by one.
class FakePasteboard final : public Pasteboard {
public:
    explicit FakePasteboard(Clock& clock) : m_clock(clock) { }

    // Another application copies: `types` declared in this order, strings for the text and marker types.
    void copy(std::vector<std::string> types, std::map<std::string, std::string> strings = {},
        std::vector<std::string> filePaths = {}, std::optional<PasteboardImage> image = std::nullopt,
        std::map<std::string, std::string> data = {})
    {
        m_contents = PasteboardReading { 0, std::move(types), std::move(strings), std::move(filePaths), std::move(image),
            std::move(data) };
        ++m_changeCount;
    }
    void copyText(const std::string& text, std::vector<std::string> extraTypes = {})
    {
        std::vector<std::string> types { "public.utf8-plain-text" };
        types.insert(types.end(), extraTypes.begin(), extraTypes.end());
        copy(std::move(types), { { "public.utf8-plain-text", text } });
    }

    std::int64_t changeCount() const override { return m_changeCount; }
    PasteboardReading read() override
    {
        ++reads;
        // What happens while the read is out, before and after it takes the contents.
        runOnce(beforeTaking);
        if (readDelay > Duration::zero())
            m_clock.sleepFor(readDelay); // on virtual time: the read takes this long
        auto reading = m_contents;
        reading.changeCount = m_changeCount;
        runOnce(afterTaking);
        return reading;
    }
    bool write(const PasteboardWriting& writing) override
    {
        if (refuseWrites)
            return false;
        writes.push_back(writing);
        PasteboardReading contents;
        if (writing.contents) {
            contents = *writing.contents;
        } else {
            if (writing.text) {
                contents.types.push_back("public.utf8-plain-text");
                contents.strings["public.utf8-plain-text"] = *writing.text;
            }
            if (!writing.filePaths.empty())
                contents.types.push_back("public.file-url");
            contents.filePaths = writing.filePaths;
            if (writing.image)
                contents.types.push_back(writing.image->type);
            contents.image = writing.image;
        }
        for (const auto& marker : writing.markers) {
            if (std::find(contents.types.begin(), contents.types.end(), marker) == contents.types.end())
                contents.types.push_back(marker);
        }
        m_contents = std::move(contents);
        ++m_changeCount;
        return true;
    }
    void clear() override
    {
        ++clears;
        m_contents = {};
        ++m_changeCount;
    }

    std::optional<std::string> text() const
    {
        auto found = m_contents.strings.find("public.utf8-plain-text");
        if (found == m_contents.strings.end())
            return std::nullopt;
        return found->second;
    }

    Duration readDelay { 0 };
    std::function<void()> beforeTaking;
    std::function<void()> afterTaking;
    bool refuseWrites = false;
    int reads = 0;
    int clears = 0;
    std::vector<PasteboardWriting> writes;

private:
    static void runOnce(std::function<void()>& hook)
    {
        if (auto run = std::exchange(hook, nullptr))
            run();
    }

    Clock& m_clock;
    PasteboardReading m_contents;
    std::int64_t m_changeCount = 1;
};

class FakeFrontApplications final : public FrontApplications {
public:
    // `app` comes to the front.
    void activate(AppIdentity app)
    {
        front = app;
        m_activations.push_back(std::move(app));
    }

    std::optional<AppIdentity> frontApplication() const override { return front; }
    std::vector<AppIdentity> takeActivations() override { return std::exchange(m_activations, {}); }

    std::optional<AppIdentity> front;

private:
    std::vector<AppIdentity> m_activations;
};

class FakeSessionEvents final : public SessionEvents {
public:
    void startObserving(std::function<void(SessionEvent)> handler) override { m_handler = std::move(handler); }
    void stopObserving() override { m_handler = nullptr; }

    bool isObserved() const { return static_cast<bool>(m_handler); }
    void send(SessionEvent event)
    {
        if (m_handler)
            m_handler(event);
    }

private:
    std::function<void(SessionEvent)> m_handler;
};

class FakeKeystrokes final : public Keystrokes {
public:
    struct Key {
        std::uint32_t keyCode;
        std::uint64_t flags;
        bool operator==(const Key&) const = default;
    };

    bool isAccessibilityTrusted() override { return trusted; }
    bool postKey(std::uint32_t keyCode, std::uint64_t flags) override
    {
        posted.push_back({ keyCode, flags });
        if (onKey)
            onKey(keyCode, flags);
        return true;
    }

    bool trusted = true;
    std::vector<Key> posted;
    // Lets a test watch the order of keystrokes and other effects.
    std::function<void(std::uint32_t, std::uint64_t)> onKey;
};

class FakeNotices final : public UserNotices {
public:
    void show(std::string_view message, std::string_view detail) override
    {
        shown.emplace_back(message);
        details.emplace_back(detail);
    }
    void askForAccessibility(std::string_view reason) override { accessibilityRequests.emplace_back(reason); }

    std::vector<std::string> shown;
    std::vector<std::string> details;
    std::vector<std::string> accessibilityRequests;
};

} // namespace quillmar
