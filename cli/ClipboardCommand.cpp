#include "cli/ClipboardCommand.h"

#include <memory>
#include <ostream>
#include <string>

#include <fmt/chrono.h>
#include <fmt/format.h>

#include "core/base/Files.h"
#include "core/base/Utf8.h"
#include "core/clipboard/ClipAnalysis.h"
#include "core/clipboard/ClipHistoryFile.h"
#include "core/clipboard/ClipboardStore.h"
#include "core/clipboard/LinkCleaner.h"
#include "core/clipboard/WebLink.h"

namespace quillmar::cli {

namespace {

constexpr std::size_t previewLength = 80;

// The history as the application last saved it; never written here, so it is safe while the
// application runs. None after a refusal.
std::optional<std::vector<ClipItem>> readHistory(CliContext& context)
{
    auto path = ClipboardStore::historyFolder(context.locations()) / ClipHistoryFile::fileName;
    auto text = readFile(path);
    if (!text) {
        context.refuse("The clipboard history could not be read.");
        return std::nullopt;
    }
    if (!*text)
        return std::vector<ClipItem> {};
    auto decoded = ClipHistoryFile::decode(**text);
    if (!decoded) {
        context.refuse("The clipboard history could not be read.");
        return std::nullopt;
    }
    return std::move(decoded->items);
}

template<typename T>
nlohmann::json orNull(const std::optional<T>& value)
{
    return value ? nlohmann::json(*value) : nlohmann::json(nullptr);
}

std::string preview(const ClipItem& item)
{
    std::string text;
    if (item.kind == ClipKind::files && item.filePaths) {
        for (const auto& path : *item.filePaths)
            text += (text.empty() ? "" : ", ") + path;
    } else if (item.kind == ClipKind::image) {
        text = item.imageSize ? fmt::format("Image {}×{}", item.imageSize->width, item.imageSize->height) : "Image";
    } else {
        text = item.text.value_or("");
    }
    auto codePoints = decodeUtf8(text);
    for (auto& codePoint : codePoints) {
        if (codePoint == U'\n' || codePoint == U'\r' || codePoint == U'\t')
            codePoint = U' ';
    }
    if (codePoints.size() > previewLength) {
        codePoints.resize(previewLength - 1);
        codePoints += U'…';
    }
    return encodeUtf8(codePoints);
}

void listHistory(CliContext& context, const std::string& categoryName, const std::string& search, bool json)
{
    auto items = readHistory(context);
    if (!items)
        return;
    auto category = clipCategoryFromRawValue(categoryName).value_or(ClipCategory::all);
    auto shown = filterClips(*items, category, search, [](const ClipItem& item) { return ClipAnalysis::analyze(item); });
    if (json) {
        auto rows = nlohmann::json::array();
        for (const auto& item : shown) {
            rows.push_back({ { "id", item.id }, { "kind", rawValue(item.kind) }, { "text", orNull(item.text) },
                { "filePaths", orNull(item.filePaths) }, { "date", epochSeconds(item.date) }, { "isPinned", item.isPinned },
                { "sourceName", orNull(item.sourceName) } });
        }
        context.printJson({ { "items", std::move(rows) } });
        return;
    }
    if (shown.empty()) {
        context.setExitCode(ExitCode::noAnswer);
        return;
    }
    for (const auto& item : shown) {
        context.out() << fmt::format("{:%Y-%m-%d %H:%M}  {:<5} {}{}\n",
            std::chrono::time_point_cast<std::chrono::seconds>(item.date), rawValue(item.kind), item.isPinned ? "* " : "",
            preview(item));
    }
}

void cleanLink(CliContext& context, const std::string& link)
{
    std::string_view trimmed = link;
    while (!trimmed.empty() && (trimmed.front() == ' ' || trimmed.front() == '\t' || trimmed.front() == '\n'))
        trimmed.remove_prefix(1);
    while (!trimmed.empty() && (trimmed.back() == ' ' || trimmed.back() == '\t' || trimmed.back() == '\n' || trimmed.back() == '\r'))
        trimmed.remove_suffix(1);
    if (!WebLink::parse(trimmed)) {
        context.usageError(fmt::format("\"{}\" isn't an http or https link.", link));
        return;
    }
    auto cleaned = LinkCleaner::clean(trimmed);
    if (!cleaned) {
        context.refuse(LinkCleaner::alreadyCleanMessage);
        return;
    }
    context.out() << *cleaned << '\n';
}

} // namespace

void addClipboardCommand(CLI::App& app, CliContext& context)
{
    auto* clipboard = app.add_subcommand("clipboard", "Read the clipboard history and clean links");
    clipboard->require_subcommand(1);

    auto* list = clipboard->add_subcommand("list", "The clipboard history, newest first");
    auto category = std::make_shared<std::string>("all");
    auto search = std::make_shared<std::string>();
    auto json = std::make_shared<bool>(false);
    list->add_option("--category", *category, "Only one kind of item")
        ->check(CLI::IsMember({ "all", "links", "images", "files", "colors" }));
    list->add_option("--search", *search, "Only items whose text, files or source contain this");
    list->add_flag("--json", *json, "Print one JSON object");
    list->callback([&context, category, search, json] { listHistory(context, *category, *search, *json); });

    auto* clean = clipboard->add_subcommand("clean-link", "Print a link without its tracking parameters");
    auto link = std::make_shared<std::string>();
    clean->add_option("URL", *link, "An http or https link")->required();
    clean->callback([&context, link] { cleanLink(context, *link); });
}

} // namespace quillmar::cli
