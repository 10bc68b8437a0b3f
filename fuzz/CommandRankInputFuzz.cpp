#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/commandbar/CommandRanker.h"
#include "core/commandbar/CommandRankerRequest.h"

// `quillmar rank` reads its candidates and learning book from standard input: any JSON must decode
// without throwing, and whatever decodes must rank without failing.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string_view text(reinterpret_cast<const char*>(data), size);
    auto json = nlohmann::json::parse(text, /*callback=*/nullptr, /*allow_exceptions=*/false);
    if (json.is_discarded())
        return 0;
    auto request = quillmar::CommandRankerRequest::fromJson(json);
    if (!request)
        return 0;
    quillmar::CommandRanker::Input input;
    input.candidates = quillmar::makeCandidateList(std::move(request->candidates));
    input.answers = std::move(request->answers);
    input.fallbacks = std::move(request->fallbacks);
    if (request->learning)
        input.frecency = std::make_shared<const quillmar::CommandLearning>(std::move(*request->learning));
    input.now = quillmar::WallTime(std::chrono::seconds(1'700'000'000));
    quillmar::CommandRanker ranker;
    // The titles themselves make good queries: they exercise exact, prefix and scattered matches.
    const char* queries[] = { "", "m", "ma x", "\u00E9t\u00E9" };
    for (const char* query : queries) {
        input.query = query;
        for (auto scope : { quillmar::CommandScope::all, quillmar::CommandScope::emoji }) {
            input.scope = scope;
            auto sections = ranker.rank(input);
            (void)quillmar::CommandRankerRequest::sectionsJson(sections).dump(-1, ' ', false,
                nlohmann::json::error_handler_t::replace);
        }
    }
    if (!input.candidates->empty()) {
        input.query = input.candidates->front().title;
        (void)ranker.rank(input);
    }
    return 0;
}
