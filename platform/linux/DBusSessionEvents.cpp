#include "platform/linux/DBusSessionEvents.h"

#include <array>
#include <utility>
#include <vector>

#include <unistd.h>

#include "core/base/Diagnostics.h"

namespace quillmar {

namespace {

constexpr const char* logindName = "org.freedesktop.login1";
constexpr const char* logindPath = "/org/freedesktop/login1";
constexpr const char* logindManager = "org.freedesktop.login1.Manager";
constexpr const char* logindSession = "org.freedesktop.login1.Session";
constexpr int callTimeoutMilliseconds = 2000;

// Each is both the bus name and the interface of a screen saver that sends ActiveChanged(bool); its object
// path differs between desktops, so any path is taken.
constexpr std::array screenSavers = {
    "org.freedesktop.ScreenSaver",
    "org.gnome.ScreenSaver",
    "org.mate.ScreenSaver",
    "org.cinnamon.ScreenSaver",
};

} // namespace

// The side of the backend that lives on its thread: touched only there.
struct DBusSessionEvents::Watch {
    struct Subscription {
        Watch* watch;
        SessionEvent event;
        // Sleep and the screen saver report both ways; only the start counts.
        bool onlyWhenTrue;
        GDBusConnection* connection;
        guint id = 0;
    };

    DBusBuses buses;
    std::string sessionId;
    ConnectionHandle system;
    ConnectionHandle session;
    std::vector<std::unique_ptr<Subscription>> subscriptions;
    std::function<void(SessionEvent)> deliver;

    static void onSignal(GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*,
        GVariant* parameters, gpointer data)
    {
        const auto& subscription = *static_cast<Subscription*>(data);
        if (subscription.onlyWhenTrue) {
            if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(b)")))
                return;
            gboolean on = FALSE;
            g_variant_get(parameters, "(b)", &on);
            if (!on)
                return;
        }
        subscription.watch->deliver(subscription.event);
    }

    void subscribe(GDBusConnection* connection, const char* sender, const char* interface, const char* member,
        const char* path, SessionEvent event, bool onlyWhenTrue)
    {
        auto subscription = std::make_unique<Subscription>(Subscription { this, event, onlyWhenTrue, connection });
        subscription->id = g_dbus_connection_signal_subscribe(connection, sender, interface, member, path,
            /*arg0=*/nullptr, G_DBUS_SIGNAL_FLAGS_NONE, onSignal, subscription.get(), /*user_data_free_func=*/nullptr);
        subscriptions.push_back(std::move(subscription));
    }

    ConnectionHandle connect(BusKind kind)
    {
        auto connection = connectToBus(buses, kind);
        if (!connection) {
            diagnostic("session events: no {} bus, its sleep and lock signals are not observed ({})", nameOf(kind),
                connection.error().context);
            return nullptr;
        }
        return std::move(connection).value();
    }

    // The object path of this login session, or empty when logind does not know it.
    std::string sessionPath()
    {
        GError* raw = nullptr;
        VariantHandle reply(sessionId.empty()
                ? g_dbus_connection_call_sync(system.get(), logindName, logindPath, logindManager, "GetSessionByPID",
                      g_variant_new("(u)", static_cast<guint32>(::getpid())), G_VARIANT_TYPE("(o)"),
                      G_DBUS_CALL_FLAGS_NONE, callTimeoutMilliseconds, nullptr, &raw)
                : g_dbus_connection_call_sync(system.get(), logindName, logindPath, logindManager, "GetSession",
                      g_variant_new("(s)", sessionId.c_str()), G_VARIANT_TYPE("(o)"), G_DBUS_CALL_FLAGS_NONE,
                      callTimeoutMilliseconds, nullptr, &raw));
        if (!reply) {
            GErrorHandle error(raw);
            diagnostic("session events: logind knows no session '{}', its lock is not observed ({})",
                sessionId.empty() ? "of this process" : sessionId, messageOf(error.get()));
            return {};
        }
        const gchar* path = nullptr;
        g_variant_get(reply.get(), "(&o)", &path);
        return path;
    }

    void start()
    {
        stop();
        system = connect(BusKind::system);
        session = connect(BusKind::session);
        if (system) {
            subscribe(system.get(), logindName, logindManager, "PrepareForSleep", logindPath,
                SessionEvent::systemWillSleep, /*onlyWhenTrue=*/true);
            if (auto path = sessionPath(); !path.empty())
                subscribe(system.get(), logindName, logindSession, "Lock", path.c_str(), SessionEvent::screenLocked,
                    /*onlyWhenTrue=*/false);
        }
        if (session) {
            for (const char* name : screenSavers)
                subscribe(session.get(), name, name, "ActiveChanged", /*path=*/nullptr, SessionEvent::screenLocked,
                    /*onlyWhenTrue=*/true);
        }
    }

    // Once a bus has answered, it has handled the match rules sent before.
    void roundTrips()
    {
        for (const auto& connection : { system.get(), session.get() })
            if (connection)
                roundTrip(connection);
    }

    void stop()
    {
        for (const auto& subscription : subscriptions)
            g_dbus_connection_signal_unsubscribe(subscription->connection, subscription->id);
        subscriptions.clear();
        system.reset();
        session.reset();
    }
};

DBusSessionEvents::DBusSessionEvents(MainQueue& mainQueue, DBusBuses buses, std::string sessionId)
    : m_mainQueue(mainQueue)
    , m_watch(std::make_unique<Watch>())
{
    m_watch->buses = std::move(buses);
    m_watch->sessionId = std::move(sessionId);
}

DBusSessionEvents::~DBusSessionEvents()
{
    m_guard.end();
    m_thread.post([watch = m_watch.get()] { watch->stop(); });
    m_thread.stop();
}

void DBusSessionEvents::startObserving(std::function<void(SessionEvent)> handler)
{
    m_mainQueue.assertMainThread("session events");
    m_handler = std::move(handler);
    auto generation = ++m_generation;
    auto deliver = [this, generation, token = m_guard.token()](SessionEvent event) {
        token.post(m_mainQueue, [this, generation, event] {
            if (generation == m_generation && m_handler)
                m_handler(event);
        });
    };
    m_thread.post([watch = m_watch.get(), deliver = std::move(deliver)]() mutable {
        watch->deliver = std::move(deliver);
        watch->start();
    });
}

void DBusSessionEvents::stopObserving()
{
    m_mainQueue.assertMainThread("session events");
    m_handler = nullptr;
    ++m_generation;
    m_thread.post([watch = m_watch.get()] { watch->stop(); });
}

bool DBusSessionEvents::waitUntilSettled(std::chrono::milliseconds timeout)
{
    m_mainQueue.assertMainThread("session events");
    auto ticket = ++m_settleRequests;
    m_thread.post([this, watch = m_watch.get(), ticket] {
        // A bus answers in order, so the signals it routed here before the answer have arrived by then; their
        // callbacks are queued on this thread, ahead of the work posted next.
        watch->roundTrips();
        m_thread.post([this, ticket] { settle(ticket); });
    });
    std::unique_lock lock(m_settledMutex);
    return m_settledChanged.wait_for(lock, timeout, [&] { return m_settled >= ticket; });
}

void DBusSessionEvents::settle(std::uint64_t ticket)
{
    {
        std::lock_guard lock(m_settledMutex);
        m_settled = ticket;
    }
    m_settledChanged.notify_all();
}

} // namespace quillmar
