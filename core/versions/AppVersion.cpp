#include "core/versions/AppVersion.h"

#include <algorithm>
#include <cstddef>

#include "core/versions/VersionCharacters.h"

namespace quillmar {

namespace {

VersionCharacterClass firstClass(std::string_view text)
{
    return text.empty() ? VersionCharacterClass::other : versionCharacterAt(text, 0).characterClass;
}

bool beginsWithLetter(std::string_view text)
{
    return firstClass(text) == VersionCharacterClass::letter;
}

// Characters, not bytes: every byte that does not continue a sequence starts one. Only used on runs of
// numbers, which are well-formed.
std::size_t characterCount(std::string_view text)
{
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(),
        [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
}

std::weak_ordering asWeak(std::strong_ordering order)
{
    return order;
}

// Lower-cased plain string order; byte order of UTF-8 is code point order.
std::weak_ordering compareLowered(std::string_view x, std::string_view y)
{
    return asWeak(lowercasedText(x) <=> lowercasedText(y));
}

bool isZeroPart(std::string_view part)
{
    return !part.empty() && std::all_of(part.begin(), part.end(), [](char byte) { return byte == '0'; });
}

} // namespace

std::string AppVersion::normalize(std::string_view version)
{
    auto text = trimmedUnicodeSpace(version);
    if (auto comma = text.find(','); comma != std::string_view::npos)
        text = text.substr(0, comma);
    if (!text.empty() && (text.front() == 'v' || text.front() == 'V') && text.size() > 1
        && versionCharacterAt(text, 1).characterClass == VersionCharacterClass::number)
        text.remove_prefix(1);
    return std::string(text);
}

std::vector<std::string> AppVersion::parts(std::string_view version)
{
    auto text = normalize(version);
    std::vector<std::string> pieces;
    std::size_t pieceStart = 0;
    std::size_t offset = 0;
    auto cut = [&](std::size_t end) {
        if (end > pieceStart)
            pieces.emplace_back(text, pieceStart, end - pieceStart);
    };
    while (offset < text.size()) {
        auto character = versionCharacterAt(text, offset);
        offset += character.length;
        if (character.characterClass == VersionCharacterClass::other) {
            cut(character.offset);
            pieceStart = offset;
        }
    }
    cut(text.size());
    return pieces;
}

std::weak_ordering AppVersion::compare(std::string_view a, std::string_view b)
{
    auto left = parts(a);
    auto right = parts(b);
    const std::string zero = "0";
    auto count = std::max(left.size(), right.size());
    for (std::size_t index = 0; index < count; ++index) {
        const auto& x = index < left.size() ? left[index] : zero;
        const auto& y = index < right.size() ? right[index] : zero;
        if (auto order = comparePart(x, y); order != 0)
            return order;
    }
    return std::weak_ordering::equivalent;
}

std::weak_ordering AppVersion::comparePart(std::string_view x, std::string_view y)
{
    bool xNumber = isAllNumbers(x);
    bool yNumber = isAllNumbers(y);
    if (xNumber && yNumber)
        return compareDigits(x, y);
    // A release number outranks a pre-release word: '1.0' > '1.0.beta'.
    if (xNumber && beginsWithLetter(y))
        return std::weak_ordering::greater;
    if (yNumber && beginsWithLetter(x))
        return std::weak_ordering::less;
    return compareRuns(runs(x), runs(y));
}

std::weak_ordering AppVersion::compareDigits(std::string_view x, std::string_view y)
{
    auto stripZeros = [](std::string_view digits) {
        auto first = digits.find_first_not_of('0');
        return first == std::string_view::npos ? std::string_view() : digits.substr(first);
    };
    x = stripZeros(x);
    y = stripZeros(y);
    if (auto byLength = characterCount(x) <=> characterCount(y); byLength != 0)
        return asWeak(byLength);
    return asWeak(x <=> y);
}

std::vector<std::string_view> AppVersion::runs(std::string_view part)
{
    std::vector<std::string_view> pieces;
    std::size_t runStart = 0;
    bool runIsNumber = false;
    for (std::size_t offset = 0; offset < part.size();) {
        auto character = versionCharacterAt(part, offset);
        bool isNumber = character.characterClass == VersionCharacterClass::number;
        if (offset > 0 && isNumber != runIsNumber) {
            pieces.push_back(part.substr(runStart, offset - runStart));
            runStart = offset;
        }
        runIsNumber = isNumber;
        offset += character.length;
    }
    if (!part.empty())
        pieces.push_back(part.substr(runStart));
    return pieces;
}

std::weak_ordering AppVersion::compareRuns(const std::vector<std::string_view>& a, const std::vector<std::string_view>& b)
{
    for (std::size_t index = 0; index < a.size(); ++index) {
        auto p = a[index];
        if (index >= b.size()) {
            // A trailing word marks a pre-release: '1a' < '1'.
            if (beginsWithLetter(p))
                return std::weak_ordering::less;
            return compareDigits(p, "0");
        }
        auto q = b[index];
        bool pNumber = isAllNumbers(p);
        bool qNumber = isAllNumbers(q);
        if (pNumber && !qNumber)
            return std::weak_ordering::greater;
        if (qNumber && !pNumber)
            return std::weak_ordering::less;
        if (pNumber) {
            if (auto order = compareDigits(p, q); order != 0)
                return order;
            continue;
        }
        if (auto order = compareLowered(p, q); order != 0)
            return order;
    }
    if (a.size() >= b.size())
        return std::weak_ordering::equivalent;
    auto next = b[a.size()];
    if (beginsWithLetter(next))
        return std::weak_ordering::greater;
    return compareDigits("0", next);
}

bool AppVersion::isPlaceholder(std::string_view shortVersion, std::string_view build)
{
    auto version = normalize(shortVersion);
    auto buildNumber = normalize(build);
    if (version.empty())
        return true;
    auto pieces = parts(version);
    if (pieces.empty() || std::all_of(pieces.begin(), pieces.end(), [](const std::string& part) { return isZeroPart(part); }))
        return true;
    return version == "1.0" && (buildNumber == "1" || buildNumber.empty());
}

bool AppVersion::isStableNumeric(std::string_view version)
{
    auto text = normalize(version);
    if (text.empty() || text.find("..") != std::string::npos)
        return false;
    if (text.front() == '.' || text.back() == '.')
        return false;
    for (std::size_t offset = 0; offset < text.size();) {
        auto character = versionCharacterAt(text, offset);
        if (character.codePoint != '.' && character.characterClass != VersionCharacterClass::number)
            return false;
        offset += character.length;
    }
    return true;
}

} // namespace quillmar
