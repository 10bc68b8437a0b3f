#include "platform/linux/X11Pasteboard.h"

#include <xcb/xfixes.h>

#include <algorithm>
#include <cstring>

#include <fmt/format.h>

#include "core/base/Diagnostics.h"
#include "core/desktop/PasteboardTypes.h"
#include "platform/linux/X11Session.h"

namespace quillmar {

namespace {

// Atoms of the selection protocols beside the table's targets.
constexpr std::array<std::string_view, 9> protocolAtoms {
    "CLIPBOARD", "TARGETS", "INCR", "ATOM", "TIMESTAMP", "MULTIPLE", "CLIPBOARD_MANAGER", "SAVE_TARGETS",
    "QUILLMAR_SELECTION",
};

constexpr std::size_t maxTargets = 1024;

std::chrono::steady_clock::duration left(std::chrono::steady_clock::time_point deadline)
{
    return std::max(deadline - std::chrono::steady_clock::now(), std::chrono::steady_clock::duration::zero());
}

std::uint8_t eventType(const xcb_generic_event_t& event)
{
    return event.response_type & 0x7F;
}

} // namespace

X11Pasteboard::X11Pasteboard(std::shared_ptr<X11Connection> connection, Limits limits)
    : m_connection(std::move(connection))
    , m_limits(limits)
{
}

Result<std::unique_ptr<X11Pasteboard>> X11Pasteboard::create()
{
    if (desktopSession() != DesktopSession::x11)
        return Error { "clipboard.session", std::string(sessionRefusal), "" };
    QUILLMAR_TRY_ASSIGN(auto connection, X11Connection::shared("Clipboard history"));
    return create(std::move(connection), Limits {});
}

Result<std::unique_ptr<X11Pasteboard>> X11Pasteboard::create(std::shared_ptr<X11Connection> connection, Limits limits)
{
    std::unique_ptr<X11Pasteboard> pasteboard(new X11Pasteboard(std::move(connection), limits));
    QUILLMAR_TRY(pasteboard->setUp());
    return pasteboard;
}

Result<void> X11Pasteboard::setUp()
{
    auto* raw = m_connection->raw();
    const auto* xfixes = xcb_get_extension_data(raw, &xcb_xfixes_id);
    if (!xfixes || !xfixes->present)
        return Error { "clipboard.xfixes", "The X server can't report clipboard changes.", "x11: no XFIXES extension" };
    m_xfixesEvent = xfixes->first_event;
    QUILLMAR_TRY(m_connection->answer(xcb_xfixes_query_version(raw, 5, 0).sequence));

    // Every name in one round trip.
    std::vector<std::string_view> names(protocolAtoms.begin(), protocolAtoms.end());
    for (const auto& row : X11ClipboardTargets::all())
        names.push_back(row.target);
    std::vector<unsigned int> sequences;
    for (auto name : names)
        sequences.push_back(xcb_intern_atom(raw, 0, static_cast<std::uint16_t>(name.size()), name.data()).sequence);
    for (std::size_t index = 0; index < names.size(); ++index) {
        QUILLMAR_TRY_ASSIGN(auto answer, m_connection->answer(sequences[index]));
        if (!answer.reply)
            return Error { "clipboard.atoms", "The X server refused the clipboard's names.",
                fmt::format("x11: interning {} failed", names[index]) };
        m_atoms.emplace(std::string(names[index]), static_cast<xcb_intern_atom_reply_t*>(answer.reply.get())->atom);
    }
    for (const auto& row : X11ClipboardTargets::all())
        m_rows.emplace(atom(row.target), &row);

    // Requests are at most this long (in four-byte units) without BIG-REQUESTS, which other clients may not
    // use: properties above it go in pieces.
    m_chunkSize = std::size_t { xcb_get_setup(raw)->maximum_request_length } * 4 - 64;

    auto owner = m_connection->answer(xcb_get_selection_owner(raw, atom("CLIPBOARD")).sequence);
    if (owner && owner->reply)
        m_owner = static_cast<xcb_get_selection_owner_reply_t*>(owner->reply.get())->owner;

    m_window = xcb_generate_id(raw);
    std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(raw, XCB_COPY_FROM_PARENT, m_window, m_connection->root(), -10, -10, 1, 1, 0,
        XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    xcb_xfixes_select_selection_input(raw, m_window, atom("CLIPBOARD"),
        XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY
            | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    m_listener = m_connection->addListener([this](const xcb_generic_event_t& event) { handle(event); });
    QUILLMAR_TRY(m_connection->roundTrip());
    return {};
}

X11Pasteboard::~X11Pasteboard()
{
    if (m_window == XCB_NONE)
        return;
    if (ownsClipboard())
        handOver();
    if (m_listener)
        m_connection->removeListener(*m_listener);
    xcb_destroy_window(m_connection->raw(), m_window);
    xcb_flush(m_connection->raw());
}

xcb_atom_t X11Pasteboard::atom(std::string_view name) const
{
    auto found = m_atoms.find(name);
    return found == m_atoms.end() ? XCB_NONE : found->second;
}

void X11Pasteboard::handle(const xcb_generic_event_t& event)
{
    auto type = eventType(event);
    if (type == m_xfixesEvent + XCB_XFIXES_SELECTION_NOTIFY) {
        const auto& notify = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
        if (notify.window != m_window)
            return;
        {
            std::lock_guard lock(m_mutex);
            m_owner = notify.owner;
            ++m_changeCount;
        }
        m_changed.notify_all();
        return;
    }
    switch (type) {
    case XCB_SELECTION_NOTIFY: {
        const auto& notify = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
        if (notify.requestor != m_window)
            return;
        std::lock_guard lock(m_mutex);
        m_events.push_back({ XCB_SELECTION_NOTIFY, notify.property, notify.target, 0 });
        break;
    }
    case XCB_PROPERTY_NOTIFY: {
        const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (notify.window != m_window) {
            continueTransfer(notify);
            return;
        }
        std::lock_guard lock(m_mutex);
        m_events.push_back({ XCB_PROPERTY_NOTIFY, notify.atom, XCB_NONE, notify.state });
        break;
    }
    case XCB_DESTROY_NOTIFY: {
        const auto& destroyed = reinterpret_cast<const xcb_destroy_notify_event_t&>(event);
        std::lock_guard lock(m_mutex);
        std::erase_if(m_transfers, [&](const Transfer& transfer) { return transfer.requestor == destroyed.window; });
        return;
    }
    case XCB_SELECTION_REQUEST: {
        const auto& request = reinterpret_cast<const xcb_selection_request_event_t&>(event);
        if (request.owner == m_window)
            serve(request);
        return;
    }
    case XCB_SELECTION_CLEAR: {
        const auto& clear = reinterpret_cast<const xcb_selection_clear_event_t&>(event);
        if (clear.owner != m_window || clear.selection != atom("CLIPBOARD"))
            return;
        std::lock_guard lock(m_mutex);
        m_offer.reset();
        break;
    }
    default:
        return;
    }
    m_changed.notify_all();
}

// Reading.

std::optional<X11Pasteboard::WindowEvent> X11Pasteboard::awaitEvent(Deadline deadline,
    const std::function<bool(const WindowEvent&)>& matches)
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        auto found = std::find_if(m_events.begin(), m_events.end(), matches);
        if (found != m_events.end()) {
            auto event = *found;
            m_events.erase(m_events.begin(), found + 1);
            return event;
        }
        if (m_changed.wait_until(lock, deadline) == std::cv_status::timeout) {
            found = std::find_if(m_events.begin(), m_events.end(), matches);
            if (found == m_events.end())
                return std::nullopt;
        }
    }
}

std::optional<std::string> X11Pasteboard::takeProperty(Deadline deadline, std::size_t cap, xcb_atom_t* type)
{
    auto* raw = m_connection->raw();
    auto cookie = xcb_get_property(raw, 1, m_window, atom("QUILLMAR_SELECTION"), XCB_GET_PROPERTY_TYPE_ANY, 0,
        static_cast<std::uint32_t>(std::min<std::size_t>(cap / 4 + 1, UINT32_MAX)));
    auto answer = m_connection->answer(cookie.sequence, left(deadline));
    if (!answer || !answer->reply)
        return std::nullopt;
    auto* reply = static_cast<xcb_get_property_reply_t*>(answer->reply.get());
    if (reply->bytes_after > 0)
        return std::nullopt;
    *type = reply->type;
    auto length = static_cast<std::size_t>(xcb_get_property_value_length(reply));
    if (length > cap)
        return std::nullopt;
    return std::string(static_cast<const char*>(xcb_get_property_value(reply)), length);
}

std::optional<std::string> X11Pasteboard::fetch(xcb_atom_t selection, xcb_atom_t target, Deadline deadline, std::size_t cap)
{
    auto* raw = m_connection->raw();
    auto property = atom("QUILLMAR_SELECTION");
    {
        std::lock_guard lock(m_mutex);
        m_events.clear();
    }
    xcb_convert_selection(raw, m_window, selection, target, property, XCB_CURRENT_TIME);
    xcb_flush(raw);
    auto notified = awaitEvent(deadline, [&](const WindowEvent& event) {
        return event.type == XCB_SELECTION_NOTIFY && event.target == target;
    });
    if (!notified || notified->atom == XCB_NONE)
        return std::nullopt;
    xcb_atom_t type = XCB_NONE;
    auto bytes = takeProperty(deadline, cap, &type);
    if (!bytes || type != atom("INCR"))
        return bytes;

    // In pieces: each deletion of the property (takeProperty deletes it) asks the owner for the next, and an
    // empty one ends the transfer.
    std::string whole;
    for (;;) {
        auto piece = awaitEvent(deadline, [&](const WindowEvent& event) {
            return event.type == XCB_PROPERTY_NOTIFY && event.atom == property && event.state == XCB_PROPERTY_NEW_VALUE;
        });
        if (!piece)
            return std::nullopt;
        auto chunk = takeProperty(deadline, cap - whole.size(), &type);
        if (!chunk) {
            diagnostic("clipboard: a transfer in pieces went over {} bytes or stopped; left it out", cap);
            return std::nullopt;
        }
        if (chunk->empty())
            return whole;
        whole += *chunk;
    }
}

PasteboardReading X11Pasteboard::read()
{
    std::lock_guard readLock(m_readMutex);
    auto deadline = std::chrono::steady_clock::now() + m_limits.readTimeout;
    PasteboardReading reading;
    reading.changeCount = m_changeCount.load();
    {
        std::lock_guard lock(m_mutex);
        if (m_owner == XCB_NONE)
            return reading;
    }
    auto clipboard = atom("CLIPBOARD");
    auto targets = fetch(clipboard, atom("TARGETS"), deadline, maxTargets * 4);
    if (!targets)
        return reading;

    // The owner's targets the table knows, in the owner's order; garbage atoms simply match no row.
    std::vector<std::pair<xcb_atom_t, const ClipboardTarget*>> offered;
    for (std::size_t at = 0; at + 4 <= targets->size(); at += 4) {
        xcb_atom_t target = 0;
        std::memcpy(&target, targets->data() + at, 4);
        if (auto row = m_rows.find(target); row != m_rows.end())
            offered.emplace_back(target, row->second);
    }
    // The best target of each type by the table's order of preference.
    std::map<std::string_view, std::pair<xcb_atom_t, const ClipboardTarget*>> best;
    for (const auto& [target, row] : offered) {
        auto& chosen = best[row->type];
        if (!chosen.second || row < chosen.second)
            chosen = { target, row };
    }

    std::size_t budget = m_limits.maxBytes;
    std::map<const ClipboardTarget*, std::string> values;
    auto take = [&](xcb_atom_t target, const ClipboardTarget* row) {
        auto bytes = fetch(clipboard, target, deadline, budget);
        if (bytes) {
            budget -= bytes->size();
            values.emplace(row, std::move(*bytes));
        }
    };
    // Markers with values first (they may make the rest unwanted), large contents last.
    for (auto content : { ClipboardContent::marker, ClipboardContent::text, ClipboardContent::files,
             ClipboardContent::data, ClipboardContent::image }) {
        for (const auto& [target, row] : offered) {
            if (row->content != content || std::chrono::steady_clock::now() >= deadline)
                continue;
            bool needsValue = !row->markerValue.empty() || row->type == PasteboardTypes::declaredSource;
            if (content == ClipboardContent::marker ? needsValue : best[row->type].second == row)
                take(target, row);
        }
    }

    for (const auto& [target, row] : offered) {
        auto value = values.find(row);
        // A marker that must hold a value counts when it does, or when it could not be read.
        if (!row->markerValue.empty() && value != values.end() && value->second != row->markerValue)
            continue;
        if (std::find(reading.types.begin(), reading.types.end(), row->type) == reading.types.end())
            reading.types.emplace_back(row->type);
        if (value == values.end() || best[row->type].second != row)
            continue;
        std::string type(row->type);
        switch (row->content) {
        case ClipboardContent::text:
            reading.strings[type] = X11ClipboardTargets::decodeText(value->second, row->latin1);
            break;
        case ClipboardContent::files:
            reading.filePaths = X11ClipboardTargets::decodeFiles(value->second);
            break;
        case ClipboardContent::image:
            reading.image = PasteboardImage { value->second, type, X11ClipboardTargets::pngSize(value->second) };
            break;
        case ClipboardContent::data:
            reading.data[type] = value->second;
            break;
        case ClipboardContent::marker:
            if (row->markerValue.empty())
                reading.strings[type] = X11ClipboardTargets::decodeText(value->second, false);
            break;
        }
    }
    return reading;
}

// Writing.

std::shared_ptr<const X11Pasteboard::Offer> X11Pasteboard::makeOffer(const PasteboardWriting& writing) const
{
    auto offer = std::make_shared<Offer>();
    auto add = [&](std::string_view type, const std::string& bytes) {
        for (const auto* row : X11ClipboardTargets::offeredFor(type)) {
            auto target = atom(row->target);
            bool known = std::any_of(offer->targets.begin(), offer->targets.end(),
                [&](const auto& entry) { return entry.first == target; });
            if (!known)
                offer->targets.emplace_back(target, row->markerValue.empty() ? bytes : std::string(row->markerValue));
        }
    };
    auto addFiles = [&](const std::vector<std::string>& paths) {
        add(PasteboardTypes::fileUrl, X11ClipboardTargets::encodeFiles(paths));
    };
    std::vector<std::string> declared;
    if (writing.contents) {
        const auto& contents = *writing.contents;
        for (const auto& type : contents.types) {
            declared.push_back(type);
            if (auto string = contents.strings.find(type); string != contents.strings.end())
                add(type, string->second);
            else if (auto bytes = contents.data.find(type); bytes != contents.data.end())
                add(type, bytes->second);
            else if (contents.image && contents.image->type == type)
                add(type, contents.image->data);
            else if (type == PasteboardTypes::fileUrl)
                addFiles(contents.filePaths);
            else
                add(type, {});
        }
    } else {
        if (writing.text)
            add(PasteboardTypes::text[0], *writing.text);
        if (!writing.filePaths.empty())
            addFiles(writing.filePaths);
        if (writing.image)
            add(writing.image->type, writing.image->data);
    }
    for (const auto& marker : writing.markers) {
        if (std::find(declared.begin(), declared.end(), marker) == declared.end())
            add(marker, {});
    }
    return offer;
}

void X11Pasteboard::setOwner(xcb_window_t owner)
{
    xcb_set_selection_owner(m_connection->raw(), owner, atom("CLIPBOARD"), XCB_CURRENT_TIME);
    xcb_flush(m_connection->raw());
    // The server reports our own change too; waiting for it keeps the count current when we return. Reports of
    // earlier changes (a window of another client destroyed just now) may come first.
    std::unique_lock lock(m_mutex);
    m_changed.wait_for(lock, X11Connection::replyTimeout, [&] { return m_owner == owner; });
}

bool X11Pasteboard::write(const PasteboardWriting& writing)
{
    {
        std::lock_guard lock(m_mutex);
        m_offer = makeOffer(writing);
    }
    setOwner(m_window);
    if (ownsClipboard())
        return true;
    std::lock_guard lock(m_mutex);
    m_offer.reset();
    return false;
}

void X11Pasteboard::clear()
{
    {
        std::lock_guard lock(m_mutex);
        m_offer.reset();
    }
    setOwner(XCB_NONE);
}

bool X11Pasteboard::awaitChange(std::int64_t seen, Duration timeout) const
{
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, timeout, [&] { return m_changeCount.load() > seen; });
}

