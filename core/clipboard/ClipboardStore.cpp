#include "core/clipboard/ClipboardStore.h"

#include <algorithm>
#include <set>
#include <system_error>

#include <fmt/format.h>

#include "core/base/Diagnostics.h"
#include "core/base/Files.h"
#include "core/base/Text.h"
#include "core/base/UtcStamp.h"
#include "core/base/Uuid.h"
#include "core/clipboard/ClipHistoryFile.h"
#include "core/clipboard/ClipSkip.h"
#include "core/clipboard/ClipboardSettings.h"
#include "core/clipboard/ImageHash.h"
#include "core/clipboard/LinkCleaner.h"
#include "core/clipboard/WebLink.h"
#include "core/desktop/InputEvent.h"

namespace quillmar {

namespace {

constexpr std::string_view who = "ClipboardStore";
constexpr auto flushWait = std::chrono::seconds(5);

bool hasVisibleText(const std::optional<std::string>& text)
{
    if (!text)
        return false;
    return std::any_of(text->begin(), text->end(),
        [](char character) { return character != ' ' && character != '\t' && character != '\n' && character != '\r'; });
}

std::string imageExtension(std::string_view type)
{
    if (type == PasteboardTypes::png)
        return "png";
    if (type == PasteboardTypes::tiff)
        return "tiff";
    if (type == "public.jpeg")
        return "jpg";
    if (type == "com.compuserve.gif")
        return "gif";
    if (type == "public.heic")
        return "heic";
    return "img";
}

std::string imageType(const std::filesystem::path& file)
{
    auto extension = file.extension().string();
    if (extension == ".png")
        return std::string(PasteboardTypes::png);
    if (extension == ".tiff")
        return std::string(PasteboardTypes::tiff);
    if (extension == ".jpg")
        return "public.jpeg";
    if (extension == ".gif")
        return "com.compuserve.gif";
    if (extension == ".heic")
        return "public.heic";
    return "public.data";
}

Error unknownItem(const std::string& id)
{
    return Error { "clipboard.unknownItem", "That item is no longer in the history.", id };
}

} // namespace

std::filesystem::path ClipboardStore::historyFolder(const FileLocations& locations)
{
    return locations.applicationSupport() / "Clipboard";
}

ClipboardStore::ClipboardStore(Runtime& runtime, Settings& settings, std::filesystem::path folder, ClipboardPorts ports)
    : m_runtime(runtime)
    , m_settings(settings)
    , m_folder(std::move(folder))
    , m_ports(ports)
    , m_saveQueue(runtime.makeSerialQueue(saveQueueLabel))
    , m_readQueue(runtime.makeSerialQueue(readQueueLabel))
    , m_readInside(std::make_shared<std::atomic<bool>>(false))
    , m_unsavedImages(std::make_shared<std::set<std::string>>())
    , m_transientMarkers(defaultTransientMarkers())
{
    assertMainThread();
    ClipboardSettings::registerDefaults(m_settings);
    load();
    auto& mainQueue = m_runtime.mainQueue();
    m_settingsObserver = m_settings.observe([this, token = m_guard.token(), &mainQueue](std::string_view key) {
        bool sessionKey = key == ClipboardSettings::clearOnSleep.name || key == ClipboardSettings::clearOnLock.name;
        bool limitKey = key == ClipboardSettings::limit.name;
        if (!sessionKey && !limitKey)
            return;
        // Settings may change on any thread; the store's state is the main thread's, and the store may be
        // gone by the time the work runs.
        token.post(mainQueue, [this, sessionKey] {
            if (sessionKey) {
                updateAutoClearObservers();
            } else {
                trimToLimit();
                scheduleSave();
                changed();
            }
        });
    });
}

ClipboardStore::~ClipboardStore()
{
    assertMainThread();
    m_settings.removeObserver(m_settingsObserver);
    // What the user copied is not lost at teardown: the save queue completes a save handed to it.
    if (m_saveItem && !m_saveItem->isCancelled())
        saveNow();
    for (auto* item : { &m_pollItem, &m_readTimeoutItem, &m_saveItem }) {
        if (*item)
            (*item)->cancel();
    }
    if (m_observingSession)
        m_ports.sessionEvents.stopObserving();
    // After this no read starts and none reports back; one inside the pasteboard now may never return.
    // Its queue would wait for it when destroyed, so it is let go with its thread: the read touches only
    // the state it shares.
    m_guard.end();
    if (m_readInside->load())
        (void)m_readQueue.release();
}

void ClipboardStore::assertMainThread() const
{
    m_runtime.mainQueue().assertMainThread(who);
}

void ClipboardStore::load()
{
    auto path = m_folder / ClipHistoryFile::fileName;
    auto text = readFile(path);
    if (!text) {
        // Neither readable nor safe to replace: keep it untouched for this run.
        m_saveAllowed = false;
        diagnostic("clipboard: cannot read {} ({}); history not saved in this run", path.string(), text.error().context);
        return;
    }
    if (!*text)
        return;
    auto decoded = ClipHistoryFile::decode(**text);
    if (decoded && decoded->dropped == 0) {
        m_history.replaceAll(std::move(decoded->items));
        return;
    }
    auto kept = moveAside(path, utcStamp(m_runtime.clock().now()));
    if (!kept) {
        m_saveAllowed = false;
        diagnostic("clipboard: cannot keep unreadable {} aside ({}); history not saved in this run", path.string(),
            kept.error().context);
    } else if (!decoded) {
        diagnostic("clipboard: {} ({}); kept it as {} and started empty", path.filename().string(),
            decoded.error().message, kept->filename().string());
    } else {
        diagnostic("clipboard: {} had {} unreadable entries; kept it as {}", path.filename().string(),
            decoded->dropped, kept->filename().string());
    }
    if (decoded) {
        m_history.replaceAll(std::move(decoded->items));
        scheduleSave();
    }
}

void ClipboardStore::setCleansLinks(bool on)
{
    assertMainThread();
    m_cleansLinks = on;
}

void ClipboardStore::start()
{
    assertMainThread();
    if (m_running)
        return;
    m_running = true;
    // What is on the pasteboard now was copied while the history was not watching: it is not recorded.
    m_lastChangeCount = m_ports.pasteboard.changeCount();
    m_autoClearReference = { m_lastChangeCount, m_runtime.clock().uptime() };
    (void)m_ports.frontApplications.takeActivations();
    m_frontAtLastTick = m_ports.frontApplications.frontApplication();
    m_countAtLastTick = m_lastChangeCount;
    m_pendingSource.reset();
    m_pollOrigin = m_runtime.clock().uptime();
    m_pollIndex = 0;
    scheduleTick();
    updateAutoClearObservers();
}

void ClipboardStore::stop()
{
    assertMainThread();
    if (!m_running)
        return;
    m_running = false;
    if (m_pollItem)
        m_pollItem->cancel();
    if (m_readTimeoutItem)
        m_readTimeoutItem->cancel();
    // A read in flight comes back to a stopped store and is dropped.
    ++m_readGeneration;
    m_isReading = false;
    updateAutoClearObservers();
}

void ClipboardStore::scheduleTick()
{
    auto now = m_runtime.clock().uptime();
    ++m_pollIndex;
    auto due = m_pollOrigin + pollInterval * m_pollIndex;
    if (due <= now) {
        m_pollIndex = (now - m_pollOrigin) / pollInterval + 1;
        due = m_pollOrigin + pollInterval * m_pollIndex;
    }
    m_pollItem = m_guard.postAfter(m_runtime.mainQueue(), due - now, [this] {
        if (!m_running)
            return;
        poll();
        if (m_running)
            scheduleTick();
    });
}

void ClipboardStore::poll()
{
    auto changeCount = m_ports.pasteboard.changeCount();
    checkAutoClear(changeCount);
    auto now = m_runtime.clock().now();
    if (!m_lastSweep || now - *m_lastSweep > sweepInterval) {
        m_lastSweep = now;
        sweepExpired();
        sweepOrphanImages();
    }
    noteCopySource(changeCount);
    // One read at a time, also when the last one was abandoned and has not come back yet.
    if (changeCount == m_lastChangeCount || m_isReading || m_readerBusy)
        return;
    startRead(changeCount, *std::exchange(m_pendingSource, std::nullopt));
}

void ClipboardStore::noteCopySource(std::int64_t changeCount)
{
    // The applications in front during the interval that ends now: the one in front at the last tick,
    // those activated since, and the one in front now.
    std::vector<AppIdentity> inFront;
    if (m_frontAtLastTick)
        inFront.push_back(*m_frontAtLastTick);
    auto activations = m_ports.frontApplications.takeActivations();
    inFront.insert(inFront.end(), activations.begin(), activations.end());
    auto now = m_ports.frontApplications.frontApplication();
    if (now)
        inFront.push_back(*now);
    m_frontAtLastTick = now;
    bool moved = changeCount != m_countAtLastTick;
    m_countAtLastTick = changeCount;

    if (changeCount == m_lastChangeCount) {
        // Nothing unread: what was in front no longer matters.
        m_pendingSource.reset();
        return;
    }
    // A change waits for a read, perhaps over several ticks while another read is out. The copy happened
    // in the interval in which the change count last moved: the application in front at its start is
    // the source (copying and then switching is the usual order). Every application in front from then
    // until the read starts is checked against the excluded list, so a secret copied right after a
    // switch is not recorded either.
    bool fresh = !m_pendingSource;
    auto& source = fresh ? m_pendingSource.emplace() : *m_pendingSource;
    if (moved || fresh)
        source.application = inFront.empty() ? std::nullopt : std::optional(inFront.front());
    auto excluded = m_settings.value(ClipboardSettings::excludedApps);
    source.isExcluded = source.isExcluded || std::any_of(inFront.begin(), inFront.end(), [&](const AppIdentity& app) {
        return std::find(excluded.begin(), excluded.end(), app.bundleID) != excluded.end();
    });
}

void ClipboardStore::startRead(std::int64_t changeCount, CopySource source)
{
    m_isReading = true;
    m_readerBusy = true;
    // A read that times out is dropped for good: the change is seen.
    m_lastChangeCount = changeCount;
    auto generation = ++m_readGeneration;
    m_readTimeoutItem = m_guard.postAfter(m_runtime.mainQueue(), readTimeout, [this, generation] { abandonRead(generation); });
    auto& pasteboard = m_ports.pasteboard;
    auto& mainQueue = m_runtime.mainQueue();
    m_readQueue->post([this, &pasteboard, &mainQueue, token = m_guard.token(), inside = m_readInside, generation,
                          changeCount, source = std::move(source)] {
        // Once the store is gone nothing is read, and a read under way reports to no one.
        if (!token.runWhileAlive([&] { inside->store(true); }))
            return;
        auto reading = pasteboard.read();
        inside->store(false);
        token.post(mainQueue, [this, generation, changeCount, reading = std::move(reading), source] {
            readReturned(generation, changeCount, reading, source);
        });
    });
}

void ClipboardStore::readReturned(std::uint64_t generation, std::int64_t changeCount, const PasteboardReading& reading,
    const CopySource& source)
{
    m_readerBusy = false;
    if (generation != m_readGeneration || !m_isReading)
        return;
    m_isReading = false;
    if (m_readTimeoutItem)
        m_readTimeoutItem->cancel();
    if (reading.changeCount > changeCount) {
        // Copied after the tick that decided about the source: the next tick reads it again and decides
        // with the applications in front since.
        return;
    }
    auto snapshot = PasteboardSnapshot::from(reading, m_transientMarkers);
    snapshot.isExcluded = source.isExcluded;
    handle(snapshot, source, reading.changeCount);
}

void ClipboardStore::abandonRead(std::uint64_t generation)
{
    if (generation != m_readGeneration || !m_isReading)
        return;
    m_isReading = false;
    ++m_readGeneration;
    diagnostic("clipboard: pasteboard read took over {} s; dropped it, the next waits until it returns",
        std::chrono::duration<double>(readTimeout).count());
}

void ClipboardStore::handle(const PasteboardSnapshot& snapshot, const CopySource& source, std::int64_t changeCount)
{
    assertMainThread();
    m_lastChangeCount = std::max(m_lastChangeCount, changeCount);
    if (snapshot.isOwnWrite)
        return;
    // Any copy but our own is the ignored next one, whether or not it would have been recorded.
    bool ignored = std::exchange(m_ignoreNextCopy, false);
    if (ignored || source.isExcluded || skipReason(snapshot, m_settings))
        return;

    ClipItem item;
    item.id = makeUuid();
    item.date = historyDate(m_runtime.clock().now());
    if (snapshot.isRemote) {
        item.sourceName = std::string(remoteSourceName);
    } else if (source.application) {
        item.sourceBundleID = source.application->bundleID;
        item.sourceName = source.application->name;
    }

    bool hasText = hasVisibleText(snapshot.text);
    bool savesImages = m_settings.value(ClipboardSettings::saveImages);
    std::optional<PasteboardImage> image;
    if (!snapshot.filePaths.empty()) {
        item.kind = ClipKind::files;
        item.filePaths = snapshot.filePaths;
    } else if (snapshot.image && (snapshot.preferImage || !hasText) && savesImages) {
        item.kind = ClipKind::image;
        item.imageHash = imageHash(snapshot.image->data);
        item.imageBytes = static_cast<std::int64_t>(snapshot.image->data.size());
        item.imageSize = snapshot.image->pixelSize;
        image = snapshot.image;
    } else if (hasText) {
        item.text = snapshot.text;
        item.kind = WebLink::parse(trimmed(*snapshot.text)) ? ClipKind::link : ClipKind::text;
    } else {
        return;
    }

    if (item.kind == ClipKind::link && m_cleansLinks && m_settings.value(ClipboardSettings::cleanLinksAutomatic)) {
        if (auto cleaned = LinkCleaner::clean(*item.text)) {
            item.text = *cleaned;
            if (writeOwn(PasteboardWriting { *cleaned, {}, std::nullopt, {}, std::nullopt })) {
                ++m_cleanedLinkCount;
                m_ports.notices.show(LinkCleaner::cleanedMessage, "");
            }
        }
    }
    insert(std::move(item), std::move(image));
}

void ClipboardStore::insert(ClipItem item, std::optional<PasteboardImage> image)
{
    if (image && !m_history.idWithContent(item)) {
        // An item never names a file that is not there: without a folder to write to, a new image is not
        // recorded, and one whose write fails is dropped again.
        if (!m_saveAllowed)
            return;
        item.imageFile = fmt::format("{}.{}", item.id, imageExtension(image->type));
        auto& mainQueue = m_runtime.mainQueue();
        m_saveQueue->post([this, &mainQueue, token = m_guard.token(), unsaved = m_unsavedImages, id = item.id,
                              name = *item.imageFile, path = m_folder / *item.imageFile, data = std::move(image->data)] {
            auto written = writeFileAtomically(path, data);
            if (written)
                return;
            diagnostic("clipboard: could not save image {} ({}); dropped its item", name, written.error().context);
            unsaved->insert(name);
            token.post(mainQueue, [this, id] { imageNotSaved(id); });
        });
    }
    m_history.insert(std::move(item));
    trimToLimit();
    scheduleSave();
    changed();
}

void ClipboardStore::imageNotSaved(const std::string& id)
{
    if (!m_history.remove(id))
        return;
    m_infoCache.erase(id);
    scheduleSave();
    changed();
}

void ClipboardStore::trimToLimit()
{
    discard(m_history.trim(ClipboardSettings::historyLimit(m_settings)));
}

void ClipboardStore::discard(std::vector<ClipItem> removed)
{
    if (removed.empty())
        return;
    auto stillNamed = m_history.imageFiles();
    for (auto& item : removed) {
        m_infoCache.erase(item.id);
        if (item.imageFile && !stillNamed.contains(*item.imageFile))
            m_pendingImageDeletions.push_back(std::move(*item.imageFile));
    }
}

void ClipboardStore::sweepExpired()
{
    auto retention = ClipboardSettings::retention(m_settings);
    if (!retention)
        return;
    auto cutoff = m_runtime.clock().now() - std::chrono::duration_cast<WallTime::duration>(*retention);
    auto removed = m_history.removeOlderThan(cutoff);
    if (removed.empty())
        return;
    discard(std::move(removed));
    scheduleSave();
    changed();
}

void ClipboardStore::sweepOrphanImages()
{
    if (!m_saveAllowed)
        return;
    auto keep = m_history.imageFiles();
    keep.insert(m_pendingImageDeletions.begin(), m_pendingImageDeletions.end());
    m_saveQueue->post([folder = m_folder, keep = std::move(keep)] {
        std::error_code error;
        std::vector<std::filesystem::path> orphans;
        for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
            auto name = entry->path().filename().string();
            // The history and any copy of it kept aside stay.
            if (name.rfind(ClipHistoryFile::fileName, 0) == 0 || keep.contains(name))
                continue;
            if (entry->is_regular_file(error))
                orphans.push_back(entry->path());
        }
        for (const auto& orphan : orphans)
            std::filesystem::remove(orphan, error);
        if (!orphans.empty())
            diagnostic("clipboard: removed {} image files no item names", orphans.size());
    });
}

