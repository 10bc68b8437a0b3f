#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/base/Result.h"
#include "core/clipboard/ClipAnalysis.h"
#include "core/clipboard/ClipHistory.h"
#include "core/clipboard/ClipItem.h"
#include "core/clipboard/PasteboardSnapshot.h"
#include "core/desktop/FrontApplications.h"
#include "core/desktop/Keystrokes.h"
#include "core/desktop/Pasteboard.h"
#include "core/desktop/SessionEvents.h"
#include "core/desktop/UserNotices.h"
#include "core/runtime/LifetimeGuard.h"
#include "core/runtime/Runtime.h"
#include "core/settings/FileLocations.h"
#include "core/settings/Settings.h"
#include "core/shell/services/ClipboardService.h"

namespace quillmar {

// The system side the store works through. Every port must outlive the store.
struct ClipboardPorts {
    Pasteboard& pasteboard;
    FrontApplications& frontApplications;
    SessionEvents& sessionEvents;
    Keystrokes& keystrokes;
    UserNotices& notices;
};

// Whether picking an item also pastes it into the front application.
enum class Paste { no, yes };

// Where a copy came from, as the ticks that noticed it decided.
struct CopySource {
    std::optional<AppIdentity> application; // in front when the copy happened
    bool isExcluded = false;                // an application in front since the copy's interval is excluded
};

// The clipboard history: watches the pasteboard, records what is copied, and keeps "history.json" and
// the image files in its folder. Confined to the main thread: every member stops the process when called
// from elsewhere. Pasteboard reads run on "com.quillmar.clipboard.read", file writes on
// "com.quillmar.clipboard.save", one at a time, so two saves never overlap.
//
// Files: image files are written before any history that names them, and removed only after a history
// that no longer names them has been written. An image that cannot be written takes its item with it, so
// no item names a missing file. A history that cannot be decoded is kept aside under a timestamped name
// and the history starts empty; entries that cannot be read are dropped the same way, the original file
// kept aside.
class ClipboardStore final : public ClipboardService {
public:
    static constexpr Duration pollInterval = std::chrono::milliseconds(500);
    // How late the system may fire the poll timer to save power. The schedule stays on the interval's
    // grid, so lateness never adds up.
    static constexpr Duration pollTolerance = std::chrono::milliseconds(200);
    static constexpr Duration readTimeout = std::chrono::seconds(2);
    static constexpr Duration saveDelay = std::chrono::milliseconds(800);
    static constexpr Duration sweepInterval = std::chrono::hours(1);
    // Between writing a picked item and pressing ⌘V: the picker closes and the previous application
    // takes the keyboard back first.
    static constexpr Duration pasteDelay = std::chrono::milliseconds(100);
    static constexpr const char* saveQueueLabel = "com.quillmar.clipboard.save";
    static constexpr const char* readQueueLabel = "com.quillmar.clipboard.read";

    static constexpr std::string_view remoteSourceName = "Another device";
    static constexpr std::string_view plainTextMessage = "Copied as plain text";
    static constexpr std::string_view accessibilityReason = "Allow Accessibility to paste automatically";

    // "Quillmar/Clipboard" under the application-support folder.
    static std::filesystem::path historyFolder(const FileLocations& locations);

    // Registers the clipboard's defaults and loads the history from `folder` (created on the first save).
    ClipboardStore(Runtime& runtime, Settings& settings, std::filesystem::path folder, ClipboardPorts ports);
    // Cancels the timers and hands a pending save to the save queue, which completes it. Never waits for
    // a pasteboard read: one that has not come back is left to finish on its own thread, touching nothing
    // of the store.
    ~ClipboardStore() override;

    ClipboardStore(const ClipboardStore&) = delete;
    ClipboardStore& operator=(const ClipboardStore&) = delete;

    // ClipboardService.
    void setCleansLinks(bool on) override;
    void start() override;
    void stop() override;
    // Writes pending changes now and waits (at most 5 s) until the save queue has written them.
    void flush() override;

    // Newest first.
    const std::vector<ClipItem>& items() const;
    const ClipItem* item(const std::string& id) const;

    // The item's analysis, computed once per id and content.
    ClipInfo info(const ClipItem& item);

    // The path of an image item's file; none for items without one.
    std::optional<std::filesystem::path> imageURL(const ClipItem& item) const;
    // The bytes of an image item's file.
    Result<std::string> image(const ClipItem& item) const;

    // Puts the item back on the pasteboard (text, files or image), marked as ours, and brings it to the
    // top of the history. With Paste::yes it then presses ⌘V in the front application after pasteDelay;
    // without Accessibility the user is asked for it instead.
    Result<void> use(const std::string& id, Paste paste);
    // The same as plain text only (a file item as its paths, one a line); shows "Copied as plain text".
    Result<void> usePlainText(const std::string& id, Paste paste);

    void togglePin(const std::string& id);
    void remove(const std::string& id);
    void clear(KeepPinned keepPinned);
    // Empties the system clipboard now; the history and its pins stay.
    void clearSystem();

