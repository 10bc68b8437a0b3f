#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <unicode/uversion.h>

U_NAMESPACE_BEGIN
class BreakIterator;
U_NAMESPACE_END

namespace quillmar {

// A folded user-perceived character as one comparable number: the code point when folding leaves a
// single one, else a number above every code point that stands for that sequence of code points for the
// rest of the process (kept in a process-wide table, so keys are never written anywhere).
using FoldedKey = std::uint32_t;

// How a character counts for word starts.
enum class CharacterClass : unsigned char {
    other,
    wordBreak, // whitespace or a separator: the next character starts a word
    lowercase,
    uppercase,
};

// Cuts UTF-8 text into user-perceived characters (extended grapheme clusters, "\r\n" being one) and folds
// each for matching: A to Z lowercased, any other character folded case- and diacritic-insensitively with
// no locale, keeping the first character of the result. Pure ASCII text takes a path without ICU. Holds
// ICU iterators and scratch buffers, so one folder serves one thread; the spans it returns live until its
// next call. Ill-formed UTF-8 reads as U+FFFD.
class CharacterFolder final {
public:
    struct Character {
        std::uint32_t begin; // byte offsets into the text
        std::uint32_t end;
        FoldedKey key;
        CharacterClass characterClass; // of the character as written, before folding
        bool isWhitespace;
    };

    CharacterFolder();
    ~CharacterFolder();
    CharacterFolder(const CharacterFolder&) = delete;
    CharacterFolder& operator=(const CharacterFolder&) = delete;

    // The characters of `text` in order. Texts of 4 GiB and more are not supported.
    std::span<const Character> split(std::string_view text);

    // The first character of `text` folded, as UTF-8; empty for empty text.
    std::string foldedCharacter(std::string_view text);

    // foldedLoosely (core/base/SearchFolding.h): for keys that must not depend on how a word was typed.
    static std::string foldLoosely(std::string_view text);

    static bool isSeparator(char32_t codePoint);

private:
    FoldedKey foldCodePoints(std::u32string_view codePoints);
    void splitAscii(std::string_view text);
    void splitUnicode(std::string_view text);

    std::unique_ptr<icu::BreakIterator> m_breaks; // over the text being split
    std::unique_ptr<icu::BreakIterator> m_foldedBreaks; // over one folded character
    std::vector<Character> m_characters;
    std::u32string m_codePoints;
    std::u32string m_folded;
    std::unordered_map<char32_t, FoldedKey> m_singleKeys; // folds of lone code points, computed once
};

} // namespace quillmar