void ClipboardStore::scheduleSave()
{
    if (m_saveItem)
        m_saveItem->cancel();
    m_saveItem = m_guard.postAfter(m_runtime.mainQueue(), saveDelay, [this] { saveNow(); });
}

void ClipboardStore::saveNow()
{
    m_saveItem.reset();
    if (!m_saveAllowed)
        return;
    auto path = m_folder / ClipHistoryFile::fileName;
    m_saveQueue->post([path, folder = m_folder, items = m_history.items(), unsaved = m_unsavedImages,
                          deletions = std::exchange(m_pendingImageDeletions, {})]() mutable {
        // The main thread may not have dropped an item whose image failed yet; the file never names it.
        std::erase_if(items, [&](const ClipItem& item) { return item.imageFile && unsaved->contains(*item.imageFile); });
        auto written = writeFileAtomically(path, ClipHistoryFile::encode(items));
        if (!written) {
            // The images stay until a history without them is on disk; the orphan sweep takes them later.
            diagnostic("clipboard: could not save {} ({})", path.filename().string(), written.error().context);
            return;
        }
        std::error_code error;
        for (const auto& name : deletions)
            std::filesystem::remove(folder / name, error);
    });
}

void ClipboardStore::flush()
{
    assertMainThread();
    if (m_saveItem && !m_saveItem->isCancelled()) {
        m_saveItem->cancel();
        saveNow();
    }
    auto written = m_runtime.makeSignal();
    auto* signal = written.get();
    m_saveQueue->post([signal] { signal->raise(); });
    if (!written->waitFor(flushWait))
        diagnostic("clipboard: history still being written after {} s at flush", flushWait.count());
}