    // Removes the tracking parameters of a link item; the clean link, or an Error whose message is
    // "Link is already clean" (or that the item is not a link).
    Result<std::string> clean(const std::string& id);
    // The same for the link on the clipboard, which is replaced; an item holding the tracked link takes
    // the clean one. "No link in the clipboard" when there is none.
    Result<std::string> cleanCurrentLink();

    // `items(in:matching:)`.
    std::vector<ClipItem> items(ClipCategory category, std::string_view search);

    // Observes sleep and lock while either clearing setting is on and the store runs.
    void updateAutoClearObservers();

    // "Pause recording" (kept in the settings) and "Ignore the next copy": ways to keep out secrets that an
    // application copies without marking them. The next copy is the next pasteboard change made by
    // anyone but this application, whether or not it would have been recorded.
    void setPaused(bool paused);
    bool isPaused() const;
    void ignoreNextCopy();
    bool ignoresNextCopy() const { return m_ignoreNextCopy; }

    // Decides about one read of the pasteboard and records it. Skips, in this order: our own writes;
    // private content (concealed, or the password manager's); an excluded source; the ignored next copy;
    // a paused history; transient, auto-generated or generated content when "files.clipboard.skipTransient"
    // is on; nothing recordable. Images are recorded only when "clipboard.saveImages" is on (a copy that
    // also holds text is then recorded as text). `changeCount` is the pasteboard's at the read: seen from now.
    void handle(const PasteboardSnapshot& snapshot, const CopySource& source, std::int64_t changeCount);

    int cleanedLinkCount() const { return m_cleanedLinkCount; }
    bool isReading() const { return m_isReading; }
    bool isRunning() const { return m_running; }
    std::optional<WallTime> lastSweep() const { return m_lastSweep; }

    // Called on the main thread after `items` changed.
    void setChangeCallback(std::function<void()> callback);

private:
    struct AutoClearReference {
        std::int64_t changeCount = 0;
        Duration since { 0 };
    };

    void assertMainThread() const;
    void load();
    void scheduleTick();
    void poll();
    void noteCopySource(std::int64_t changeCount);
    void startRead(std::int64_t changeCount, CopySource source);
    void readReturned(std::uint64_t generation, std::int64_t changeCount, const PasteboardReading& reading,
        const CopySource& source);
    void abandonRead(std::uint64_t generation);
    void imageNotSaved(const std::string& id);
    void checkAutoClear(std::int64_t changeCount);
    void sessionEvent(SessionEvent event);
    void sweepExpired();
    void sweepOrphanImages();
    void insert(ClipItem item, std::optional<PasteboardImage> image);
    void trimToLimit();
    void discard(std::vector<ClipItem> removed);
    void scheduleSave();
    void saveNow();
    void changed();
    bool writeOwn(PasteboardWriting writing);
    void pressPaste(Paste paste);

    Runtime& m_runtime;
    Settings& m_settings;
    std::filesystem::path m_folder;
    ClipboardPorts m_ports;
    std::unique_ptr<SerialQueue> m_saveQueue;
    // One queue for good: a read that never returns keeps it, and no other read starts meanwhile, so
    // a hung pasteboard costs one thread at most.
    std::unique_ptr<SerialQueue> m_readQueue;
    // Set by the read task while it is inside Pasteboard::read.
    std::shared_ptr<std::atomic<bool>> m_readInside;
    // Image files whose write failed; touched only on the save queue, where the history is written
    // without the items that name them.
    std::shared_ptr<std::set<std::string>> m_unsavedImages;
    Settings::ObserverId m_settingsObserver = 0;

    ClipHistory m_history;
    std::unordered_map<std::string, ClipInfo> m_infoCache;
    std::vector<std::string> m_transientMarkers;
    std::vector<std::string> m_pendingImageDeletions;
    std::function<void()> m_changeCallback;

    bool m_running = false;
    bool m_cleansLinks = false;
    bool m_saveAllowed = true;
    bool m_ignoreNextCopy = false;
    bool m_isReading = false;   // a read is out and awaited
    bool m_readerBusy = false;  // a read is out, awaited or abandoned
    bool m_observingSession = false;
    std::uint64_t m_readGeneration = 0;
    std::int64_t m_lastChangeCount = 0;
    std::int64_t m_lastClearCount = -1;
    AutoClearReference m_autoClearReference;
    std::optional<AppIdentity> m_frontAtLastTick;
    std::int64_t m_countAtLastTick = 0;
    // The source of a change no read has started for yet.
    std::optional<CopySource> m_pendingSource;
    std::optional<WallTime> m_lastSweep;
    int m_cleanedLinkCount = 0;
    Duration m_pollOrigin { 0 };
    std::int64_t m_pollIndex = 0;
    WorkItemHandle m_pollItem;
    WorkItemHandle m_readTimeoutItem;
    WorkItemHandle m_saveItem;
    // Last: ends before anything else goes.
    LifetimeGuard m_guard;
};

} // namespace quillmar
