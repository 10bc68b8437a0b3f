#include "bench/AgentLogGenerator.h"

#include <array>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "core/agents/AgentPricing.h"
#include "core/base/CivilDate.h"

namespace quillmar {

namespace {

namespace fs = std::filesystem;

// Words of prose and code, with JSON escapes among them, cut into tool results and replies.
class TextPool {
public:
    explicit TextPool(std::mt19937_64& random)
    {
        static constexpr std::array words { "the", "function", "returns", "const", "auto", "std::string", "if", "(",
            ")", "{", "}", "return", "value;", "\\n", "\\n   ", "\\\"path\\\"", "src/main.cpp:42:", "error:", "for",
            "int", "i", "=", "0;", "<", "size();", "++i)", "test", "passed", "build", "cmake", "--target", "warning:",
            "unused", "variable", "let", "me", "check", "the", "file", "first.", "I'll", "update", "import", "from",
            "def", "class", "self,", "None", "True", "\\t", "0x7ffd", "tokens", "request", "response", "handler",
            "user", "config.json", "README.md", "diff", "--git", "a/", "b/", "@@", "-12,7", "+12,9", "@@" };
        std::uniform_int_distribution<std::size_t> pick(0, words.size() - 1);
        while (m_text.size() < (std::size_t(1) << 21)) {
            m_text += words[pick(random)];
            m_spaces.push_back(static_cast<std::uint32_t>(m_text.size()));
            m_text += ' ';
        }
    }

    // About `length` bytes of text, cut at word boundaries so no escape is split.
    std::string_view take(std::mt19937_64& random, std::size_t length)
    {
        length = std::min(length, m_text.size() / 2);
        std::uniform_int_distribution<std::size_t> pick(0, m_spaces.size() / 2);
        auto first = pick(random);
        auto start = std::size_t(m_spaces[first]) + 1;
        auto last = first;
        while (last + 1 < m_spaces.size() && m_spaces[last] < start + length)
            ++last;
        return std::string_view(m_text).substr(start, m_spaces[last] - start);
    }

private:
    std::string m_text;
    std::vector<std::uint32_t> m_spaces;
};

class FileWriter {
public:
    explicit FileWriter(const fs::path& path)
    {
        fs::create_directories(path.parent_path());
        m_file.open(path, std::ios::binary);
    }
    ~FileWriter() { flush(); }

    std::string& buffer() { return m_buffer; }
    void endLine()
    {
        m_buffer += '\n';
        if (m_buffer.size() > (std::size_t(1) << 22))
            flush();
    }
    std::uint64_t bytes() const { return m_written + m_buffer.size(); }

private:
    void flush()
    {
        m_file.write(m_buffer.data(), static_cast<std::streamsize>(m_buffer.size()));
        m_written += m_buffer.size();
        m_buffer.clear();
    }

    std::ofstream m_file;
    std::string m_buffer;
    std::uint64_t m_written = 0;
};

std::string timestampText(std::int64_t milliseconds)
{
    auto day = static_cast<Day>(milliseconds / 86'400'000);
    auto date = civilFromDay(day);
    auto rest = milliseconds % 86'400'000;
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}.{:03}Z", date.year, date.month, date.day, rest / 3'600'000,
        rest / 60'000 % 60, rest / 1000 % 60, rest % 1000);
}

struct CodexTotals {
    std::int64_t input = 0;
    std::int64_t cached = 0;
    std::int64_t output = 0;
    std::int64_t reasoning = 0;
    std::int64_t total() const { return input + output; }
};

class Generator {
public:
    Generator(const fs::path& home, std::uint64_t seed, GeneratedCopies copies)
        : m_home(home)
        , m_random(seed)
        , m_pool(m_random)
        , m_copies(copies)
    {
    }

    GeneratedUsage run(std::uint64_t targetBytes)
    {
        auto claudeBytes = targetBytes * 3 / 5;
        while (ownBytes() < claudeBytes)
            claudeSession(/*subAgentOf=*/nullptr);
        while (ownBytes() < targetBytes)
            codexSession();
        return m_usage;
    }

private:
    // What was written less the copies, so that both kinds of set hold the same turns.
    std::uint64_t ownBytes() const { return m_usage.bytes - m_copiedBytes; }

