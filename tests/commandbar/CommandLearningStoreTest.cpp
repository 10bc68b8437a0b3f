#include <gtest/gtest.h>

#include "core/commandbar/CommandLearningStore.h"
#include "core/runtime/VirtualRuntime.h"
#include "core/settings/MemorySettingsBackend.h"
#include "tests/commandbar/FakeRandomSource.h"

namespace quillmar {
namespace {

const WallTime now = WallTime(std::chrono::seconds(1'700'000'000));
constexpr std::string_view key = "commandBar.learning";

class CommandLearningStoreTest : public testing::Test {
protected:
    void open(nlohmann::json saved = nlohmann::json::object())
    {
        m_store.reset();
        auto backend = std::make_unique<MemorySettingsBackend>(std::move(saved));
        m_backend = backend.get();
        m_settings = std::make_unique<Settings>(std::move(backend));
        auto created = CommandLearningStore::create(*m_settings, m_runtime.mainQueue(), m_random);
        ASSERT_TRUE(created.ok());
        m_store = std::move(created).value();
    }

    bool saved() const { return m_backend->values().contains(key); }
    nlohmann::json savedBook() const { return m_backend->values().at(std::string(key)); }

    VirtualRuntime m_runtime;
    FakeRandomSource m_random;
    MemorySettingsBackend* m_backend = nullptr;
    std::unique_ptr<Settings> m_settings;
    std::unique_ptr<CommandLearningStore> m_store;
};

TEST_F(CommandLearningStoreTest, LoadsTheSavedBook)
{
    CommandLearning book;
    book.secret.fill(7);
    book.record("mail", "m", now);
    open({ { std::string(key), book.toJson() } });
    EXPECT_EQ(m_store->book(), book);
    EXPECT_EQ(m_random.calls(), 0) << "a saved book keeps its secret";
}

TEST_F(CommandLearningStoreTest, MissingOrCorruptValueGivesAFreshBookLeftUnsavedUntilAChange)
{
    open();
    EXPECT_EQ(m_random.calls(), 1);
    EXPECT_TRUE(m_store->book().entries.empty());

    open({ { std::string(key), { { "entries", 3 } } } });
    EXPECT_EQ(m_random.calls(), 2);
    EXPECT_TRUE(m_store->book().entries.empty());
    EXPECT_EQ(savedBook(), (nlohmann::json { { "entries", 3 } }));
    EXPECT_EQ(m_backend->saveCount(), 0);
}

TEST_F(CommandLearningStoreTest, CreateFailsOnlyWhenAFreshSecretCannotBeMade)
{
    m_random.setFails(true);
    auto settings = Settings(std::make_unique<MemorySettingsBackend>());
    EXPECT_FALSE(CommandLearningStore::create(settings, m_runtime.mainQueue(), m_random).ok());
    CommandLearning book;
    settings.set(key, book.toJson());
    EXPECT_TRUE(CommandLearningStore::create(settings, m_runtime.mainQueue(), m_random).ok());
}

TEST_F(CommandLearningStoreTest, SavesOneSecondAfterTheLastChange)
{
    open();
    m_store->record("mail", "ma", now);
    EXPECT_EQ(m_store->book().entries.at("mail").uses, 1);
    m_runtime.advance(seconds(0.6));
    EXPECT_FALSE(saved());
    m_store->record("maps", "ma", now);
    m_runtime.advance(seconds(0.9));
    EXPECT_FALSE(saved()) << "the second change moved the save";
    m_runtime.advance(seconds(0.1));
    ASSERT_TRUE(saved());
    EXPECT_EQ(m_backend->saveCount(), 1);
    EXPECT_EQ(CommandLearning::fromJson(savedBook()), m_store->book());
    m_runtime.advance(seconds(5));
    EXPECT_EQ(m_backend->saveCount(), 1);
}

TEST_F(CommandLearningStoreTest, SnapshotsAreNotChangedByLaterRecords)
{
    open();
    auto before = m_store->snapshot();
    m_store->record("mail", "ma", now);
    EXPECT_TRUE(before->entries.empty());
    EXPECT_EQ(m_store->snapshot()->entries.size(), 1u);
}

TEST_F(CommandLearningStoreTest, ResetCancelsTheSaveEmptiesTheBookAndRemovesTheValue)
{
    CommandLearning book;
    book.secret.fill(7);
    book.record("mail", "m", now);
    open({ { std::string(key), book.toJson() } });
    m_store->record("maps", "m", now);
    ASSERT_TRUE(m_store->reset().ok());
    EXPECT_FALSE(saved());
    EXPECT_TRUE(m_store->book().entries.empty());
    EXPECT_TRUE(m_store->book().habits.empty());
    m_runtime.advance(seconds(2));
    EXPECT_FALSE(saved()) << "the cancelled save never runs";
    EXPECT_EQ(m_runtime.pendingCount(), 0u);
}

TEST_F(CommandLearningStoreTest, ResetTakesANewSecretSoPrefixKeysBeforeAndAfterDiffer)
{
    open();
    auto before = m_store->book().prefixKeys("mail");
    ASSERT_TRUE(m_store->reset().ok());
    EXPECT_EQ(m_random.calls(), 2);
    auto after = m_store->book().prefixKeys("mail");
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t index = 0; index < after.size(); ++index)
        EXPECT_NE(after[index], before[index]) << "prefix of " << index + 1;
}

TEST_F(CommandLearningStoreTest, ResetWithoutANewSecretForgetsNothing)
{
    open();
    m_store->record("mail", "ma", now);
    m_runtime.advance(seconds(1));
    auto kept = m_store->book();
    m_random.setFails(true);
    EXPECT_FALSE(m_store->reset().ok());
    EXPECT_EQ(m_store->book(), kept);
    EXPECT_EQ(CommandLearning::fromJson(savedBook()), kept);
}

TEST_F(CommandLearningStoreTest, APendingSaveRunsWhenTheStoreCloses)
{
    open();
    m_store->record("mail", "ma", now);
    m_store.reset();
    ASSERT_TRUE(saved());
    EXPECT_EQ(CommandLearning::fromJson(savedBook()).value().entries.size(), 1u);
    m_runtime.advance(seconds(2)); // the cancelled work item must not touch the closed store
    EXPECT_EQ(m_backend->saveCount(), 1);
}

} // namespace
} // namespace quillmar