bool X11Pasteboard::ownsClipboard() const
{
    std::lock_guard lock(m_mutex);
    return m_offer && m_owner == m_window;
}

bool X11Pasteboard::awaitLoss(Duration timeout) const
{
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, timeout, [&] { return !m_offer || m_owner != m_window; });
}

// Serving.

void X11Pasteboard::notifyRequestor(const xcb_selection_request_event_t& request, xcb_atom_t property)
{
    xcb_selection_notify_event_t notify {};
    notify.response_type = XCB_SELECTION_NOTIFY;
    notify.time = request.time;
    notify.requestor = request.requestor;
    notify.selection = request.selection;
    notify.target = request.target;
    notify.property = property;
    xcb_send_event(m_connection->raw(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&notify));
    xcb_flush(m_connection->raw());
}

void X11Pasteboard::serve(const xcb_selection_request_event_t& request)
{
    auto* raw = m_connection->raw();
    std::shared_ptr<const Offer> offer;
    {
        std::lock_guard lock(m_mutex);
        offer = m_offer;
    }
    // Clients older than ICCCM 2 name no property: the target is used.
    auto property = request.property == XCB_NONE ? request.target : request.property;
    if (!offer || request.selection != atom("CLIPBOARD"))
        return notifyRequestor(request, XCB_NONE);
    if (request.target == atom("TARGETS")) {
        std::vector<xcb_atom_t> targets { atom("TARGETS") };
        for (const auto& [target, bytes] : offer->targets)
            targets.push_back(target);
        xcb_change_property(raw, XCB_PROP_MODE_REPLACE, request.requestor, property, atom("ATOM"), 32,
            static_cast<std::uint32_t>(targets.size()), targets.data());
        return notifyRequestor(request, property);
    }
    auto found = std::find_if(offer->targets.begin(), offer->targets.end(),
        [&](const auto& entry) { return entry.first == request.target; });
    if (found == offer->targets.end())
        return notifyRequestor(request, XCB_NONE);
    const auto& bytes = found->second;
    if (bytes.size() <= m_chunkSize) {
        xcb_change_property(raw, XCB_PROP_MODE_REPLACE, request.requestor, property, request.target, 8,
            static_cast<std::uint32_t>(bytes.size()), bytes.data());
        return notifyRequestor(request, property);
    }
    // Too large for one request: announce INCR and send a piece each time the requestor deletes the property,
    // which needs its property changes (and its destruction, which ends the transfer).
    std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(raw, request.requestor, XCB_CW_EVENT_MASK, &mask);
    auto size = static_cast<std::uint32_t>(std::min<std::size_t>(bytes.size(), UINT32_MAX));
    xcb_change_property(raw, XCB_PROP_MODE_REPLACE, request.requestor, property, atom("INCR"), 32, 1, &size);
    {
        std::lock_guard lock(m_mutex);
        m_transfers.push_back({ request.requestor, property, request.target, offer, bytes, 0 });
    }
    notifyRequestor(request, property);
}

