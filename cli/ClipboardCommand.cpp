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
#include "core/clipboard/ClipSkip.h"
#include "core/clipboard/ClipboardSettings.h"
#include "core/clipboard/ClipboardStore.h"
#include "core/clipboard/LinkCleaner.h"
#include "core/clipboard/WebLink.h"
#include "platform/linux/X11Pasteboard.h"

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

// What is on the clipboard now, and whether the history would record it (or why not). Concealed text is
// not shown.
void readClipboard(CliContext& context, bool json)
{
    auto pasteboard = X11Pasteboard::create();
    if (!pasteboard)
        return context.refuse(pasteboard.error().message);
    auto reading = (*pasteboard)->read();
    auto snapshot = PasteboardSnapshot::from(reading, defaultTransientMarkers());
    ClipboardSettings::registerDefaults(context.settings());
    auto skip = skipReason(snapshot, context.settings());
    bool hidden = skip == ClipSkip::concealed;
    std::optional<std::string> text = hidden ? std::nullopt : snapshot.text;
    if (json) {
        nlohmann::ordered_json object;
        object["types"] = reading.types;
        object["text"] = orNull(text);
        object["filePaths"] = snapshot.filePaths;
        object["image"] = snapshot.image
            ? nlohmann::ordered_json { { "type", snapshot.image->type }, { "width", snapshot.image->pixelSize.width },
                  { "height", snapshot.image->pixelSize.height }, { "bytes", snapshot.image->data.size() } }
            : nlohmann::ordered_json();
        object["skipped"] = skip ? nlohmann::ordered_json(rawValue(*skip)) : nlohmann::ordered_json();
        context.printJson(object);
        return;
    }
    if (reading.types.empty()) {
        context.setExitCode(ExitCode::noAnswer);
        return;
    }
    auto& out = context.out();
    std::string types;
    for (const auto& type : reading.types)
        types += (types.empty() ? "" : ", ") + type;
    out << "types: " << types << '\n';
    if (text)
        out << "text: " << *text << '\n';
    for (const auto& path : snapshot.filePaths)
        out << "file: " << path << '\n';
    if (snapshot.image)
        out << fmt::format("image: {} {}×{}, {} bytes\n", snapshot.image->type, snapshot.image->pixelSize.width,
            snapshot.image->pixelSize.height, snapshot.image->data.size());
    if (skip)
        out << "skipped: " << rawValue(*skip) << '\n';
}

// Owns the clipboard with `text` until another application copies something.
void copyToClipboard(CliContext& context, const std::string& text)
{
    auto pasteboard = X11Pasteboard::create();
    if (!pasteboard)
        return context.refuse(pasteboard.error().message);
    if (!(*pasteboard)->write({ text, {}, std::nullopt, {}, std::nullopt }))
        return context.refuse("The clipboard couldn't be taken.");
    context.err() << "On the clipboard until something else is copied." << std::endl;
    while (!(*pasteboard)->awaitLoss(std::chrono::hours(1))) { }
}

} // namespace

void addClipboardCommand(CLI::App& app, CliContext& context)
{
    auto* clipboard = app.add_subcommand("clipboard", "The clipboard and its history, and clean links");
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

    auto* read = clipboard->add_subcommand("read", "What is on the clipboard, as the history would record it");
    auto readJson = std::make_shared<bool>(false);
    read->add_flag("--json", *readJson, "Print one JSON object");
    read->callback([&context, readJson] { readClipboard(context, *readJson); });

    auto* copy = clipboard->add_subcommand("copy", "Put text on the clipboard until something else is copied");
    auto text = std::make_shared<std::string>();
    copy->add_option("TEXT", *text, "The text")->required();
    copy->callback([&context, text] { copyToClipboard(context, *text); });
}

} // namespace quillmar::cli
