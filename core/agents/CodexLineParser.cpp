#include "core/agents/CodexLineParser.h"

#include "core/base/CivilDate.h"
#include "core/agents/JsonFields.h"

namespace quillmar {

using namespace json;

struct CodexLineParser::State {
    ondemand::parser parser;
};

namespace {

// What a payload may hold for any of the three kinds; which part counts is known from the line's type,
// which may come before or after it.
struct Payload {
    std::optional<std::string_view> type;
    std::optional<std::string_view> id;
    std::optional<std::string_view> model;
    bool forked = false;
    bool hasTotals = false;
};

bool readTotals(ondemand::object object, CodexTokenTotals& totals)
{
    bool hasTotal = false;
    for (auto field : object) {
        ondemand::raw_json_string key;
        if (field.key().get(key))
            return false;
        bool ok = true;
        if (key.unsafe_is_equal("input_tokens")) {
            ok = readCount(field.value(), maxLoggedTokens, totals.input);
        } else if (key.unsafe_is_equal("cached_input_tokens")) {
            ok = readCount(field.value(), maxLoggedTokens, totals.cachedInput);
        } else if (key.unsafe_is_equal("output_tokens")) {
            ok = readCount(field.value(), maxLoggedTokens, totals.output);
        } else if (key.unsafe_is_equal("reasoning_output_tokens")) {
            ok = readCount(field.value(), maxLoggedTokens, totals.reasoningOutput);
        } else if (key.unsafe_is_equal("total_tokens")) {
            ok = readCount(field.value(), maxLoggedTokens * 2, totals.total);
            hasTotal = true;
        }
        if (!ok)
            return false;
    }
    if (!hasTotal)
        totals.total = totals.input + totals.output;
    return true;
}

bool readInfo(ondemand::object object, CodexTokenTotals& totals, bool& hasTotals)
{
    for (auto field : object) {
        ondemand::raw_json_string key;
        if (field.key().get(key))
            return false;
        if (key.unsafe_is_equal("total_token_usage")) {
            ondemand::object usage;
            if (field.value().get_object().get(usage))
                continue; // null: no totals
            if (!readTotals(usage, totals))
                return false;
            hasTotals = true;
        }
    }
    return true;
}

bool readPayload(ondemand::object object, Payload& payload, CodexTokenTotals& totals)
{
    for (auto field : object) {
        ondemand::raw_json_string key;
        if (field.key().get(key))
            return false;
        if (key.unsafe_is_equal("type")) {
            payload.type = readString(field.value());
        } else if (key.unsafe_is_equal("id")) {
            payload.id = readString(field.value());
        } else if (key.unsafe_is_equal("model")) {
            payload.model = readString(field.value());
        } else if (key.unsafe_is_equal("forked_from_id")) {
            auto parent = readString(field.value());
            payload.forked = parent && !parent->empty();
        } else if (key.unsafe_is_equal("info")) {
            ondemand::object info;
            if (field.value().get_object().get(info))
                continue; // null while only rate limits are reported
            if (!readInfo(info, totals, payload.hasTotals))
                return false;
        }
    }
    return true;
}

} // namespace

CodexLineParser::CodexLineParser()
    : m_state(std::make_unique<State>())
{
}

CodexLineParser::~CodexLineParser() = default;

bool CodexLineParser::parse(const LogLine& line, CodexEntry& entry)
{
    if (!endsLikeObject(line.text) || line.capacity < line.text.size() + simdjson::SIMDJSON_PADDING)
        return false;
    ondemand::document document;
    ondemand::object top;
    if (m_state->parser.iterate(line.text.data(), line.text.size(), line.capacity).get(document)
        || document.get_object().get(top))
        return false;

    std::optional<CodexEntry::Kind> kind;
    bool sawType = false;
    bool hasTime = false;
    Payload payload;
    entry.totals = {};
    for (auto field : top) {
        ondemand::raw_json_string key;
        if (field.key().get(key))
            return false;
        if (key.unsafe_is_equal("type")) {
            auto type = readString(field.value());
            sawType = true;
            if (type == std::optional<std::string_view>("session_meta"))
                kind = CodexEntry::Kind::sessionMeta;
            else if (type == std::optional<std::string_view>("turn_context"))
                kind = CodexEntry::Kind::turnContext;
            else if (type == std::optional<std::string_view>("event_msg"))
                kind = CodexEntry::Kind::tokenCount; // if the payload says token_count
            else
                return false; // most lines are conversation items: their payloads are never read
        } else if (key.unsafe_is_equal("timestamp")) {
            auto text = readString(field.value());
            auto instant = text ? parseTimestamp(*text) : std::nullopt;
            if (!instant)
                return false;
            entry.timestamp = *instant;
            hasTime = true;
        } else if (key.unsafe_is_equal("payload")) {
            ondemand::object object;
            if (field.value().get_object().get(object) || !readPayload(object, payload, entry.totals))
                return false;
        }
    }
    if (!sawType || !kind)
        return false;
    entry.kind = *kind;
    switch (*kind) {
    case CodexEntry::Kind::sessionMeta:
        entry.text.assign(payload.id.value_or(std::string_view()));
        entry.forked = payload.forked;
        return hasTime;
    case CodexEntry::Kind::turnContext:
        if (!payload.model)
            return false;
        entry.text.assign(*payload.model);
        return true;
    case CodexEntry::Kind::tokenCount:
        return hasTime && payload.type == std::optional<std::string_view>("token_count") && payload.hasTotals;
    }
    return false;
}

} // namespace quillmar
