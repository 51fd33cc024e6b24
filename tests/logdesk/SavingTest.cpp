// Messages saved beside what else happens: all of them or none, and what was there before.
#include "logdesk/Saving.h"
#include "msgservice/saved/MessageFile.h"
#include "tests/msgservice/SavedFiles.h"

namespace
{

class SavingTest : public msgservice::SavedFilesTest
{
protected:
    SavingTest()
    {
        for (const char* const body : {"a", "b", "c", "d", "e"})
            m_store->Add({.body = body, .level = 4});
    }

    std::string Save(std::uint32_t first, std::uint32_t end)
    {
        logdesk::Saving saving(m_store, first, end, m_path, {"", "LogDesk", "1", "app.log"});
        const std::string outcome = saving.Outcome();
        EXPECT_TRUE(saving.IsDone());
        return outcome;
    }

    std::int64_t Count() const { return msgservice::MessageFile(m_path).Count(); }
    std::string Bytes() const
    {
        std::ifstream file(m_path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::shared_ptr<msgservice::MessageStore> m_store = msgservice::MessageStore::Make();
};

TEST_F(SavingTest, SavesWhatIsAskedForInPlaceOfWhatWasSavedBefore)
{
    EXPECT_EQ("5 messages are saved in " + m_path, Save(0, 5));
    EXPECT_EQ(5, Count());
    EXPECT_EQ("1 message is saved in " + m_path, Save(3, 4));
    msgservice::MessageFile file(m_path);
    msgservice::CollectingSink saved;
    file.Read(1, 10, saved);
    ASSERT_EQ(1u, saved.dumps.size());
    EXPECT_EQ("d|", saved.dumps.front().substr(0, 2));
    EXPECT_EQ("app.log", file.About("origin"));
}

TEST_F(SavingTest, LeavesWhatWasThereWhenItFailsOrIsGivenUp)
{
    std::ofstream(m_path) << "no saved file";
    EXPECT_NE(std::string::npos, Save(0, 5).find(m_path + ": "));
    EXPECT_EQ("no saved file", Bytes());
    std::filesystem::remove(m_path);
    Save(0, 2);
    for (int i = 0; i < 50'000; ++i)
        m_store->Add({.body = "a long story", .level = 2});
    const std::string before = Bytes();
    {
        logdesk::Saving saving(m_store, 0, m_store->Count(), m_path, {});
        saving.Cancel();
        EXPECT_EQ(m_path + " was not saved: you have given it up", saving.Outcome());
    }
    {
        const logdesk::Saving saving(m_store, 0, m_store->Count(), m_path, {}); // and ends at once
    }
    EXPECT_EQ(before, Bytes());
    EXPECT_FALSE(std::filesystem::exists(m_path + ".saving"));
}

} // namespace
