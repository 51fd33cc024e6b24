// Saves messages in a file, "*.zemalog".
#pragma once

#include "msgservice/Message.h"
#include "msgservice/saved/Database.h"

#include <array>
#include <optional>

namespace msgservice
{

// What a saved file tells about itself; what is empty is left out.
struct SavedAbout
{
    std::string title;
    std::string program; // that has saved it
    std::string version; // of the program
    std::string origin;  // where the messages come from, such as the path of a log
};

// What has been added is in the file after Commit, all of it or, if that fails or the process is killed
// before, none. What an earlier Commit has put there stays whatever happens. Without a further Commit the
// destructor drops what has been added since the last one.
//
// A file has one writer; other programs can read what is committed meanwhile. Operations throw
// MessageFileError and std::bad_alloc. One thread at a time.
class MessageFileWriter : public MessageSink
{
public:
    enum class Mode
    {
        Replace, // the first Commit puts a new file in place of what is there, and later ones append to it
        Append   // to the saved file that is there; without one a new one is made at once
    };

    // `path` is UTF-8 or in the system's code page. Of a file to be replaced this finds out that it may be:
    // it must be a saved file or empty, and no other writer may be in it. A new file grows under the name
    // "PATH.saving".
    MessageFileWriter(std::string path, Mode mode, SavedAbout about);
    ~MessageFileWriter() override;
    MessageFileWriter(const MessageFileWriter&) = delete;
    MessageFileWriter& operator=(const MessageFileWriter&) = delete;

    // Texts in the system's code page become UTF-8, texts beyond 16 MB are cut with a mark, and what is no
    // level becomes the level 2. While appending, a Commit comes by itself every 16 MB. After a failure
    // nothing more can be added: every call throws the same again, and what has been committed is in the
    // file.
    void Add(const MessageFields& message) override;

    // May be called again if it throws with Reason::InUse: another program is reading just now, or has a file
    // open that is to be replaced.
    void Commit();

    // How many of the added messages are in the file for good.
    std::uint64_t Committed() const { return m_committed; }

private:
    struct DeleteUnfinished
    {
        void operator()(const std::string* path) const;
    };

    void OpenNew();
    void OpenExisting();
    void Begin();
    void Bind(const MessageFields& message);
    void EndTransaction();
    void PutInPlace();
    [[noreturn]] void GiveUp(int result);

    const std::string m_path;
    const SavedAbout m_about;
    std::unique_ptr<const std::string, DeleteUnfinished>
        m_unfinished; // path of the new file until it is in place
    std::optional<Database> m_database;
    Statement m_insert;
    bool m_isComplete = false; // the new file is, though it may not be in place yet
    std::int64_t m_nextNumber = 1;
    std::uint64_t m_added = 0;
    std::uint64_t m_committed = 0;
    std::size_t m_uncommittedBytes = 0;
    std::optional<MessageFileError> m_failure;
    std::array<std::string, 11> m_scratch; // of texts that are not UTF-8
};

} // namespace msgservice