void X11Pasteboard::continueTransfer(const xcb_property_notify_event_t& event)
{
    if (event.state != XCB_PROPERTY_DELETE)
        return;
    std::unique_lock lock(m_mutex);
    auto transfer = std::find_if(m_transfers.begin(), m_transfers.end(),
        [&](const Transfer& each) { return each.requestor == event.window && each.property == event.atom; });
    if (transfer == m_transfers.end())
        return;
    auto piece = transfer->bytes.substr(transfer->offset, m_chunkSize);
    transfer->offset += piece.size();
    auto* raw = m_connection->raw();
    xcb_change_property(raw, XCB_PROP_MODE_REPLACE, transfer->requestor, transfer->property, transfer->type, 8,
        static_cast<std::uint32_t>(piece.size()), piece.data());
    // The empty piece ends it.
    if (piece.empty()) {
        std::uint32_t none = XCB_EVENT_MASK_NO_EVENT;
        xcb_change_window_attributes(raw, transfer->requestor, XCB_CW_EVENT_MASK, &none);
        m_transfers.erase(transfer);
    }
    lock.unlock();
    xcb_flush(raw);
}

void X11Pasteboard::handOver()
{
    auto* raw = m_connection->raw();
    auto manager = m_connection->answer(xcb_get_selection_owner(raw, atom("CLIPBOARD_MANAGER")).sequence);
    if (!manager || !manager->reply || static_cast<xcb_get_selection_owner_reply_t*>(manager->reply.get())->owner == XCB_NONE)
        return;
    // The manager converts each of our targets while we keep serving, then answers our request.
    auto deadline = std::chrono::steady_clock::now() + m_limits.handOverTimeout;
    {
        std::lock_guard lock(m_mutex);
        m_events.clear();
    }
    xcb_convert_selection(raw, m_window, atom("CLIPBOARD_MANAGER"), atom("SAVE_TARGETS"), XCB_NONE, XCB_CURRENT_TIME);
    xcb_flush(raw);
    if (!awaitEvent(deadline, [&](const WindowEvent& event) { return event.type == XCB_SELECTION_NOTIFY; }))
        diagnostic("clipboard: the clipboard manager took no contents within {} ms",
            std::chrono::duration_cast<std::chrono::milliseconds>(m_limits.handOverTimeout).count());
}

} // namespace quillmar
