#include "platform/linux/GMainLoopThread.h"

#include <memory>
#include <utility>

namespace quillmar {

namespace {

using TaskBox = std::function<void()>;

gboolean runTask(gpointer data)
{
    (*static_cast<TaskBox*>(data))();
    return G_SOURCE_REMOVE;
}

void deleteTask(gpointer data)
{
    delete static_cast<TaskBox*>(data);
}

} // namespace

GMainLoopThread::GMainLoopThread()
    : m_context(g_main_context_new())
    , m_loop(g_main_loop_new(m_context, FALSE))
{
    m_thread = std::thread([this] {
        g_main_context_push_thread_default(m_context);
        g_main_loop_run(m_loop);
        g_main_context_pop_thread_default(m_context);
    });
}

GMainLoopThread::~GMainLoopThread()
{
    stop();
    g_main_loop_unref(m_loop);
    // Work posted too late is destroyed here, unrun.
    g_main_context_unref(m_context);
}

void GMainLoopThread::post(std::function<void()> task)
{
    // Idle sources of one priority are dispatched in the order they were attached, so posted work keeps its order.
    GSource* source = g_idle_source_new();
    g_source_set_priority(source, G_PRIORITY_DEFAULT);
    g_source_set_callback(source, runTask, new TaskBox(std::move(task)), deleteTask);
    g_source_attach(source, m_context);
    g_source_unref(source);
}

void GMainLoopThread::stop()
{
    if (!m_thread.joinable())
        return;
    // Quitting through the queue rather than at once lets the work posted before run, such as unsubscribing.
    post([loop = m_loop] { g_main_loop_quit(loop); });
    m_thread.join();
}

} // namespace quillmar
