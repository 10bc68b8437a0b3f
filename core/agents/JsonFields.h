#pragma once

// Small readers over simdjson's on-demand values, shared by the two log-line parsers. Internal to
// core/agents: include it from .cpp files only.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <simdjson.h>

#include "core/agents/LogLine.h"

namespace quillmar::json {

namespace ondemand = simdjson::ondemand;

static_assert(logLinePadding >= simdjson::SIMDJSON_PADDING, "lines must carry the padding simdjson reads");

// A token count: null reads 0; anything but a whole number from 0 to `limit` is an error (false).
inline bool readCount(ondemand::value value, std::int64_t limit, std::int64_t& count)
{
    ondemand::json_type type;
    if (value.type().get(type))
        return false;
    if (type == ondemand::json_type::null) {
        count = 0;
        return true;
    }
    std::int64_t number = 0;
    if (type != ondemand::json_type::number || value.get_int64().get(number) || number < 0 || number > limit)
        return false;
    count = number;
    return true;
}

// A string, or none for any other type.
inline std::optional<std::string_view> readString(ondemand::value value)
{
    std::string_view text;
    if (value.get_string().get(text))
        return std::nullopt;
    return text;
}

// A number, or none for null or any other type.
inline std::optional<double> readNumber(ondemand::value value)
{
    double number = 0;
    if (value.get_double().get(number))
        return std::nullopt;
    return number;
}

// A line that was cut short while being written: a JSON object line always ends in "}".
inline bool endsLikeObject(std::string_view line)
{
    while (!line.empty() && (line.back() == ' ' || line.back() == '\t'))
        line.remove_suffix(1);
    return !line.empty() && line.back() == '}';
}

} // namespace quillmar::json
