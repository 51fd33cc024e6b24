#include "QmLogC.h"
#include "tests/fuzz/Fuzz.h"
#include "tests/support/MemorySession.h"
#include "tests/support/Verify.h"

namespace fuzz
{

// The log's text is what was written, each of its lines has a row, and verification finds nothing.
void CFunctions(std::string_view bytes)
{
    Input input(bytes);
    MemorySession session;
    QmLogCWriter* const log = QmLogCWriterDefine("C", QMLOG_C_ENDED);
    std::string written;
    unsigned depth = 0;
    while (!input.IsEmpty())
    {
        const unsigned step = input.Byte();
        const std::string text(input.Bytes(input.Byte() % 40));
        const std::string before = session.Text("C");
        switch (step % 6)
        {
        case 0:
        case 1: {
            const bool isDone = QmLogCWrite(log, text.data(), text.size()) != 0;
            Require(isDone && session.Text("C").ends_with(text), "a text is appended as it is");
            break;
        }
        case 2:
            QmLogCWriteLine(log, text.data(), text.size());
            break;
        case 3:
            depth += QmLogCBlockBegin(log, step, text.data(), text.size()) != 0 ? 1 : 0;
            break;
        case 4:
            QmLogCBlockEnd(log);
            depth -= depth > 0 ? 1 : 0;
            break;
        default:
            Require(QmLogCWriterCloseAll() != 0, "all is closed");
        }
        Require(session.Text("C").starts_with(before), "nothing is changed that was written");
    }
    for (; depth > 0; --depth)
        QmLogCBlockEnd(log);
    QmLogCWriterCloseAll();
    Require(QmLogCWriterLostRows(log) == 0, "no row is lost");
    for (const Finding& finding : FindingsOf("C:\\Logs", {"C"}))
        Require(!QmLogIsDamage(finding.kind), finding.reason.c_str()); // what is written is sound

    QmLogCReader* const reader = QmLogCReaderOpen("C", QMLOG_C_ENDED);
    const unsigned count = QmLogCReaderCount(reader);
    unsigned last = 0;
    for (unsigned index = 0; index < count; ++index)
    {
        char line[4096];
        std::size_t length = 0;
        QmLogCRow row = {};
        Require(QmLogCReaderRead(reader, index, line, sizeof(line), &length, &row) != 0, "a row can be read");
        written.append(line, length);
        Require(row.number > last, "numbers grow");
        last = row.number;
    }
    const std::string text = session.Text("C");
    Require(count == 0 || text.ends_with(written), "rows together are the text");
    Require(text.size() - written.size() <= 1, "no line is without a row but the one before the first");
    QmLogCReaderClose(reader);
    QmLogCWriterClear(log);
}

} // namespace fuzz
