#include "core/appcast/PubDateParser.h"

#include <climits>
#include <cmath>
#include <cstdint>

#include <unicode/locid.h>
#include <unicode/parsepos.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>
#include <unicode/unistr.h>

namespace quillmar {

namespace {

// About ±292 million years in milliseconds stays well inside what a 64-bit count of seconds holds.
constexpr double largestMilliseconds = 9.0e18;

} // namespace

PubDateParser::PubDateParser()
{
    UErrorCode status = U_ZERO_ERROR;
    auto format = std::make_unique<icu::SimpleDateFormat>(
        icu::UnicodeString(u"EEE, dd MMM yyyy HH:mm:ss Z"), icu::Locale("en_US_POSIX"), status);
    if (U_FAILURE(status))
        return;
    format->setLenient(false);
    // The text names its own offset; the zone only matters should ICU ever fall back to it.
    format->adoptTimeZone(icu::TimeZone::createTimeZone(icu::UnicodeString(u"UTC")));
    m_format = std::move(format);
}

PubDateParser::~PubDateParser() = default;

std::optional<std::chrono::sys_seconds> PubDateParser::parse(std::string_view text)
{
    // No date written in the pattern comes near this length; the bound spares ICU a hostile text.
    if (!m_format || text.size() > 256)
        return std::nullopt;
    auto unicode = icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<int32_t>(text.size())));
    icu::ParsePosition position(0);
    UDate milliseconds = m_format->parse(unicode, position);
    if (position.getErrorIndex() >= 0 || position.getIndex() != unicode.length())
        return std::nullopt;
    if (!std::isfinite(milliseconds) || std::fabs(milliseconds) > largestMilliseconds)
        return std::nullopt;
    auto seconds = static_cast<std::int64_t>(std::floor(milliseconds / 1000.0));
    return std::chrono::sys_seconds(std::chrono::seconds(seconds));
}

} // namespace quillmar
