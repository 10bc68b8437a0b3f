#pragma once

#include <memory>
#include <string_view>

#include "core/base/Result.h"
#include "core/commandbar/CommandLearning.h"
#include "core/commandbar/RandomSource.h"
#include "core/runtime/MainQueue.h"
#include "core/runtime/WorkItem.h"
#include "core/settings/Settings.h"

namespace quillmar {

// The one learning book of the application, kept in the settings under "commandBar.learning" as JSON.
// Every change is saved 1.0 s after the last one, on the main queue. Confined to the main thread: every
// member stops the process when called from elsewhere.
class CommandLearningStore final {
public:
    // The book as CommandLearning::toJson() writes it; none until the first use.
    inline static const SettingKey<nlohmann::json> key { "commandBar.learning", nullptr };
    static constexpr Duration saveDelay = seconds(1.0);

    // Loads the saved book; a missing or unreadable one is replaced by a fresh book with a new secret
    // (the unreadable value is left alone until the first save). Fails only when a fresh book is needed
    // and `random` cannot make its secret. `settings`, `mainQueue` and `random` must outlive the store.
    static Result<std::unique_ptr<CommandLearningStore>> create(Settings& settings, MainQueue& mainQueue,
        RandomSource& random);

    // Saves a pending change at once.
    ~CommandLearningStore();
    CommandLearningStore(const CommandLearningStore&) = delete;
    CommandLearningStore& operator=(const CommandLearningStore&) = delete;

    const CommandLearning& book() const;

    // The book as it is now, for the ranker: later changes make a new book and leave this one alone.
    std::shared_ptr<const CommandLearning> snapshot() const;

    // Records that the result `id` was executed after typing `query` (see CommandLearning::record) and
    // schedules a save.
    void record(std::string_view id, std::string_view query, WallTime now);

    // Forgets everything learned: cancels a pending save, starts a new empty book with a new secret from
    // the random source (so prefix keys made before and after cannot be linked) and removes the saved
    // value. When no new secret can be made, fails and changes nothing, since a book that kept the old
    // secret would be exactly what forgetting must not leave behind.
    Result<void> reset();

    // Runs a pending save now (at quit).
    void flush();

private:
    CommandLearningStore(Settings& settings, MainQueue& mainQueue, RandomSource& random, CommandLearning book);
    void scheduleSave();
    void save();

    Settings& m_settings;
    MainQueue& m_mainQueue;
    RandomSource& m_random;
    std::shared_ptr<const CommandLearning> m_book;
    WorkItemHandle m_saveWork;
};

} // namespace quillmar
