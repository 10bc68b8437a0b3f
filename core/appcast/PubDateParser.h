#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string_view>

#include <unicode/uversion.h>

U_NAMESPACE_BEGIN
class SimpleDateFormat;
U_NAMESPACE_END

namespace quillmar {

// Reads the publication dates of feed items: the pattern "EEE, dd MMM yyyy HH:mm:ss Z" in the "en_US_POSIX"
// locale, not lenient, the whole text consumed ("Tue, 05 Mar 2024 10:15:00 +0100"). Holds an ICU formatter,
// so one parser serves one thread.
class PubDateParser final {
public:
    PubDateParser();
    ~PubDateParser();
    PubDateParser(const PubDateParser&) = delete;
    PubDateParser& operator=(const PubDateParser&) = delete;

    // The instant, whole seconds since the Unix epoch (fractions cannot be written in the pattern); none when
    // the text does not match or ICU could not build the formatter.
    std::optional<std::chrono::sys_seconds> parse(std::string_view text);

private:
    std::unique_ptr<icu::SimpleDateFormat> m_format;
};

} // namespace quillmar