void ClipboardStore::changed()
{
    if (m_changeCallback)
        m_changeCallback();
}

void ClipboardStore::setChangeCallback(std::function<void()> callback)
{
    assertMainThread();
    m_changeCallback = std::move(callback);
}

const std::vector<ClipItem>& ClipboardStore::items() const
{
    assertMainThread();
    return m_history.items();
}

const ClipItem* ClipboardStore::item(const std::string& id) const
{
    assertMainThread();
    return m_history.find(id);
}

ClipInfo ClipboardStore::info(const ClipItem& item)
{
    assertMainThread();
    if (auto found = m_infoCache.find(item.id); found != m_infoCache.end())
        return found->second;
    auto analysed = ClipAnalysis::analyze(item);
    m_infoCache.emplace(item.id, analysed);
    return analysed;
}

std::optional<std::filesystem::path> ClipboardStore::imageURL(const ClipItem& item) const
{
    if (!item.imageFile || !isPlainFileName(*item.imageFile))
        return std::nullopt;
    return m_folder / *item.imageFile;
}

Result<std::string> ClipboardStore::image(const ClipItem& item) const
{
    auto path = imageURL(item);
    if (!path)
        return Error { "clipboard.noImage", "This item has no image.", item.id };
    QUILLMAR_TRY_ASSIGN(auto bytes, readFile(*path));
    if (!bytes)
        return Error { "clipboard.noImage", "The image of this item is missing.", path->string() };
    return std::move(*bytes);
}

