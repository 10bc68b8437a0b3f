#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/hardware/helper/FanHelperClient.h"
#include "core/hardware/helper/FanHelperFiles.h"
#include "core/hardware/helper/FanHelperTransport.h"

namespace quillmar {

// The helper's files in memory: a lock file whose facts and lock state a test sets, and a set of markers.
class FakeFanHelperFiles final : public FanHelperFiles {
public:
    struct LockState {
        FanHelperLockFile::Facts facts { true, 1, 0 };
        FanHelperLockFile::LockAttempt attempt = FanHelperLockFile::LockAttempt::locked;
        bool held = false;
        std::optional<std::uint32_t> openedWithMode;
    };

    class LockFile final : public FanHelperLockFile {
    public:
        explicit LockFile(LockState& state) : m_state(state) { }
        ~LockFile() override { m_state.held = false; }
        Facts facts() const override { return m_state.facts; }
        LockAttempt tryLockExclusive() override
        {
            if (m_state.attempt == LockAttempt::locked)
                m_state.held = true;
            return m_state.attempt;
        }

    private:
        LockState& m_state;
    };

    Result<std::unique_ptr<FanHelperLockFile>> openLockFile(const std::filesystem::path& path, std::uint32_t mode) override
    {
        lockPath = path;
        lock.openedWithMode = mode;
        if (failOpen)
            return Error { "files.open", "The lock file can't be opened.", path.string() };
        return std::unique_ptr<FanHelperLockFile>(std::make_unique<LockFile>(lock));
    }
    bool exists(const std::filesystem::path& path) override { return markers.contains(path); }
    Result<void> writeMarker(const std::filesystem::path& path) override
    {
        if (failMarkerWrite)
            return Error { "files.marker", "The marker can't be written.", path.string() };
        markers.insert(path);
        return {};
    }
    Result<void> removeMarker(const std::filesystem::path& path) override
    {
        markers.erase(path);
        return {};
    }

    LockState lock;
    bool failOpen = false;
    bool failMarkerWrite = false;
    std::filesystem::path lockPath;
    std::set<std::filesystem::path> markers;
};

// The helper's listener driven by the test: it opens and closes sessions and sends requests through the
// handlers the helper gave, and keeps every reply.
class FakeFanHelperTransport final : public FanHelperTransport {
public:
    Result<void> listen(const std::string& codeRequirement, Handlers handlers) override
    {
        if (failListen)
            return Error { "xpc.listen", "The helper can't listen.", {} };
        requirement = codeRequirement;
        m_handlers = std::move(handlers);
        listening = true;
        return {};
    }
    void stop() override { listening = false; }

    void open(SessionID session) { m_handlers.opened(session); }
    void close(SessionID session) { m_handlers.closed(session); }
    FanHelperResponse send(SessionID session, const FanHelperRequest& request)
    {
        std::optional<FanHelperResponse> answer;
        m_handlers.request(session, request, [&answer](FanHelperResponse response) { answer = std::move(response); });
        return answer.value_or(FanHelperResponse { false, std::nullopt, "no reply" });
    }

    bool failListen = false;
    bool listening = false;
    std::string requirement;

private:
    Handlers m_handlers;
};

// The app's way to the helper, scripted: every request is kept, and answered with `respond` at once unless
// `holdReplies` keeps the replies for the test to deliver.
class FakeFanHelperClient final : public FanHelperClient {
public:
    std::string bundledVersion() const override { return version; }
    Result<void> registerHelper() override
    {
        ++registrations;
        if (registrationError)
            return *registrationError;
        return {};
    }
    void send(const FanHelperRequest& request, FanReplyOnce reply) override
    {
        sent.push_back(request);
        if (holdReplies) {
            held.push_back(std::move(reply));
            return;
        }
        reply(respond ? respond(request) : std::nullopt);
    }

    std::vector<FanHelperRequest::Kind> kinds() const
    {
        std::vector<FanHelperRequest::Kind> result;
        for (const auto& request : sent)
            result.push_back(request.kind);
        return result;
    }

    std::string version = "2";
    std::optional<Error> registrationError;
    int registrations = 0;
    std::function<std::optional<FanHelperResponse>(const FanHelperRequest&)> respond;
    bool holdReplies = false;
    std::vector<FanReplyOnce> held;
    std::vector<FanHelperRequest> sent;
};

} // namespace quillmar
