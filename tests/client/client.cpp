// A customer's program: writes a session, reads it back both ways, and has it verified.
// Its log folder is QM_LOG_FOLDER, which must be fresh; a mismatch ends it with 1.
#include "QmLogOutputFile.h"
#include "QmLogReader.h"
#include "QmLogVerify.h"
#include "QmLogWriter.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace
{

struct ExpectedRow
{
    std::string text;
    unsigned indent;
    QmLogBlockKind kind;
    bool begin;
};

const ExpectedRow kExpected[] = {
    {"Session 7 of night run\n", 0, kPlainKind, true},
    {"Load job list\n", 1, kDetailKind, true},
    {"job 1: 25 %\n", 1, kDetailKind, false},
    {"job 2: 50 %\n", 1, kDetailKind, false},
    {"Job list is damaged\n", 2, kErrorKind, true},
    {"line 3\n", 2, kErrorKind, false},
    {"Session ends", 0, kPlainKind, true}, // the outer level ends its first line only here
};
constexpr unsigned long kRows = sizeof(kExpected) / sizeof(kExpected[0]);

int g_mismatches = 0;

void Check(bool same, const std::string& what)
{
    if (same)
        return;
    std::printf("mismatch: %s\n", what.c_str());
    ++g_mismatches;
}

// Taken by reference, a constant of a class must be in its DLL.
void CheckConstants()
{
    Check(std::max(1, CQmLogWriter::kMaxDepth) == 254, "blocks that may be open");
    Check(std::max(1u, QmLogOutputFile::kMaxFormatted) == 4095, "characters that may be formatted");
    Check(std::min(ZEMA::String::npos, ~std::size_t{0}) == ZEMA::String::npos, "no position in a string");
}

void WriteSession(CQmLogWriter& log)
{
    Check(log.WriteFormat("Session %d of %s", 7, "night run"), "the first line is written");
    {
        QmLogBlock block(log, kDetailKind, "Load job list");
        for (int job = 1; job <= 2; ++job)
            Check(log.WriteFormat("\njob %d: %d %%", job, job * 25), "a job is written");
        QmLogBlock error(log, kErrorKind, "Job list is damaged");
        Check(log.Write("\nline 3"), "the reason is written");
    }
    Check(log.Write("Session ends"), "the last line is written");
}

void CheckRow(const ExpectedRow& expected, const std::string& text, const CQmLogRow& row)
{
    std::printf("%3u %*s%s", unsigned{row.time}, static_cast<int>(row.indent) * 2, "", text.c_str());
    Check(text == expected.text, "text \"" + text + "\", expected \"" + expected.text + "\"");
    Check(row.indent == expected.indent, "depth of " + expected.text);
    Check(row.kind == expected.kind, "kind of " + expected.text);
    Check(row.blockBegin == (expected.begin ? 1 : 0), "block mark of " + expected.text);
}

void CheckRowsInOrder(CQmLogReader& log)
{
    Check(log.GetRowCount() == kRows, "rows: " + std::to_string(log.GetRowCount()));
    for (unsigned long index = 0; index < kRows; ++index)
    {
        const char* text = nullptr;
        unsigned long length = 0;
        CQmLogRow row;
        if (log.Read(index, text, length, row))
            CheckRow(kExpected[index], std::string(text, length), row);
        else
            Check(false, "row " + std::to_string(index) + " cannot be read");
    }
    std::printf("\n");
}

void CheckRowsByNumber(CQmLogReader& log)
{
    for (unsigned long index = 0; index < kRows; ++index)
    {
        CQmLogRow row;
        unsigned long time = 0;
        unsigned long found = kRows;
        Check(log.ReadStyle(index, row) && log.Find(row.time, true, time, found) && found == index &&
                  time == row.time,
              "row " + std::to_string(index) + " found by its number");
    }
}

void CheckVerification(const char* folder)
{
    struct : QmLogVerifyListener
    {
        void OnFinding(const QmLogFinding& finding) override
        {
            Check(false, std::string(finding.file) + ": " + finding.reason);
        }
    } listener;
    const char* const logs[] = {"Main"};
    QmLogVerify(folder, logs, 1, listener);
}

} // namespace

int main()
{
    const char* folder = std::getenv("QM_LOG_FOLDER");
    if (folder == nullptr)
    {
        std::printf("QM_LOG_FOLDER is not set\n");
        return 1;
    }

    CheckConstants();
    WriteSession(QmLogWriterDefine("Main"));
    Check(QmLogWriterCloseAll(), "the writers are closed");
    CQmLogReader& log = QmLogReaderDefine("Main");
    CheckRowsInOrder(log);
    CheckRowsByNumber(log);
    CheckVerification(folder);

    std::printf("%lu rows, %d mismatches\n", log.GetRowCount(), g_mismatches);
    return g_mismatches == 0 ? 0 : 1;
}
