#include "core/agents/ClaudeLineParser.h"

#include "core/base/CivilDate.h"
#include "core/agents/JsonFields.h"

namespace quillmar {

using namespace json;

struct ClaudeLineParser::State {
    ondemand::parser parser;
};

namespace {

bool readCacheCreation(ondemand::object object, UsageRecord& record, bool& split)
{
    for (auto field : object) {
        ondemand::raw_json_string key;
        if (field.key().get(key))
            return false;
        if (key.unsafe_is_equal("ephemeral_5m_input_tokens")) {
            if (!readCount(field.value(), maxLoggedTokens, record.cacheWrite))
                return false;
            split = true;
        } else if (key.unsafe_is_equal("ephemeral_1h_input_tokens")) {
            if (!readCount(field.value(), maxLoggedTokens, record.cacheWrite1h))
                return false;
            split = true;
        }
    }
    return true;
}

bool readWebSearches(ondemand::object object, UsageRecord& record)
{
    for (auto field : object) {
        ondemand::raw_json_string key;
        if (field.key().get(key))
            return false;
        if (key.unsafe_is_equal("web_search_requests") && !readCount(field.value(), maxLoggedTokens, record.webSearches))
            return false;
    }
    return true;
}

bool readUsage(ondemand::object object, UsageRecord& record)
{
    std::int64_t cacheCreation = 0;
    bool split = false;
    for (auto field : object) {
        ondemand::raw_json_string key;
        if (field.key().get(key))
            return false;
        bool ok = true;
        if (key.unsafe_is_equal("input_tokens")) {
            ok = readCount(field.value(), maxLoggedTokens, record.input);
        } else if (key.unsafe_is_equal("output_tokens")) {
            ok = readCount(field.value(), maxLoggedTokens, record.output);
        } else if (key.unsafe_is_equal("cache_read_input_tokens")) {
            ok = readCount(field.value(), maxLoggedTokens, record.cacheRead);
        } else if (key.unsafe_is_equal("cache_creation_input_tokens")) {
            ok = readCount(field.value(), maxLoggedTokens, cacheCreation);
        } else if (key.unsafe_is_equal("cache_creation")) {
            ondemand::object split5m1h;
            // null or another type: no split, the total stands for five-minute writes.
            if (!field.value().get_object().get(split5m1h))
                ok = readCacheCreation(split5m1h, record, split);
        } else if (key.unsafe_is_equal("server_tool_use")) {
            ondemand::object tools;
            if (!field.value().get_object().get(tools))
                ok = readWebSearches(tools, record);
        } else if (key.unsafe_is_equal("speed")) {
            record.fast = readString(field.value()) == std::optional<std::string_view>("fast");
        } else if (key.unsafe_is_equal("inference_geo")) {
            record.usOnly = readString(field.value()) == std::optional<std::string_view>("us");
        }
        if (!ok)
            return false;
    }
    if (!split)
        record.cacheWrite = cacheCreation;
    return true;
}

// message: id, model, usage. False when it cannot count.
bool readMessage(ondemand::object object, ClaudeEntry& entry, bool& hasUsage)
{
    for (auto field : object) {
        ondemand::raw_json_string key;
        if (field.key().get(key))
            return false;
        if (key.unsafe_is_equal("id")) {
            if (auto text = readString(field.value()))
                entry.messageId.assign(*text);
        } else if (key.unsafe_is_equal("model")) {
            auto text = readString(field.value());
            if (!text || *text == "<synthetic>")
                return false;
            entry.record.model.assign(*text);
        } else if (key.unsafe_is_equal("usage")) {
            ondemand::object usage;
            if (field.value().get_object().get(usage) || !readUsage(usage, entry.record))
                return false;
            hasUsage = true;
        }
    }
    return true;
}

} // namespace

ClaudeLineParser::ClaudeLineParser()
    : m_state(std::make_unique<State>())
{
}

ClaudeLineParser::~ClaudeLineParser() = default;

bool ClaudeLineParser::parse(const LogLine& line, ClaudeEntry& entry)
{
    // Most lines are the user's side (prompts, tool results, often the largest); none of them names the
    // assistant, so they are passed over without parsing.
    if (line.text.find("assistant") == std::string_view::npos || !endsLikeObject(line.text))
        return false;
    if (line.capacity < line.text.size() + simdjson::SIMDJSON_PADDING)
        return false;

    // Field by field, so that the strings keep their storage from line to line.
    auto& record = entry.record;
    record.model.clear();
    record.input = record.output = record.cacheRead = record.cacheWrite = record.cacheWrite1h = 0;
    record.fast = record.usOnly = false;
    record.webSearches = 0;
    record.recordedCost.reset();
    record.agent = Agent::claude;
    record.timestamp = 0;
    record.sessionId.clear();
    entry.messageId.clear();
    entry.requestId.clear();

    ondemand::document document;
    ondemand::object top;
    if (m_state->parser.iterate(line.text.data(), line.text.size(), line.capacity).get(document)
        || document.get_object().get(top))
        return false;

    bool isAssistant = false;
    bool hasTime = false;
    bool hasUsage = false;
    for (auto field : top) {
        ondemand::raw_json_string key;
        if (field.key().get(key))
            return false;
        if (key.unsafe_is_equal("type")) {
            isAssistant = readString(field.value()) == std::optional<std::string_view>("assistant");
            if (!isAssistant)
                return false;
        } else if (key.unsafe_is_equal("timestamp")) {
            auto text = readString(field.value());
            auto instant = text ? parseTimestamp(*text) : std::nullopt;
            if (!instant)
                return false;
            entry.record.timestamp = *instant;
            hasTime = true;
        } else if (key.unsafe_is_equal("sessionId")) {
            if (auto text = readString(field.value()))
                entry.record.sessionId.assign(*text);
        } else if (key.unsafe_is_equal("requestId")) {
            if (auto text = readString(field.value()))
                entry.requestId.assign(*text);
        } else if (key.unsafe_is_equal("costUSD")) {
            entry.record.recordedCost = readNumber(field.value());
        } else if (key.unsafe_is_equal("message")) {
            ondemand::object message;
            if (field.value().get_object().get(message) || !readMessage(message, entry, hasUsage))
                return false;
        }
    }
    return isAssistant && hasTime && hasUsage;
}

} // namespace quillmar