bool ClipboardStore::writeOwn(PasteboardWriting writing)
{
    writing.markers.push_back(std::string(PasteboardTypes::own));
    bool written = m_ports.pasteboard.write(writing);
    // Our own change is never read back as a copy.
    m_lastChangeCount = m_ports.pasteboard.changeCount();
    return written;
}

void ClipboardStore::pressPaste(Paste paste)
{
    if (paste == Paste::no)
        return;
    if (!m_ports.keystrokes.isAccessibilityTrusted()) {
        m_ports.notices.askForAccessibility(accessibilityReason);
        return;
    }
    m_guard.postAfter(m_runtime.mainQueue(), pasteDelay, [this] { m_ports.keystrokes.postPaste(); });
}

Result<void> ClipboardStore::use(const std::string& id, Paste paste)
{
    assertMainThread();
    const auto* found = m_history.find(id);
    if (!found)
        return unknownItem(id);
    PasteboardWriting writing;
    switch (found->kind) {
    case ClipKind::text:
    case ClipKind::link:
        writing.text = found->text.value_or("");
        break;
    case ClipKind::files:
        writing.filePaths = found->filePaths.value_or(std::vector<std::string> {});
        break;
    case ClipKind::image: {
        QUILLMAR_TRY_ASSIGN(auto bytes, image(*found));
        writing.image = PasteboardImage { std::move(bytes), imageType(*found->imageFile),
            found->imageSize.value_or(PixelSize {}) };
        break;
    }
    }
    if (!writeOwn(std::move(writing)))
        return Error { "clipboard.unwritable", "The clipboard could not be changed.", id };
    m_history.moveToTop(id, historyDate(m_runtime.clock().now()));
    scheduleSave();
    changed();
    pressPaste(paste);
    return {};
}

