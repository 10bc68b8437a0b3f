#include <gtest/gtest.h>

#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <condition_variable>
#include <mutex>
#include <random>
#include <set>

#include "core/clipboard/PasteboardSnapshot.h"
#include "platform/linux/X11Pasteboard.h"
#include "tests/platform/linux/support/XServer.h"

namespace quillmar {
namespace {

using testing::XServer;
constexpr auto timeout = std::chrono::seconds(5);
const std::string textType(PasteboardTypes::text[0]);

std::string readWhole(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return { std::istreambuf_iterator<char>(file), {} };
}

// A selection owner written directly with xcb on the fixture's connection: it offers `values` (target name to
// bytes; none never answers) and, with `garbage`, atoms that name nothing among its targets.
class TestOwner final {
public:
    TestOwner(X11Connection& connection, std::map<std::string, std::optional<std::string>> values, bool garbage = false,
        const std::string& selection = "CLIPBOARD")
        : m_connection(connection)
    {
        auto* raw = connection.raw();
        m_window = xcb_generate_id(raw);
        xcb_create_window(raw, XCB_COPY_FROM_PARENT, m_window, connection.root(), 0, 0, 1, 1, 0,
            XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        if (garbage)
            m_targets.push_back(0x7FFFFF00);
        for (auto& [name, value] : values) {
            auto atom = intern(name);
            m_targets.push_back(atom);
            m_values.emplace(atom, std::move(value));
        }
        m_listener = connection.addListener([this](const xcb_generic_event_t& event) {
            if ((event.response_type & 0x7F) == XCB_SELECTION_REQUEST)
                serve(reinterpret_cast<const xcb_selection_request_event_t&>(event));
        });
        xcb_set_selection_owner(raw, m_window, intern(selection), XCB_CURRENT_TIME);
        EXPECT_TRUE(connection.roundTrip());
    }
    ~TestOwner()
    {
        m_connection.removeListener(m_listener);
        xcb_destroy_window(m_connection.raw(), m_window);
        EXPECT_TRUE(m_connection.roundTrip());
    }

    xcb_atom_t intern(const std::string& name)
    {
        auto answer = m_connection.answer(
            xcb_intern_atom(m_connection.raw(), 0, static_cast<std::uint16_t>(name.size()), name.data()).sequence);
        EXPECT_TRUE(answer && answer->reply);
        return answer && answer->reply ? static_cast<xcb_intern_atom_reply_t*>(answer->reply.get())->atom : XCB_NONE;
    }

    // Whether a request for `target` came within the deadline.
    bool awaitRequest(const std::string& target)
    {
        auto atom = intern(target);
        std::unique_lock lock(m_mutex);
        return m_requested.wait_for(lock, timeout, [&] { return m_requests.count(atom) > 0; });
    }

private:
    void serve(const xcb_selection_request_event_t& request)
    {
        {
            std::lock_guard lock(m_mutex);
            m_requests.insert(request.target);
        }
        m_requested.notify_all();
        auto* raw = m_connection.raw();
        auto property = request.property;
        if (request.target == m_connection.atom(X11Atom::targets)) {
            xcb_change_property(raw, XCB_PROP_MODE_REPLACE, request.requestor, property, XCB_ATOM_ATOM, 32,
                static_cast<std::uint32_t>(m_targets.size()), m_targets.data());
        } else if (auto found = m_values.find(request.target); found != m_values.end() && found->second) {
            xcb_change_property(raw, XCB_PROP_MODE_REPLACE, request.requestor, property, request.target, 8,
                static_cast<std::uint32_t>(found->second->size()), found->second->data());
        } else if (found != m_values.end()) {
            return; // never answers
        } else {
            property = XCB_NONE;
        }
        xcb_selection_notify_event_t notify {};
        notify.response_type = XCB_SELECTION_NOTIFY;
        notify.requestor = request.requestor;
        notify.selection = request.selection;
        notify.target = request.target;
        notify.property = property;
        xcb_send_event(raw, 0, request.requestor, 0, reinterpret_cast<const char*>(&notify));
        xcb_flush(raw);
    }

    X11Connection& m_connection;
    xcb_window_t m_window = XCB_NONE;
    std::vector<xcb_atom_t> m_targets;
    std::map<xcb_atom_t, std::optional<std::string>> m_values;
    X11Connection::ListenerID m_listener = 0;
    std::mutex m_mutex;
    std::condition_variable m_requested;
    std::set<xcb_atom_t> m_requests;
};

class X11PasteboardTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        m_server = testing::sharedXServer();
        ASSERT_NE(m_server, nullptr);
        if (!testing::isInstalled("xclip"))
            GTEST_FAIL() << "xclip isn't installed: run scripts/install-deps (package xclip).";
        m_pasteboard = make();
        ASSERT_NE(m_pasteboard, nullptr);
        m_folder = std::filesystem::temp_directory_path() / ("quillmar-x11-pasteboard-" + std::to_string(::getpid()));
        std::filesystem::create_directories(m_folder);
    }
    void TearDown() override { std::filesystem::remove_all(m_folder); }

