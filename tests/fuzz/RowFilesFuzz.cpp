#include "logview/Excerpt.h"
#include "logview/LogSession.h"
#include "logview/ReaderRows.h"
#include "logview/RowCache.h"
#include "logview/SelectionText.h"
#include "tests/fuzz/Fuzz.h"
#include "tests/support/MemorySession.h"

#include <cstring>

namespace fuzz
{

namespace
{

// What a reader answers lies within the files, whatever the index says.
void ReadAll(CQmLogReader& reader, const std::string& text, unsigned seed)
{
    const unsigned long count = reader.GetRowCount();
    for (unsigned long at = 0; at <= count; ++at)
    {
        const char* line = nullptr;
        unsigned long length = 0;
        CQmLogRow row;
        const bool isRead = reader.Read(at, line, length, row);
        Require(isRead == (at < count), "rows up to the count can be read");
        if (!isRead)
            continue;
        Require(length <= text.size(), "a line is no longer than the text");
        const std::size_t offset = std::min<std::size_t>(row.offset, text.size());
        const bool isOfText = text.compare(offset, length, line, length) == 0;
        Require(isOfText, "a line is what the text has at its offset");
        unsigned long index = 0;
        unsigned long found = 0;
        Require(reader.Find(row.time + seed, seed % 2 == 0, found, index) && index < count,
                "Find answers a row");
    }
}

void ShowAll(unsigned seed)
{
    logview::ReaderRows rows;
    logview::LogSession session(rows);
    session.Refresh(0);
    for (unsigned step = 0; step < 8; ++step)
    {
        const int count = session.RowCount();
        const int row = count > 0 ? static_cast<int>((seed + 7 * step) % static_cast<unsigned>(count)) : 0;
        logview::RowChange change;
        step % 3 == 2 ? session.Collapse(row, change) : session.ExpandAll(row, change);
        Require(session.RowCount() == count + change.delta, "an operation tells how many rows it has added");
    }
    logview::RowCache cache(rows);
    const int shown = std::min(session.RowCount(), 100);
    cache.Prepare(session, 0, shown);
    for (int row = 0; row < shown; ++row)
    {
        const logview::CachedRow* const cached = cache.Get(row);
        std::string line;
        Require(cached && cached->readable == session.ReadLine(row, line), "both ways read the same rows");
        Require(line.compare(0, cached->text.size(), cached->text) == 0, "both ways read the same lines");
    }
    const logview::Selection all = {0, 0, shown, 10};
    logview::SelectionCopy copy(rows, session, all);
    while (copy.Step())
        continue;
    logview::Excerpt excerpt(rows, session, {}, 0, shown, logview::kMaxSelectionBytes);
    while (excerpt.Step())
        continue;
}

} // namespace

void RowFiles(std::string_view bytes)
{
    Input input(bytes);
    const unsigned seed = input.Byte();
    MemorySession session;
    std::string mainText;
    for (const char* const log : {"Main", "Run"})
    {
        const std::size_t records = input.Byte() % 32;
        session.files.SetContents(session.Path(std::string(log) + ".ROW"),
                                  std::string(input.Bytes(records * sizeof(CQmLogRow) + seed % 3)));
        const std::string text(input.Bytes(input.Byte()));
        session.files.SetContents(session.Path(std::string(log) + ".LOG"), text);
        CQmLogReader reader;
        reader.SetFilePath(log);
        ReadAll(reader, text, seed);
    }
    ShowAll(seed);
    for (const char* const log : {"Main", "Run"})
        QmLogReaderDefine(log).Close();
}

} // namespace fuzz