Result<void> ClipboardStore::usePlainText(const std::string& id, Paste paste)
{
    assertMainThread();
    const auto* found = m_history.find(id);
    if (!found)
        return unknownItem(id);
    std::string text;
    if (found->kind == ClipKind::files && found->filePaths) {
        for (const auto& path : *found->filePaths)
            text += (text.empty() ? "" : "\n") + path;
    } else if (found->text) {
        text = *found->text;
    } else {
        return Error { "clipboard.noText", "This item has no text.", id };
    }
    if (!writeOwn(PasteboardWriting { std::move(text), {}, std::nullopt, {}, std::nullopt }))
        return Error { "clipboard.unwritable", "The clipboard could not be changed.", id };
    m_history.moveToTop(id, historyDate(m_runtime.clock().now()));
    scheduleSave();
    changed();
    m_ports.notices.show(plainTextMessage, "");
    pressPaste(paste);
    return {};
}

void ClipboardStore::togglePin(const std::string& id)
{
    assertMainThread();
    if (!m_history.togglePin(id))
        return;
    // Unpinning may put the history over its limit.
    trimToLimit();
    scheduleSave();
    changed();
}

void ClipboardStore::remove(const std::string& id)
{
    assertMainThread();
    auto removed = m_history.remove(id);
    if (!removed)
        return;
    std::vector<ClipItem> gone;
    gone.push_back(std::move(*removed));
    discard(std::move(gone));
    scheduleSave();
    changed();
}

