#include "tests/fuzz/Fuzz.h"
#include "tests/support/MemorySession.h"
#include "tests/support/Verify.h"

namespace fuzz
{

namespace
{

void WriteSession()
{
    CQmLogWriter main = WriterOf("Main");
    CQmLogWriter sql = WriterOf("SQL");
    main.BlockBegin(kNoticeKind);
    main.Write("head");
    sql.Write("x\ny\n");
    main.Write("\nb\nc\ndd");
    main.BlockEnd();
    main.Write("tail");
    QmLogWriterCloseAll();
}

} // namespace

// Edits of files that are sound: a file, a place, and a byte to put there or an end to cut it at.
void Verification(std::string_view bytes)
{
    static constexpr const char* kFiles[] = {"Main.LOG", "Main.ROW", "SQL.LOG", "SQL.ROW", "Log.DAT"};
    Input input(bytes);
    MemorySession session;
    WriteSession();
    for (const Finding& finding : FindingsOf("C:\\Logs", {"Main", "SQL"}))
        Require(!QmLogIsDamage(finding.kind), finding.reason.c_str()); // what is written is sound
    while (!input.IsEmpty())
    {
        const std::string path = session.Path(kFiles[input.Byte() % std::size(kFiles)]);
        std::string contents = session.files.Contents(path);
        const unsigned place = input.Byte();
        if (place >= 0xF0)
            contents.resize(input.Byte(), '\n');
        else if (!contents.empty())
            contents[place % contents.size()] = static_cast<char>(input.Byte());
        session.files.SetContents(path, contents);
    }
    std::string before[std::size(kFiles)];
    for (std::size_t i = 0; i < std::size(kFiles); ++i)
        before[i] = session.files.Contents(session.Path(kFiles[i]));
    const std::vector<Finding> findings = FindingsOf("C:\\Logs", {"Main", "SQL"});
    for (const Finding& finding : findings)
        Require(!finding.reason.empty() && !finding.file.empty(), "a finding tells file and reason");
    Require(findings.size() == FindingsOf("C:\\Logs", {"Main", "SQL"}).size(),
            "a second look finds the same");
    for (std::size_t i = 0; i < std::size(kFiles); ++i)
        Require(before[i] == session.files.Contents(session.Path(kFiles[i])), "looking changes nothing");
}

} // namespace fuzz
