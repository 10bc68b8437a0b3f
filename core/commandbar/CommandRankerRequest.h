#pragma once

#include <optional>
#include <vector>

#include <nlohmann/json.hpp>

#include "core/base/Result.h"
#include "core/commandbar/CommandCandidate.h"
#include "core/commandbar/CommandLearning.h"
#include "core/commandbar/CommandSection.h"

namespace quillmar {

// What `quillmar rank` reads: the lists of a ranker input, and the learning book, as one JSON object
// {"candidates":[...],"answers":[...],"fallbacks":[...],"learning":{...}}, every key optional.
struct CommandRankerRequest {
    std::vector<CommandCandidate> candidates;
    std::vector<CommandCandidate> answers;
    std::vector<CommandCandidate> fallbacks;
    std::optional<CommandLearning> learning; // none when the input has no "learning"

    // A candidate is {"id","source","title","subtitle","keywords","boost","date","learns"}: "id" and
    // "title" strings are required, "source" too (a raw value) except in "answers" (default "answer")
    // and "fallbacks" (default "web"); "date" is Unix epoch seconds or null, "learns" defaults to true
    // and "boost" to 0. "learning" is the book as the settings keep it, where "secret" may be left out
    // (32 zero bytes). Anything else is an Error whose message is one sentence naming the item.
    // Never throws.
    static Result<CommandRankerRequest> fromJson(const nlohmann::json& json);

    // {"sections":[{"id","title","results":[{"id","score","matches"}]}]}, in the given order.
    static nlohmann::json sectionsJson(const std::vector<CommandSection>& sections);
};

} // namespace quillmar
