#pragma once

#include <string>
#include <string_view>

#include "core/runtime/Clock.h"

namespace quillmar {

// Which answerer produced an answer; also the order in which they are asked.
enum class InlineAnswerKind { calculator, units, timeZones };

std::string_view rawValue(InlineAnswerKind kind); // "calculator", "units", "timeZones"

// One inline answer, ready for the command bar.
struct InlineAnswer {
    InlineAnswerKind kind = InlineAnswerKind::calculator;
    std::string title; // what the bar shows: "1,024", "3.106855961 mi", "8:00 AM tomorrow in Tokyo (GMT+9)"
    std::string subtitle; // what it answers: "2^10", "5 kilometers in miles", "Asia/Tokyo"
    std::string copyText; // what executing the answer copies: "1024", "3.106855961 mi", the time text
    std::string symbol; // the row's icon: "equal.circle", the unit category's symbol, "globe"

    bool operator==(const InlineAnswer&) const = default;
};

// What the answers depend on besides the query.
struct AnswerContext {
    WallTime now;
    std::string localZone; // a time-zone identifier: "Europe/Berlin"
    std::string locale; // an ICU locale identifier for the shown calculator text: "de_DE"
};

} // namespace quillmar
