#include "core/commandbar/CommandRankerRequest.h"

#include <cmath>
#include <string>
#include <string_view>

#include <fmt/format.h>

#include "core/commandbar/EpochTime.h"

namespace quillmar {

namespace {

Error invalid(std::string message)
{
    return Error { "rank.input", std::move(message), "quillmar rank" };
}

// Reads one candidate of the list `listName`; `number` counts from 1 for the message.
class CandidateReader final {
public:
    CandidateReader(std::string_view listName, std::size_t number, const nlohmann::json& json)
        : m_listName(listName)
        , m_number(number)
        , m_json(json)
    {
    }

    Error problem(std::string_view what) const
    {
        return invalid(fmt::format("Item {} of \"{}\" {}.", m_number, m_listName, what));
    }

    // The member `key`, or null when absent.
    const nlohmann::json& member(const char* key) const
    {
        static const nlohmann::json absent;
        auto found = m_json.find(key);
        return found == m_json.end() ? absent : *found;
    }

    Result<std::string> string(const char* key, std::optional<std::string_view> fallback) const
    {
        const auto& value = member(key);
        if (value.is_string())
            return value.get<std::string>();
        if (value.is_null() && fallback)
            return std::string(*fallback);
        if (value.is_null())
            return problem(fmt::format("has no \"{}\"", key));
        return problem(fmt::format("has a \"{}\" that is not a string", key));
    }

    Result<CommandCandidate> read(std::optional<CommandSource> defaultSource) const
    {
        if (!m_json.is_object())
            return problem("is not an object");
        CommandCandidate candidate;
        QUILLMAR_TRY_ASSIGN(candidate.id, string("id", std::nullopt));
        QUILLMAR_TRY_ASSIGN(candidate.title, string("title", std::nullopt));
        QUILLMAR_TRY_ASSIGN(candidate.subtitle, string("subtitle", ""));
        std::optional<std::string_view> defaultRaw;
        if (defaultSource)
            defaultRaw = rawValue(*defaultSource);
        QUILLMAR_TRY_ASSIGN(auto sourceRaw, string("source", defaultRaw));
        auto source = commandSourceFromRawValue(sourceRaw);
        if (!source)
            return problem(fmt::format("has an unknown \"source\" \"{}\"", sourceRaw));
        candidate.source = *source;

        const auto& keywords = member("keywords");
        if (!keywords.is_null()) {
            if (!keywords.is_array())
                return problem("has \"keywords\" that are not an array of strings");
            for (const auto& keyword : keywords) {
                if (!keyword.is_string())
                    return problem("has \"keywords\" that are not an array of strings");
                candidate.keywords.push_back(keyword.get<std::string>());
            }
        }
        const auto& boost = member("boost");
        if (!boost.is_null()) {
            if (!boost.is_number() || !std::isfinite(boost.get<double>()))
                return problem("has a \"boost\" that is not a number");
            candidate.boost = boost.get<double>();
        }
        const auto& date = member("date");
        if (!date.is_null()) {
            if (!date.is_number())
                return problem("has a \"date\" that is not a number of seconds");
            candidate.date = wallTimeFromEpochSeconds(date.get<double>());
            if (!candidate.date)
                return problem("has a \"date\" out of range");
        }
        const auto& learns = member("learns");
        if (!learns.is_null()) {
            if (!learns.is_boolean())
                return problem("has a \"learns\" that is not true or false");
            candidate.learns = learns.get<bool>();
        }
        return candidate;
    }

private:
    std::string_view m_listName;
    std::size_t m_number;
    const nlohmann::json& m_json;
};

Result<std::vector<CommandCandidate>> readList(const nlohmann::json& input, const char* listName,
    std::optional<CommandSource> defaultSource)
{
    std::vector<CommandCandidate> candidates;
    auto found = input.find(listName);
    if (found == input.end() || found->is_null())
        return candidates;
    if (!found->is_array())
        return invalid(fmt::format("\"{}\" is not an array.", listName));
    candidates.reserve(found->size());
    for (std::size_t index = 0; index < found->size(); ++index) {
        QUILLMAR_TRY_ASSIGN(auto candidate, CandidateReader(listName, index + 1, (*found)[index]).read(defaultSource));
        candidates.push_back(std::move(candidate));
    }
    return candidates;
}

} // namespace

Result<CommandRankerRequest> CommandRankerRequest::fromJson(const nlohmann::json& json)
{
    if (!json.is_object())
        return invalid("The input is not a JSON object.");
    CommandRankerRequest request;
    QUILLMAR_TRY_ASSIGN(request.candidates, readList(json, "candidates", std::nullopt));
    QUILLMAR_TRY_ASSIGN(request.answers, readList(json, "answers", CommandSource::answer));
    QUILLMAR_TRY_ASSIGN(request.fallbacks, readList(json, "fallbacks", CommandSource::web));
    if (auto learning = json.find("learning"); learning != json.end() && !learning->is_null()) {
        if (!learning->is_object())
            return invalid("\"learning\" is not a learning book.");
        auto book = *learning;
        if (!book.contains("secret"))
            book["secret"] = CommandLearning {}.toJson()["secret"];
        request.learning = CommandLearning::fromJson(book);
        if (!request.learning)
            return invalid("\"learning\" is not a learning book.");
    }
    return request;
}

nlohmann::json CommandRankerRequest::sectionsJson(const std::vector<CommandSection>& sections)
{
    auto sectionsJson = nlohmann::json::array();
    for (const auto& section : sections) {
        auto results = nlohmann::json::array();
        for (const auto& result : section.results)
            results.push_back({ { "id", result.candidate->id }, { "score", result.score }, { "matches", result.matches } });
        sectionsJson.push_back({ { "id", section.id }, { "title", section.title }, { "results", std::move(results) } });
    }
    return { { "sections", std::move(sectionsJson) } };
}

} // namespace quillmar
