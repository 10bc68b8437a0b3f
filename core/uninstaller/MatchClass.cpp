#include "core/uninstaller/MatchClass.h"

#include <algorithm>
#include <array>

namespace quillmar {

namespace {

// The extensions that the system gives an application's own single files.
constexpr std::array<std::string_view, 5> exactSuffixes { "plist", "savedstate", "binarycookies", "lockfile", "log" };

// A preference file kept per machine carries the hardware UUID: 36 characters, four of them "-".
constexpr std::size_t uuidLength = 36;
constexpr std::size_t uuidHyphens = 4;

// Team identifiers are ten characters ("ABCDE12345"); group containers put one before the identifier.
constexpr std::size_t teamIdentifierLength = 10;

} // namespace

std::string_view matchClassName(MatchClass match)
{
    switch (match) {
    case MatchClass::none:
        return "none";
    case MatchClass::related:
        return "related";
    case MatchClass::exact:
        return "exact";
    }
    return "none";
}

MatchClass classify(std::string_view entry, std::string_view identifier)
{
    if (identifier.empty())
        return MatchClass::none;
    if (entry == identifier)
        return MatchClass::exact;

    bool startsWithIdentifierAndDot = entry.size() > identifier.size() && entry.starts_with(identifier)
        && entry[identifier.size()] == '.';
    if (startsWithIdentifierAndDot) {
        auto rest = entry.substr(identifier.size() + 1);
        if (std::find(exactSuffixes.begin(), exactSuffixes.end(), rest) != exactSuffixes.end())
            return MatchClass::exact;
        constexpr std::string_view plistSuffix = ".plist";
        if (rest.size() == uuidLength + plistSuffix.size() && rest.ends_with(plistSuffix)) {
            auto middle = rest.substr(0, uuidLength);
            if (static_cast<std::size_t>(std::count(middle.begin(), middle.end(), '-')) == uuidHyphens)
                return MatchClass::exact;
        }
    }

    if (entry.size() > identifier.size() + 1 && entry.ends_with(identifier)
        && entry[entry.size() - identifier.size() - 1] == '.') {
        auto firstDot = entry.find('.');
        if (firstDot == teamIdentifierLength)
            return MatchClass::exact;
    }

    return startsWithIdentifierAndDot ? MatchClass::related : MatchClass::none;
}

} // namespace quillmar
