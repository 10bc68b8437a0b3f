#include "core/clipboard/ClipAnalysis.h"

#include <algorithm>
#include <array>

#include "core/base/SearchFolding.h"
#include "core/base/Text.h"
#include "core/clipboard/WebLink.h"

namespace quillmar {

namespace {

constexpr std::array<std::string_view, 24> lineKeywords {
    "func ", "def ", "class ", "struct ", "enum ", "fn ", "let ", "var ", "const ", "return ", "import ",
    "#include", "#import", "#define", "public ", "private ", "if (", "for (", "while (", "package ",
    "using ", "namespace ", "function ", "SELECT ",
};

constexpr std::array<std::string_view, 9> operators {
    "==", "!=", "=>", "->", "&&", "||", "::", "+=", "();",
};

std::vector<std::string_view> splitLines(std::string_view text)
{
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        auto end = text.find('\n');
        lines.push_back(text.substr(0, end));
        if (end == std::string_view::npos)
            break;
        text.remove_prefix(end + 1);
    }
    return lines;
}

bool isIdentifierCharacter(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z')
        || (character >= '0' && character <= '9') || character == '_';
}

bool contains(std::string_view haystack, const std::string& needle)
{
    return foldedForSearch(haystack).find(needle) != std::string::npos;
}

} // namespace

namespace ClipAnalysis {

std::size_t lineCount(std::string_view text)
{
    if (text.empty())
        return 0;
    auto breaks = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    return text.back() == '\n' ? breaks : breaks + 1;
}

bool looksLikeCode(std::string_view text)
{
    text = trimmed(text);
    if (text.empty())
        return false;
    auto lines = splitLines(text);
    int points = 0;

    std::size_t nonEmpty = 0;
    std::size_t structural = 0;
    int keyword = 0;
    bool indented = false;
    for (auto line : lines) {
        auto content = trimmed(line);
        if (content.empty())
            continue;
        ++nonEmpty;
        char last = content.back();
        if (last == ';' || last == '{' || last == '}')
            ++structural;
        for (auto word : lineKeywords) {
            if (content.substr(0, word.size()) != word)
                continue;
            // "let x = …", "def f(x):": a keyword with the statement around it counts double.
            bool statement = content.find_first_of("=(:", word.size()) != std::string_view::npos;
            keyword = std::max(keyword, statement ? 2 : 1);
        }
        if (lines.size() > 1 && (line.substr(0, 1) == "\t" || line.substr(0, 2) == "  "))
            indented = true;
    }
    if (nonEmpty > 0 && structural * 10 >= nonEmpty * 3)
        points += 2;
    points += keyword;
    if (indented)
        points += 1;
    if (std::any_of(operators.begin(), operators.end(), [&](auto op) { return text.find(op) != std::string_view::npos; }))
        points += 1;
    for (std::size_t index = 1; index < text.size(); ++index) {
        if (text[index] == '(' && isIdentifierCharacter(text[index - 1])) {
            points += 1;
            break;
        }
    }
    return points >= 3;
}

ClipInfo analyze(const ClipItem& item)
{
    ClipInfo info;
    if (item.text)
        info.lineCount = lineCount(*item.text);
    switch (item.kind) {
    case ClipKind::link:
        info.category = ClipCategory::links;
        if (item.text) {
            if (auto url = WebLink::parse(trimmed(*item.text))) {
                std::string_view host = url->host;
                if (host.substr(0, 4) == "www.")
                    host.remove_prefix(4);
                info.domain = std::string(host);
            }
        }
        break;
    case ClipKind::image:
        info.category = ClipCategory::images;
        break;
    case ClipKind::files:
        info.category = ClipCategory::files;
        break;
    case ClipKind::text:
        if (item.text) {
            info.color = ClipColor::parse(*item.text);
            if (info.color)
                info.category = ClipCategory::colors;
            else
                info.code = looksLikeCode(*item.text);
        }
        break;
    }
    return info;
}

} // namespace ClipAnalysis

std::vector<ClipItem> filterClips(const std::vector<ClipItem>& items, ClipCategory category, std::string_view search,
    const std::function<ClipInfo(const ClipItem&)>& info)
{
    auto needle = foldedForSearch(trimmed(search));
    std::vector<ClipItem> matches;
    for (const auto& item : items) {
        if (category != ClipCategory::all && info(item).category != category)
            continue;
        if (!needle.empty()) {
            bool found = (item.text && contains(*item.text, needle)) || (item.sourceName && contains(*item.sourceName, needle));
            if (!found && item.filePaths) {
                found = std::any_of(item.filePaths->begin(), item.filePaths->end(),
                    [&](const std::string& path) { return contains(path, needle); });
            }
            if (!found)
                continue;
        }
        matches.push_back(item);
    }
    return matches;
}

} // namespace quillmar