void ClipboardStore::clear(KeepPinned keepPinned)
{
    assertMainThread();
    auto removed = m_history.clear(keepPinned);
    if (removed.empty())
        return;
    discard(std::move(removed));
    scheduleSave();
    changed();
}

void ClipboardStore::clearSystem()
{
    assertMainThread();
    m_ports.pasteboard.clear();
    auto count = m_ports.pasteboard.changeCount();
    m_lastClearCount = count;
    m_lastChangeCount = count;
    m_autoClearReference = { count, m_runtime.clock().uptime() };
}

void ClipboardStore::checkAutoClear(std::int64_t changeCount)
{
    auto now = m_runtime.clock().uptime();
    if (changeCount != m_autoClearReference.changeCount) {
        m_autoClearReference = { changeCount, now };
        return;
    }
    auto delay = ClipboardSettings::autoClearDelay(m_settings);
    if (!delay || changeCount == m_lastClearCount)
        return;
    if (now - m_autoClearReference.since >= *delay)
        clearSystem();
}

void ClipboardStore::updateAutoClearObservers()
{
    assertMainThread();
    bool wanted = m_running
        && (m_settings.value(ClipboardSettings::clearOnSleep)
            || m_settings.value(ClipboardSettings::clearOnLock));
    if (wanted == m_observingSession)
        return;
    m_observingSession = wanted;
    if (!wanted) {
        m_ports.sessionEvents.stopObserving();
        return;
    }
    m_ports.sessionEvents.startObserving([this, token = m_guard.token()](SessionEvent event) {
        if (token.isAlive())
            sessionEvent(event);
    });
}