    // The whole of a file written before.
    static std::string contents(const fs::path& path)
    {
        std::ifstream file(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }

    static void replaceAll(std::string& text, const std::string& from, const std::string& to)
    {
        for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
            text.replace(at, from.size(), to);
    }

    std::int64_t between(std::int64_t low, std::int64_t high)
    {
        return std::uniform_int_distribution<std::int64_t>(low, high)(m_random);
    }

    std::string uuid()
    {
        return fmt::format("{:08x}-{:04x}-4{:03x}-a{:03x}-{:012x}", between(0, 0xffffffff), between(0, 0xffff),
            between(0, 0xfff), between(0, 0xfff), between(0, 0xffffffffffff));
    }

    std::uint64_t fileTarget()
    {
        // Mostly small sessions, some long ones: 64 KB to 16 MB.
        return std::uint64_t(1) << between(16, 24);
    }

    void count(const UsageRecord& record, bool claude)
    {
        (claude ? m_usage.claudeTurns : m_usage.codexTurns) += 1;
        m_usage.input += record.input;
        m_usage.output += record.output;
        m_usage.cacheRead += record.cacheRead;
        m_usage.cacheWrite += record.cacheWrite;
        m_usage.cacheWrite1h += record.cacheWrite1h;
        m_usage.cost += AgentPricing::cost(record).value_or(0);
    }

    void claudeSession(const std::string* subAgentOf)
    {
        static constexpr std::array projects { "-home-dev-quillmar", "-home-dev-website", "-home-dev-infra",
            "-home-dev-notes", "-srv-build-agent", "-home-dev-ml-experiments" };
        static constexpr std::array models { "claude-sonnet-4-5-20250929", "claude-sonnet-4-5-20250929",
            "claude-sonnet-4-5-20250929", "claude-opus-4-1-20250805", "claude-haiku-4-5-20251001", "claude-opus-4-5-20251101" };
        auto sessionId = subAgentOf ? *subAgentOf : uuid();
        // Now and then a conversation is resumed: a new session whose log starts with the earlier lines.
        bool resumes = !subAgentOf && !m_resumable.empty() && between(0, 5) == 0;
        auto project = projects[static_cast<std::size_t>(between(0, std::ssize(projects) - 1))];
        fs::path path = m_home / ".claude" / "projects" / project;
        path = subAgentOf ? path / sessionId / "subagents" / fmt::format("agent-{:08x}.jsonl", between(0, 0xffffffff))
                          : path / (sessionId + ".jsonl");
        std::uint64_t target = subAgentOf ? fileTarget() / 4 : fileTarget();
        std::int64_t clock = 1'740'000'000'000 + between(0, 60LL * 86'400'000);
        std::string parent = uuid();
        const char* sidechain = subAgentOf ? "true" : "false";
        std::uint64_t copied = 0;
        {
            FileWriter file(path);
            if (resumes) {
                clock = m_resumableEnd + between(60'000, 86'400'000);
                if (m_copies == GeneratedCopies::written) {
                    auto copy = contents(m_resumable);
                    replaceAll(copy, "\"sessionId\":\"" + m_resumableSession + "\"", "\"sessionId\":\"" + sessionId + "\"");
                    file.buffer() += copy;
                    copied = copy.size();
                }
            }
            while (file.bytes() - copied < target) {
                clock += between(2'000, 120'000);
                auto& out = file.buffer();
                auto userId = uuid();
                auto tool = between(0, 0xffffffffff);
                auto result = m_pool.take(m_random, static_cast<std::size_t>(between(0, 9) == 0 ? between(8'000, 40'000) : between(200, 6'000)));
                fmt::format_to(std::back_inserter(out),
                    R"({{"parentUuid":"{}","isSidechain":{},"userType":"external","cwd":"/home/dev/project","sessionId":"{}","version":"2.0.14","gitBranch":"main","type":"user","message":{{"role":"user","content":[{{"tool_use_id":"toolu_{:010x}","type":"tool_result","content":"{}","is_error":false}}]}},"uuid":"{}","timestamp":"{}","toolUseResult":{{"stdout":"{}","stderr":"","interrupted":false,"isImage":false}}}})",
                    parent, sidechain, sessionId, tool, result, userId, timestampText(clock), m_pool.take(m_random, result.size() / 2));
                file.endLine();
                parent = userId;

                UsageRecord record;
                record.model = models[static_cast<std::size_t>(between(0, std::ssize(models) - 1))];
                record.input = between(1, 60);
                record.cacheRead = between(8'000, 180'000);
                auto creation = between(0, 25'000);
                bool split = between(0, 1) == 1;
                record.cacheWrite1h = split ? between(0, creation) : 0;
                record.cacheWrite = creation - record.cacheWrite1h;
                auto finalOutput = between(20, 4'000);
                auto messageId = fmt::format("msg_01{:016x}", between(0, 0x7fffffffffffffff));
                auto requestId = fmt::format("req_011C{:016x}", between(0, 0x7fffffffffffffff));
                auto snapshots = between(1, 3);
                clock += between(1'000, 30'000);
                for (std::int64_t snapshot = 1; snapshot <= snapshots; ++snapshot) {
                    auto assistantId = uuid();
                    auto text = m_pool.take(m_random, static_cast<std::size_t>(between(80, 1'500)));
                    fmt::format_to(std::back_inserter(out),
                        R"({{"parentUuid":"{}","isSidechain":{},"userType":"external","cwd":"/home/dev/project","sessionId":"{}","version":"2.0.14","gitBranch":"main","message":{{"id":"{}","type":"message","role":"assistant","model":"{}","content":[{{"type":"text","text":"{}"}}],"stop_reason":null,"stop_sequence":null,"usage":{{"input_tokens":{},"cache_creation_input_tokens":{},"cache_read_input_tokens":{},)",
                        parent, sidechain, sessionId, messageId, record.model, text, record.input, creation, record.cacheRead);
                    if (split) {
                        fmt::format_to(std::back_inserter(out), R"("cache_creation":{{"ephemeral_5m_input_tokens":{},"ephemeral_1h_input_tokens":{}}},)",
                            record.cacheWrite, record.cacheWrite1h);
                    }
                    fmt::format_to(std::back_inserter(out),
                        R"("output_tokens":{},"service_tier":"standard"}}}},"requestId":"{}","type":"assistant","uuid":"{}","timestamp":"{}"}})",
                        finalOutput * snapshot / snapshots, requestId, assistantId, timestampText(clock));
                    file.endLine();
                    parent = assistantId;
                }
                record.output = finalOutput;
                count(record, /*claude=*/true);
            }
            m_usage.bytes += file.bytes();
            m_copiedBytes += copied;
            m_usage.files += 1;
            if (!subAgentOf && file.bytes() - copied < (std::size_t(1) << 20)) {
                m_resumable = path;
                m_resumableSession = sessionId;
                m_resumableEnd = clock;
            }
        }
        if (!subAgentOf && between(0, 4) == 0)
            claudeSession(&sessionId);
    }

    void codexTurn(FileWriter& file, std::int64_t& clock, const std::string& model, CodexTotals& totals)
    {
        auto& out = file.buffer();
        auto time = [&] { return timestampText(clock += between(200, 20'000)); };
        fmt::format_to(std::back_inserter(out),
            R"({{"timestamp":"{}","type":"turn_context","payload":{{"cwd":"/home/dev/project","approval_policy":"on-request","sandbox_policy":{{"mode":"workspace-write","network_access":false}},"model":"{}","effort":"medium","summary":"auto"}}}})",
            time(), model);
        file.endLine();
        fmt::format_to(std::back_inserter(out),
            R"({{"timestamp":"{}","type":"response_item","payload":{{"type":"message","role":"user","content":[{{"type":"input_text","text":"{}"}}]}}}})",
            time(), m_pool.take(m_random, static_cast<std::size_t>(between(40, 600))));
        file.endLine();
        auto calls = between(1, 6);
        for (std::int64_t call = 0; call < calls; ++call) {
            auto id = between(0, 0xffffffffffff);
            fmt::format_to(std::back_inserter(out),
                R"({{"timestamp":"{}","type":"response_item","payload":{{"type":"reasoning","summary":[{{"type":"summary_text","text":"{}"}}],"content":null,"encrypted_content":"gAAAAB{}"}}}})",
                time(), m_pool.take(m_random, static_cast<std::size_t>(between(40, 400))),
                std::string(static_cast<std::size_t>(between(600, 3'000)), 'Q'));
            file.endLine();
            fmt::format_to(std::back_inserter(out),
                R"({{"timestamp":"{}","type":"response_item","payload":{{"type":"function_call","name":"shell","arguments":"{{\"command\":[\"bash\",\"-lc\",\"rg -n token src\"],\"workdir\":\"/home/dev/project\"}}","call_id":"call_{:012x}"}}}})",
                time(), id);
            file.endLine();
            fmt::format_to(std::back_inserter(out),
                R"({{"timestamp":"{}","type":"response_item","payload":{{"type":"function_call_output","call_id":"call_{:012x}","output":"{{\"output\":\"{}\",\"metadata\":{{\"exit_code\":0,\"duration_seconds\":0.4}}}}"}}}})",
                time(), id, m_pool.take(m_random, static_cast<std::size_t>(between(300, 12'000))));
            file.endLine();
        }
        fmt::format_to(std::back_inserter(out),
            R"({{"timestamp":"{}","type":"response_item","payload":{{"type":"message","role":"assistant","content":[{{"type":"output_text","text":"{}"}}]}}}})",
            time(), m_pool.take(m_random, static_cast<std::size_t>(between(100, 2'000))));
        file.endLine();

        CodexTotals last;
        last.input = between(5'000, 120'000);
        last.cached = between(0, last.input);
        last.output = between(50, 6'000);
        last.reasoning = last.output / 3;
        totals.input += last.input;
        totals.cached += last.cached;
        totals.output += last.output;
        totals.reasoning += last.reasoning;
        auto usageJson = [](const CodexTotals& t) {
            return fmt::format(R"({{"input_tokens":{},"cached_input_tokens":{},"output_tokens":{},"reasoning_output_tokens":{},"total_tokens":{}}})",
                t.input, t.cached, t.output, t.reasoning, t.total());
        };
        auto countLine = [&](const std::string& timestamp) {
            fmt::format_to(std::back_inserter(out),
                R"({{"timestamp":"{}","type":"event_msg","payload":{{"type":"token_count","info":{{"total_token_usage":{},"last_token_usage":{},"model_context_window":272000}},"rate_limits":{{"primary":{{"used_percent":14.0,"window_minutes":299,"resets_in_seconds":8123}},"secondary":null}}}}}})",
                timestamp, usageJson(totals), usageJson(last));
            file.endLine();
        };
        auto timestamp = time();
        countLine(timestamp);
        if (between(0, 2) == 0)
            countLine(timestamp); // re-emitted with the same total
        UsageRecord record;
        record.model = model;
        record.input = last.input - last.cached;
        record.cacheRead = last.cached;
        record.output = last.output;
        count(record, /*claude=*/false);
    }

    void codexSession()
    {
        static constexpr std::array models { "gpt-5-codex", "gpt-5-codex", "gpt-5", "gpt-5.1-codex-max" };
        std::int64_t clock = 1'740'000'000'000 + between(0, 60LL * 86'400'000);
        bool fork = !m_parentLines.empty() && between(0, 9) == 0;
        if (fork)
            clock = m_parentEnd + between(60'000, 86'400'000);
        auto id = uuid();
        auto date = civilFromDay(static_cast<Day>(clock / 86'400'000));
        auto path = m_home / ".codex" / "sessions" / fmt::format("{:04}", date.year) / fmt::format("{:02}", date.month)
            / fmt::format("{:02}", date.day) / fmt::format("rollout-{}-{}.jsonl", timestampText(clock).substr(0, 19), id);
        std::string model = models[static_cast<std::size_t>(between(0, std::ssize(models) - 1))];
        CodexTotals totals;
        std::uint64_t target = fileTarget();
        std::uint64_t copied = 0;
        {
            FileWriter file(path);
            auto forkedFrom = fork ? fmt::format(R"("forked_from_id":"{}",)", m_parentId) : std::string();
            fmt::format_to(std::back_inserter(file.buffer()),
                R"({{"timestamp":"{}","type":"session_meta","payload":{{"id":"{}",{}"timestamp":"{}","cwd":"/home/dev/project","originator":"codex_cli_rs","cli_version":"0.46.0","instructions":"{}","git":{{"commit_hash":"{:040x}","branch":"main"}}}}}})",
                timestampText(clock), id, forkedFrom, timestampText(clock), m_pool.take(m_random, 4'000), between(0, 0x7fffffffffffffff));
            file.endLine();
            if (fork && m_copies == GeneratedCopies::written) {
                // The parent's lines, its session_meta first, every time set to the fork's creation; the
                // fork's totals go on from the parent's.
                auto copy = m_parentLines;
                auto creation = timestampText(clock);
                static constexpr std::string_view prefix = R"({"timestamp":")";
                for (std::size_t line = 0; line < copy.size(); line = copy.find('\n', line) + 1) {
                    if (copy.compare(line, prefix.size(), prefix) == 0)
                        copy.replace(line + prefix.size(), creation.size(), creation);
                }
                file.buffer() += copy;
                copied = copy.size();
                totals = m_parentTotals;
            }
            while (file.bytes() - copied < target)
                codexTurn(file, clock, model, totals);
            m_usage.bytes += file.bytes();
            m_copiedBytes += copied;
            m_usage.files += 1;
            // A short session may be forked later: keep what a fork would copy.
            if (!fork && file.bytes() < (std::size_t(1) << 20)) {
                m_parentTotals = totals;
                m_parentEnd = clock;
                m_parentId = id;
                m_pendingParent = path;
            }
        }
        if (!m_pendingParent.empty()) {
            m_parentLines = contents(m_pendingParent);
            m_pendingParent.clear();
        }
    }

    fs::path m_home;
    std::mt19937_64 m_random;
    TextPool m_pool;
    GeneratedCopies m_copies;
    GeneratedUsage m_usage;
    std::uint64_t m_copiedBytes = 0;
    fs::path m_resumable; // a short main Claude session that a later one may resume
    std::string m_resumableSession;
    std::int64_t m_resumableEnd = 0;
    std::string m_parentId;
    std::string m_parentLines;
    CodexTotals m_parentTotals;
    std::int64_t m_parentEnd = 0;
    fs::path m_pendingParent;
};

} // namespace

GeneratedUsage generateAgentLogs(const std::filesystem::path& home, std::uint64_t targetBytes, std::uint64_t seed,
    GeneratedCopies copies)
{
    return Generator(home, seed, copies).run(targetBytes);
}

} // namespace quillmar