    std::unique_ptr<X11Pasteboard> make(X11Pasteboard::Limits limits = {})
    {
        auto connection = X11Connection::open(m_server->display());
        EXPECT_TRUE(connection);
        if (!connection)
            return nullptr;
        auto pasteboard = X11Pasteboard::create(std::move(connection).value(), limits);
        EXPECT_TRUE(pasteboard) << pasteboard.error().context;
        return pasteboard ? std::move(pasteboard).value() : nullptr;
    }

    // Copies `bytes` as `target` with xclip and waits until the clipboard changed.
    void copyWithXclip(const std::string& bytes, const std::string& target)
    {
        auto file = m_folder / "copied";
        std::ofstream(file, std::ios::binary) << bytes;
        auto seen = m_pasteboard->changeCount();
        ASSERT_TRUE(m_server->run({ "xclip", "-selection", "clipboard", "-t", target, "-i", file.string() }));
        ASSERT_TRUE(m_pasteboard->awaitChange(seen, timeout)) << "xclip did not take the clipboard";
    }

    // What xclip pastes as `target`.
    std::string pasteWithXclip(const std::string& target)
    {
        auto file = m_folder / "pasted";
        EXPECT_TRUE(m_server->run({ "sh", "-c", "xclip -selection clipboard -o -t " + target + " > " + file.string() }));
        return readWhole(file);
    }

    XServer* m_server = nullptr;
    std::unique_ptr<X11Pasteboard> m_pasteboard;
    std::filesystem::path m_folder;
};

std::string pngOfSize(std::size_t size)
{
    std::string png("\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR\0\0\x02\x00\0\0\x01\x00", 24);
    std::mt19937 random(7);
    while (png.size() < size)
        png += static_cast<char>(random());
    return png;
}

TEST_F(X11PasteboardTest, ReadsTextAnotherClientCopiedAndCountsTheChange)
{
    auto before = m_pasteboard->changeCount();
    copyWithXclip("héllo\nworld", "UTF8_STRING");
    auto reading = m_pasteboard->read();
    EXPECT_GT(reading.changeCount, before);
    EXPECT_EQ(reading.types, std::vector<std::string> { textType });
    EXPECT_EQ(reading.strings[textType], "héllo\nworld");
}

TEST_F(X11PasteboardTest, ReadsCopiedFilesAsPaths)
{
    copyWithXclip("# from a file manager\r\nfile:///home/me/a%20b.txt\r\nhttps://example.com/x\r\nfile:///tmp\r\n",
        "text/uri-list");
    auto reading = m_pasteboard->read();
    EXPECT_EQ(reading.types, std::vector<std::string> { "public.file-url" });
    EXPECT_EQ(reading.filePaths, (std::vector<std::string> { "/home/me/a b.txt", "/tmp" }));
}

TEST_F(X11PasteboardTest, ReadsALargeImageSentInPiecesWhole)
{
    auto png = pngOfSize(std::size_t { 2 } << 20);
    copyWithXclip(png, "image/png");
    auto reading = m_pasteboard->read();
    ASSERT_TRUE(reading.image);
    EXPECT_EQ(reading.image->type, "public.png");
    EXPECT_EQ(reading.image->pixelSize, (PixelSize { 512, 256 }));
    EXPECT_TRUE(reading.image->data == png) << "read " << reading.image->data.size() << " of " << png.size() << " bytes";
}

TEST_F(X11PasteboardTest, LeavesOutAnImageOverTheByteLimit)
{
    auto pasteboard = make({ .maxBytes = 1 << 20 });
    ASSERT_NE(pasteboard, nullptr);
    copyWithXclip(pngOfSize(std::size_t { 2 } << 20), "image/png");
    auto reading = pasteboard->read();
    EXPECT_FALSE(reading.image);
    EXPECT_EQ(reading.types, std::vector<std::string> { "public.png" });
}

TEST_F(X11PasteboardTest, SeesWhatPasswordManagersMarkAsSecret)
{
    struct Row {
        const char* name;
        std::map<std::string, std::optional<std::string>> values;
        bool isPrivate;
    };
    for (const auto& [name, values, isPrivate] : std::initializer_list<Row> {
             { "the KDE hint", { { "UTF8_STRING", "hunter2" }, { "x-kde-passwordManagerHint", "secret" } }, true },
             { "the hint with another value", { { "UTF8_STRING", "hunter2" }, { "x-kde-passwordManagerHint", "" } }, false },
             { "the concealed type by name", { { "UTF8_STRING", "hunter2" }, { "org.nspasteboard.ConcealedType", "" } }, true },
         }) {
        auto seen = m_pasteboard->changeCount();
        TestOwner owner(m_server->connection(), values);
        ASSERT_TRUE(m_pasteboard->awaitChange(seen, timeout)) << name;
        auto snapshot = PasteboardSnapshot::from(m_pasteboard->read(), defaultTransientMarkers());
        EXPECT_EQ(snapshot.isPrivate, isPrivate) << name;
        EXPECT_EQ(snapshot.text, "hunter2") << name;
    }
}

TEST_F(X11PasteboardTest, IgnoresTargetsThatNameNothing)
{
    auto seen = m_pasteboard->changeCount();
    TestOwner owner(m_server->connection(), { { "STRING", "caf\xe9" } }, /*garbage=*/true);
    ASSERT_TRUE(m_pasteboard->awaitChange(seen, timeout));
    EXPECT_EQ(m_pasteboard->read().strings[textType], "café");
}

TEST_F(X11PasteboardTest, AnOwnerThatNeverAnswersEndsTheReadAtItsDeadline)
{
    auto pasteboard = make({ .readTimeout = std::chrono::milliseconds(200) });
    ASSERT_NE(pasteboard, nullptr);
    auto seen = pasteboard->changeCount();
    TestOwner owner(m_server->connection(), { { "text/html", std::nullopt }, { "UTF8_STRING", "x" } });
    ASSERT_TRUE(pasteboard->awaitChange(seen, timeout));
    auto started = std::chrono::steady_clock::now();
    auto reading = pasteboard->read();
    // An upper bound with ample slack: the point is that the read returns.
    EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::seconds(2));
    EXPECT_EQ(reading.strings[textType], "x");
    EXPECT_EQ(reading.data.count("public.html"), 0U);
}