void ClipboardStore::sessionEvent(SessionEvent event)
{
    assertMainThread();
    bool sleeping = event == SessionEvent::systemWillSleep || event == SessionEvent::displayDidSleep;
    if ((sleeping && m_settings.value(ClipboardSettings::clearOnSleep))
        || (event == SessionEvent::screenLocked && m_settings.value(ClipboardSettings::clearOnLock)))
        clearSystem();
}

Result<std::string> ClipboardStore::clean(const std::string& id)
{
    assertMainThread();
    const auto* found = m_history.find(id);
    if (!found)
        return unknownItem(id);
    if (!found->text || !WebLink::parse(trimmed(*found->text)))
        return Error { "clipboard.notALink", "That item isn't a link.", id };
    auto cleaned = LinkCleaner::clean(*found->text);
    if (!cleaned)
        return Error { "clipboard.alreadyClean", std::string(LinkCleaner::alreadyCleanMessage), id };
    m_history.setText(id, *cleaned);
    m_infoCache.erase(id);
    ++m_cleanedLinkCount;
    scheduleSave();
    changed();
    return std::move(*cleaned);
}

Result<std::string> ClipboardStore::cleanCurrentLink()
{
    assertMainThread();
    auto snapshot = PasteboardSnapshot::from(m_ports.pasteboard.read(), m_transientMarkers);
    if (!snapshot.text || !WebLink::parse(trimmed(*snapshot.text)))
        return Error { "clipboard.noLink", std::string(LinkCleaner::noLinkMessage), {} };
    auto cleaned = LinkCleaner::clean(*snapshot.text);
    if (!cleaned)
        return Error { "clipboard.alreadyClean", std::string(LinkCleaner::alreadyCleanMessage), {} };
    if (!writeOwn(PasteboardWriting { *cleaned, {}, std::nullopt, {}, std::nullopt }))
        return Error { "clipboard.unwritable", "The clipboard could not be changed.", {} };
    ++m_cleanedLinkCount;
    ClipItem probe;
    probe.kind = ClipKind::link;
    probe.text = snapshot.text;
    if (auto tracked = m_history.idWithContent(probe)) {
        m_history.setText(*tracked, *cleaned);
        m_infoCache.erase(*tracked);
        scheduleSave();
        changed();
    }
    m_ports.notices.show(LinkCleaner::cleanedMessage, "");
    return std::move(*cleaned);
}

std::vector<ClipItem> ClipboardStore::items(ClipCategory category, std::string_view search)
{
    assertMainThread();
    return filterClips(m_history.items(), category, search, [this](const ClipItem& item) { return info(item); });
}

void ClipboardStore::setPaused(bool paused)
{
    assertMainThread();
    m_settings.set(ClipboardSettings::paused, paused);
}

bool ClipboardStore::isPaused() const
{
    return m_settings.value(ClipboardSettings::paused);
}

void ClipboardStore::ignoreNextCopy()
{
    assertMainThread();
    m_ignoreNextCopy = true;
}

} // namespace quillmar
