// Saved files whose writer is killed, or finds the disk full, at each of its calls that change a file.
#include "tests/msgservice/SavedFiles.h"

#include <cerrno>
#include <csignal>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

using namespace msgservice;

enum class Trouble
{
    None,
    Kill,
    FullDisk
};

int g_callsLeft = 0; // before the trouble begins
Trouble g_trouble = Trouble::None;

bool IsStruck()
{
    if (g_callsLeft > 0 && --g_callsLeft > 0)
        return false;
    if (g_trouble == Trouble::Kill)
        ::raise(SIGKILL);
    errno = ENOSPC;
    return true;
}

// Puts itself in the way of SQLite's calls: the one of number `call` from now on, counted from 1, is struck.
// A full disk lets files be cut and deleted.
void Strike(Trouble trouble, int call = 0)
{
    g_trouble = trouble;
    g_callsLeft = call;
    sqlite3_vfs* const files = sqlite3_vfs_find(nullptr);
    const auto set = [&](const char* name, auto* function) {
        files->xSetSystemCall(files, name, reinterpret_cast<sqlite3_syscall_ptr>(function));
    };
    ssize_t (*const writeAt)(int, const void*, size_t, off_t) = [](int file, const void* data, size_t size,
                                                                   off_t at) {
        return IsStruck() ? -1 : ::pwrite(file, data, size, at);
    };
    set(nullptr, static_cast<void (*)()>(nullptr)); // as they were
    if (trouble == Trouble::None)
        return;
    set("pwrite", writeAt);
    set("pwrite64", writeAt);
    set(
        "write",
        +[](int file, const void* data, size_t size) { return IsStruck() ? -1 : ::write(file, data, size); });
    if (trouble == Trouble::FullDisk)
        return;
    set(
        "ftruncate", +[](int file, off_t size) { return IsStruck() ? -1 : ::ftruncate(file, size); });
    set(
        "unlink", +[](const char* path) { return IsStruck() ? -1 : ::unlink(path); });
}

class SavedKillTest : public SavedFilesTest
{
protected:
    static constexpr std::size_t kPieces = 2;

    static std::vector<std::string> Numbers(std::size_t first, std::size_t count)
    {
        std::vector<std::string> bodies;
        for (std::size_t i = 0; i < count; ++i)
            bodies.push_back(std::to_string(first + i) + std::string(i * 5, 'x'));
        return bodies;
    }
    static std::string Joined(std::size_t first)
    {
        std::string text;
        for (const std::string& body : Numbers(first, 60))
            text += body + '|';
        return text;
    }

    // Saves piece by piece, and tells of each when it is in the file.
    static void SavePieces(MessageFileWriter& writer, const std::function<void()>& tell)
    {
        for (std::size_t i = 1; i <= kPieces; ++i)
        {
            Add(writer, Numbers(i * 1000, 60));
            writer.Commit();
            tell();
        }
    }

    // The file holds the pieces that were committed, and at most one more. Before the first one of a file
    // that is replaced, it holds the old messages.
    void ExpectPieces(Mode mode, std::size_t committed) const
    {
        std::string wanted = mode == Mode::Append ? Joined(0) : "";
        for (std::size_t i = 1; i <= committed; ++i)
            wanted += Joined(i * 1000);
        const std::string got = Bodies();
        EXPECT_TRUE(got == (wanted.empty() ? Joined(0) : wanted) ||
                    got == wanted + Joined(1000 * (committed + 1)))
            << got;
    }
};

TEST_F(SavedKillTest, WhateverCallItIsKilledAtWhatIsCommittedIsThere)
{
    for (const Mode mode : {Mode::Append, Mode::Replace})
    {
        int call = 1;
        for (bool ended = false; !ended; ++call)
        {
            Save(Numbers(0, 60));
            int told[2];
            ASSERT_EQ(0, ::pipe(told));
            const pid_t child = ::fork();
            if (child == 0)
            {
                Strike(Trouble::Kill, call);
                const std::string refused = Refused([&] {
                    MessageFileWriter writer(m_path, mode, {});
                    SavePieces(writer, [&] { EXPECT_EQ(1, ::write(told[1], "c", 1)); });
                });
                ::_exit(refused.empty() ? 0 : 1);
            }
            int status = 0;
            ASSERT_EQ(child, ::waitpid(child, &status, 0));
            ended = WIFEXITED(status);
            EXPECT_TRUE(!ended || WEXITSTATUS(status) == 0);
            ::close(told[1]);
            char pieces[kPieces];
            ExpectPieces(mode, static_cast<std::size_t>(::read(told[0], pieces, kPieces)));
            ::close(told[0]);
        }
        EXPECT_GT(call, 20);
    }
}

TEST_F(SavedKillTest, OnAFullDiskWhatIsCommittedStaysAndTheReasonIsTold)
{
    for (const Mode mode : {Mode::Append, Mode::Replace})
        for (std::size_t committed = 0, call = 1; committed < kPieces; ++call)
        {
            Save(Numbers(0, 60));
            committed = 0;
            Strike(Trouble::FullDisk, static_cast<int>(call));
            {
                std::optional<MessageFileWriter> writer;
                const std::string refused = Refused([&] {
                    writer.emplace(m_path, mode, SavedAbout());
                    SavePieces(*writer, [&] { ++committed; });
                });
                EXPECT_EQ(committed < kPieces ? m_path + ": the disk is full" : "", refused);
                EXPECT_TRUE(!writer || refused == Refused([&] { writer->Commit(); })) << "it goes on";
            }
            Strike(Trouble::None);
            ExpectPieces(mode, committed);
            EXPECT_EQ(1, FileCount());
        }
}

} // namespace
