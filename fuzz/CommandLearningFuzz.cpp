#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/commandbar/CommandLearning.h"

// The learning book comes back from the settings: any JSON must decode without throwing, and a decoded
// book must survive every operation the bar performs on it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string_view text(reinterpret_cast<const char*>(data), size);
    auto json = nlohmann::json::parse(text, /*callback=*/nullptr, /*allow_exceptions=*/false);
    if (json.is_discarded())
        return 0;
    auto book = quillmar::CommandLearning::fromJson(json);
    if (!book)
        return 0;
    auto now = quillmar::WallTime(std::chrono::seconds(1'700'000'000));
    for (const auto& [id, entry] : book->entries)
        (void)book->weight(id, now);
    (void)book->habitBonuses("ma", now);
    (void)book->top(10, now);
    book->record("fuzz", "ma", now);
    auto again = quillmar::CommandLearning::fromJson(book->toJson());
    if (!again || again->entries.size() != book->entries.size() || again->habits.size() != book->habits.size())
        __builtin_trap(); // what was written must read back whole
    return 0;
}
