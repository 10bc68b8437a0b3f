#include "platform/linux/DBusUserNotices.h"

#include <string>
#include <utility>

#include "core/base/Diagnostics.h"

namespace quillmar {

namespace {

// Long enough to read a short sentence, short enough to pass like a toast.
constexpr gint32 expiryMilliseconds = 4000;
constexpr int callTimeoutMilliseconds = 5000;

} // namespace

// The side of the backend that lives on its thread: touched only there.
struct DBusUserNotices::Sender {
    DBusBuses buses;
    ConnectionHandle session;
    std::unique_ptr<GCancellable, GObjectRelease> cancellable { g_cancellable_new() };
    int callsInFlight = 0;

    static void onReply(GObject* source, GAsyncResult* result, gpointer data)
    {
        auto& sender = *static_cast<Sender*>(data);
        --sender.callsInFlight;
        GError* raw = nullptr;
        VariantHandle reply(g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, &raw));
        GErrorHandle error(raw);
        if (!reply && !g_error_matches(error.get(), G_IO_ERROR, G_IO_ERROR_CANCELLED))
            diagnostic("notices: no notification server took the notice ({})", messageOf(error.get()));
    }

    // Ends the calls under way, so that none is left holding the connection once the thread stops.
    void finish()
    {
        g_cancellable_cancel(cancellable.get());
        while (callsInFlight > 0)
            g_main_context_iteration(g_main_context_get_thread_default(), /*may_block=*/TRUE);
        session.reset();
    }

    void send(const std::string& message, const std::string& detail)
    {
        // A bus that went away, or was not there, is tried again at the next notice.
        if (session && g_dbus_connection_is_closed(session.get()))
            session.reset();
        if (!session) {
            auto connection = connectToBus(buses, BusKind::session);
            if (!connection) {
                diagnostic("notices: no session bus, notice '{}' not shown ({})", message, connection.error().context);
                return;
            }
            session = std::move(connection).value();
        }
        GVariantBuilder actions;
        g_variant_builder_init(&actions, G_VARIANT_TYPE("as"));
        GVariantBuilder hints;
        g_variant_builder_init(&hints, G_VARIANT_TYPE("a{sv}"));
        GVariant* parameters = g_variant_new("(susssasa{sv}i)", "Quillmar", guint32 { 0 }, "", message.c_str(),
            detail.c_str(), &actions, &hints, expiryMilliseconds);
        g_dbus_connection_call(session.get(), "org.freedesktop.Notifications", "/org/freedesktop/Notifications",
            "org.freedesktop.Notifications", "Notify", parameters, G_VARIANT_TYPE("(u)"), G_DBUS_CALL_FLAGS_NONE,
            callTimeoutMilliseconds, cancellable.get(), onReply, this);
        ++callsInFlight;
    }
};

DBusUserNotices::DBusUserNotices(DBusBuses buses)
    : m_sender(std::make_unique<Sender>())
{
    m_sender->buses = std::move(buses);
}

DBusUserNotices::~DBusUserNotices()
{
    m_thread.post([sender = m_sender.get()] { sender->finish(); });
    m_thread.stop();
}

void DBusUserNotices::show(std::string_view message, std::string_view detail)
{
    m_thread.post([sender = m_sender.get(), message = std::string(message), detail = std::string(detail)] {
        sender->send(message, detail);
    });
}

void DBusUserNotices::askForAccessibility(std::string_view reason)
{
    if (m_accessibilityRequest)
        m_accessibilityRequest(reason);
    else
        show(reason, {});
}

void DBusUserNotices::setAccessibilityRequest(AccessibilityRequest request)
{
    m_accessibilityRequest = std::move(request);
}

} // namespace quillmar
