// One log under verification: its index against its text, and its rows' own values.
#pragma once

#include "QmLogRow.h"
#include "QmLogVerify.h"
#include "logfiles/FileWindow.h"

#include <string>
#include <vector>

namespace logfiles
{

// What QmLogFinding tells, kept.
struct Finding
{
    QmLogFindingKind kind;
    std::string file;
    unsigned long row;
    std::string reason;
};

// The findings of one log, in the order in which they came up; beyond a limit only their number is kept, and
// beyond another the log is given up: each of its rows would be one more.
class Findings
{
public:
    explicit Findings(const std::string& log) : m_log(log) {}

    // `extension` is "LOG" or "ROW".
    void Add(QmLogFindingKind kind, const char* extension, std::uint64_t row, const std::string& reason);

    bool IsGivenUp() const { return m_more >= kHopeless; }

    // Appends the findings to `all` in ascending row order.
    void AppendTo(std::vector<Finding>& all);

private:
    static constexpr std::size_t kLimit = 1000;
    static constexpr unsigned long kHopeless = 100000;

    std::string m_log;
    std::vector<Finding> m_findings;
    unsigned long m_more = 0;
    bool m_moreDamage = false;
};

class VerifyLog
{
public:
    // Both files as they are now: the text first, because rows go out before their text.
    VerifyLog(const std::string& folder, const std::string& name, ReadProgress& progress);

    // Compares the index with the text, walking through both from the end.
    void CheckOffsets();

    // Row records, with the values that are wrong by themselves reported.
    std::uint64_t RowCount() const { return m_rows.Size() / sizeof(CQmLogRow); }
    bool ReadRow(std::uint64_t index, CQmLogRow& row);
    void CheckValues(std::uint64_t index, const CQmLogRow& row);

    // True when nothing further is to be looked at, and the log may be checked in part.
    bool IsGivenUp() const { return m_findings.IsGivenUp() || m_progress.IsStopped(); }

    Findings& GetFindings() { return m_findings; }
    std::string RowFile() const { return m_name + ".ROW"; }

    // Reports a file that could not be read to its end.
    void CheckReadable();

private:
    bool CheckPresence();
    bool IsLineStart(std::uint64_t offset);
    std::uint64_t CountLineStarts(std::uint64_t after, std::uint64_t before);
    void CheckGap(std::uint64_t firstRow, std::uint64_t endRow, std::uint64_t after, std::uint64_t before);
    std::uint64_t SkipRowsWithLateText(std::uint64_t firstRow, std::uint64_t endRow);
    bool LieBehindText(std::uint64_t firstRow, std::uint64_t endRow);
    void ReportRow(std::uint64_t index, std::uint64_t liveRow, bool displaced);

    std::string m_name;
    ReadProgress& m_progress;
    FileWindow m_text;
    FileWindow m_rows;
    Findings m_findings;
};

} // namespace logfiles
