#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/answers/CommandCalculator.h"
#include "core/answers/CommandUnits.h"

// Whatever is typed into the command bar reaches the calculator and the unit parser on every keystroke:
// any bytes must come back as an answer or nothing, without a crash, a hang or unbounded recursion.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string_view text(reinterpret_cast<const char*>(data), size);
    auto calculation = quillmar::CommandCalculator::evaluate(text, "en_US");
    (void)calculation;
    auto tree = quillmar::CommandCalculator::parse(text);
    if (tree) {
        auto value = tree->evaluate();
        (void)value;
    }
    auto conversion = quillmar::CommandUnits::convert(text);
    if (conversion) {
        auto shown = conversion->text();
        (void)shown;
    }
    auto quantity = quillmar::CommandUnits::parseQuantity(text);
    (void)quantity;
    return 0;
}
