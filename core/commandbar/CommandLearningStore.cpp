#include "core/commandbar/CommandLearningStore.h"

#include "core/base/Diagnostics.h"

namespace quillmar {

namespace {

constexpr std::string_view who = "CommandLearningStore";

} // namespace

Result<std::unique_ptr<CommandLearningStore>> CommandLearningStore::create(Settings& settings, MainQueue& mainQueue,
    RandomSource& random)
{
    mainQueue.assertMainThread(who);
    std::optional<CommandLearning> book;
    if (auto saved = settings.saved(key)) {
        book = CommandLearning::fromJson(*saved);
        if (!book)
            diagnostic("commandbar: saved learning book is unreadable, starting a fresh one");
    }
    if (!book) {
        QUILLMAR_TRY_ASSIGN(auto fresh, CommandLearning::create(random));
        book = std::move(fresh);
    }
    return std::unique_ptr<CommandLearningStore>(new CommandLearningStore(settings, mainQueue, random, std::move(*book)));
}

CommandLearningStore::CommandLearningStore(Settings& settings, MainQueue& mainQueue, RandomSource& random,
    CommandLearning book)
    : m_settings(settings)
    , m_mainQueue(mainQueue)
    , m_random(random)
    , m_book(std::make_shared<const CommandLearning>(std::move(book)))
{
}

CommandLearningStore::~CommandLearningStore()
{
    m_mainQueue.assertMainThread(who);
    flush();
}

const CommandLearning& CommandLearningStore::book() const
{
    m_mainQueue.assertMainThread(who);
    return *m_book;
}

std::shared_ptr<const CommandLearning> CommandLearningStore::snapshot() const
{
    m_mainQueue.assertMainThread(who);
    return m_book;
}

void CommandLearningStore::record(std::string_view id, std::string_view query, WallTime now)
{
    m_mainQueue.assertMainThread(who);
    auto book = std::make_shared<CommandLearning>(*m_book);
    book->record(id, query, now);
    m_book = std::move(book);
    scheduleSave();
}

Result<void> CommandLearningStore::reset()
{
    m_mainQueue.assertMainThread(who);
    QUILLMAR_TRY_ASSIGN(auto fresh, CommandLearning::create(m_random));
    if (m_saveWork) {
        m_saveWork->cancel();
        m_saveWork.reset();
    }
    m_book = std::make_shared<const CommandLearning>(std::move(fresh));
    m_settings.remove(key.name);
    return {};
}

void CommandLearningStore::flush()
{
    m_mainQueue.assertMainThread(who);
    if (!m_saveWork)
        return;
    m_saveWork->cancel();
    save();
}

void CommandLearningStore::scheduleSave()
{
    if (m_saveWork)
        m_saveWork->cancel();
    // The work item dies with the store: the destructor cancels it (by flushing) before `this` goes.
    m_saveWork = m_mainQueue.postAfter(saveDelay, [this] { save(); });
}

void CommandLearningStore::save()
{
    m_saveWork.reset();
    m_settings.set(key, m_book->toJson());
}

} // namespace quillmar
