#pragma once

#include <compare>
#include <string>
#include <string_view>
#include <vector>

namespace quillmar {

// The one rule set for comparing application versions. Versions are plain strings; there is no parsed
// version object. Every function is total: any pair of strings, empty or ill-formed UTF-8 included, has an
// answer, and numbers are compared as digit strings, so they may be of any length.
//
// The ordering is std::weak_ordering: `equivalent` means "the same version" ('1.2' and '1.2.0', '1.0RC1'
// and '1.0rc1'), which does not make the strings interchangeable.
class AppVersion final {
public:
    AppVersion() = delete;

    // Trims Unicode white space at both ends, keeps only what stands before the first comma
    // ('2.1, build 7' → '2.1'), and drops a leading "v" or "V" when a number follows it ('v1.2' → '1.2';
    // 'version' is left alone).
    static std::string normalize(std::string_view version);

    // The normalised version cut at every character that is neither a letter nor a number, empty pieces
    // dropped: '1.2-beta3' → ['1', '2', 'beta3'].
    static std::vector<std::string> parts(std::string_view version);

    // Part by part, a missing part reading as "0": '1.2' = '1.2.0' < '1.2.1'; '1.0beta' < '1.0' < '1.0-1'.
    static std::weak_ordering compare(std::string_view a, std::string_view b);

    // The installed version carries no real information: the short version is empty, has no parts, or is
    // all zeros ('0', '0.0.0'), or it is exactly '1.0' with the build '1' or empty (what project templates
    // leave behind). Both are normalised first.
    static bool isPlaceholder(std::string_view shortVersion, std::string_view build);

    // A plain dotted number without a pre-release marker, after normalising: '1.2.3' is; '1.2.3-beta',
    // '1..2', '.1' and '1.' are not.
    static bool isStableNumeric(std::string_view version);

private:
    // One part against another: numbers by value, a release number above a pre-release word.
    static std::weak_ordering comparePart(std::string_view x, std::string_view y);
    // Two digit strings by value without converting them: leading "0"s stripped, then the shorter is less,
    // then plain string order ('10' > '9', '007' = '7', '0' = '').
    static std::weak_ordering compareDigits(std::string_view x, std::string_view y);
    // The maximal runs of characters that agree in being numbers or not: 'beta12rc' → ['beta', '12', 'rc'].
    static std::vector<std::string_view> runs(std::string_view part);
    static std::weak_ordering compareRuns(const std::vector<std::string_view>& a, const std::vector<std::string_view>& b);
};

} // namespace quillmar