TEST_F(X11PasteboardTest, OtherClientsPasteWhatWeWrote)
{
    struct Row {
        const char* target;
        PasteboardWriting writing;
        std::string pasted;
    };
    auto png = pngOfSize(std::size_t { 1 } << 20); // above the largest request: sent in pieces
    for (const auto& [target, writing, pasted] : std::initializer_list<Row> {
             { "UTF8_STRING", { "grüße", {}, std::nullopt, { std::string(PasteboardTypes::own) }, std::nullopt }, "grüße" },
             { "image/png", { std::nullopt, {}, PasteboardImage { png, "public.png", {} }, {}, std::nullopt }, png },
             { "text/uri-list", { std::nullopt, { "/a b" }, std::nullopt, {}, std::nullopt }, "file:///a%20b\r\n" },
         }) {
        ASSERT_TRUE(m_pasteboard->write(writing)) << target;
        EXPECT_TRUE(m_pasteboard->ownsClipboard());
        EXPECT_TRUE(pasteWithXclip(target) == pasted) << target;
    }
}

TEST_F(X11PasteboardTest, OurWriteReadsBackAsOursAndEndsWhenAnotherClientCopies)
{
    ASSERT_TRUE(m_pasteboard->write({ "mine", {}, std::nullopt, { std::string(PasteboardTypes::own) }, std::nullopt }));
    auto reader = make();
    ASSERT_NE(reader, nullptr);
    auto snapshot = PasteboardSnapshot::from(reader->read(), defaultTransientMarkers());
    EXPECT_TRUE(snapshot.isOwnWrite);
    EXPECT_EQ(snapshot.text, "mine");

    copyWithXclip("theirs", "UTF8_STRING");
    EXPECT_TRUE(m_pasteboard->awaitLoss(timeout));
    EXPECT_FALSE(m_pasteboard->ownsClipboard());
    EXPECT_EQ(m_pasteboard->read().strings[textType], "theirs");
}

TEST_F(X11PasteboardTest, QuittingWhileOwningOffersTheContentsToAClipboardManagerWithoutWaitingLong)
{
    TestOwner manager(m_server->connection(), { { "SAVE_TARGETS", std::nullopt } }, false, "CLIPBOARD_MANAGER");
    auto pasteboard = make({ .handOverTimeout = std::chrono::milliseconds(100) });
    ASSERT_NE(pasteboard, nullptr);
    ASSERT_TRUE(pasteboard->write({ "keep me", {}, std::nullopt, {}, std::nullopt }));
    auto started = std::chrono::steady_clock::now();
    pasteboard.reset();
    // An upper bound with ample slack for a manager that never answers.
    EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::seconds(2));
    EXPECT_TRUE(manager.awaitRequest("SAVE_TARGETS"));
}

TEST_F(X11PasteboardTest, ClearLeavesTheClipboardWithoutAnOwner)
{
    copyWithXclip("something", "UTF8_STRING");
    auto seen = m_pasteboard->changeCount();
    m_pasteboard->clear();
    EXPECT_GT(m_pasteboard->changeCount(), seen);
    auto reading = m_pasteboard->read();
    EXPECT_TRUE(reading.types.empty());
    EXPECT_TRUE(reading.strings.empty());
}

} // namespace
} // namespace quillmar
