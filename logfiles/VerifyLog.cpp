#include "logfiles/VerifyLog.h"

#include "logfiles/IndexEnd.h"

#include <algorithm>

namespace logfiles
{
namespace
{

constexpr std::uint64_t kNoOffset = 0xFFFFFFFFFFFFFFFF; // before the first byte

std::string Number(std::uint64_t value)
{
    return std::to_string(value);
}

} // namespace

void Findings::Add(QmLogFindingKind kind, const char* extension, std::uint64_t row, const std::string& reason)
{
    if (m_findings.size() == kLimit)
    {
        ++m_more;
        m_moreDamage = m_moreDamage || QmLogIsDamage(kind);
        return;
    }
    m_findings.push_back({kind, m_log + "." + extension, static_cast<unsigned long>(row), reason});
}

void Findings::AppendTo(std::vector<Finding>& all)
{
    std::stable_sort(m_findings.begin(), m_findings.end(),
                     [](const Finding& a, const Finding& b) { return a.row < b.row; });
    all.insert(all.end(), m_findings.begin(), m_findings.end());
    if (m_more > 0)
    {
        const bool damage = m_moreDamage || IsGivenUp();
        all.push_back({damage ? QmLogFindingKind::MoreDamage : QmLogFindingKind::MoreNotes, m_log + ".ROW",
                       QmLogFinding::kNoRow,
                       Number(m_more) + " more findings like these" +
                           (IsGivenUp() ? ", and the rest of the log was not checked" : "")});
    }
}

// The index is read twice, once from each end.
VerifyLog::VerifyLog(const std::string& folder, const std::string& name, ReadProgress& progress)
    : m_name(name), m_progress(progress), m_text(folder + name + ".LOG", &progress),
      m_rows(folder + name + ".ROW", &progress), m_findings(name)
{
    m_progress.Expect(m_text.Size() + 2 * m_rows.Size());
}

bool VerifyLog::ReadRow(std::uint64_t index, CQmLogRow& row)
{
    return ReadRecord(m_rows, index, row);
}

void VerifyLog::CheckValues(std::uint64_t index, const CQmLogRow& row)
{
    if (row.blockBegin > 1)
        m_findings.Add(QmLogFindingKind::BlockMarkInvalid, "ROW", index,
                       "the block mark is " + Number(row.blockBegin) + ", neither 0 nor 1");
    if (row.kind == kEnclosingKind)
        m_findings.Add(QmLogFindingKind::KindInvalid, "ROW", index,
                       "the kind is the reserved value 4294967295");
}

void VerifyLog::CheckReadable()
{
    const std::pair<const FileWindow&, const char*> files[] = {{m_text, "LOG"}, {m_rows, "ROW"}};
    for (const auto& [file, extension] : files)
    {
        if (file.GetState() == FileWindow::State::Unreadable)
            m_findings.Add(QmLogFindingKind::FileUnreadable, extension, QmLogFinding::kNoRow,
                           "the file cannot be opened or read");
    }
}

// Walks from the end: a row is live when it stands at a line and before the live row after it. Lines
// must each have their live row; rows that are not live must be explained.
void VerifyLog::CheckOffsets()
{
    if (!CheckPresence())
        return;
    std::uint64_t next = m_text.Size() + 1;
    std::uint64_t gapEnd = RowCount();
    for (std::uint64_t index = RowCount(); index-- > 0;)
    {
        CQmLogRow row;
        CQmLogRow before;
        if (!ReadRow(index, row) && index < RowCount())
            return;
        if (index >= RowCount()) // the next writer has cut what one left that was killed
        {
            gapEnd = index;
            continue;
        }
        if (row.offset >= next || !IsLineStart(row.offset))
            continue;
        // Where the row before stands at a line further on, it is this row that is out of place.
        if (index > 0 && ReadRow(index - 1, before) && before.offset > row.offset && before.offset < next &&
            IsLineStart(before.offset))
            continue;
        CheckGap(index + 1, gapEnd, row.offset, next);
        if (IsGivenUp())
            return;
        next = row.offset;
        gapEnd = index;
    }
    CheckGap(0, gapEnd, kNoOffset, next);
}

// True when there are both an index and a text to compare.
bool VerifyLog::CheckPresence()
{
    using State = FileWindow::State;
    if (m_text.GetState() == State::Unreadable || m_rows.GetState() == State::Unreadable)
        return false;
    if (m_text.GetState() == State::Missing)
    {
        if (m_rows.Size() > 0)
            m_findings.Add(QmLogFindingKind::IndexWithoutText, "LOG", QmLogFinding::kNoRow,
                           "the text is missing, but the index has " + Number(RowCount()) + " rows");
        return false;
    }
    if (m_rows.Size() == 0)
    {
        if (m_text.Size() > 0)
            m_findings.Add(QmLogFindingKind::TextWithoutIndex, "ROW", QmLogFinding::kNoRow,
                           "the index is missing or empty, but the text has " + Number(m_text.Size()) +
                               " bytes");
        return false;
    }
    return true;
}

// A text that begins with a line feed has no line at offset 0.
bool VerifyLog::IsLineStart(std::uint64_t offset)
{
    if (offset > m_text.Size())
        return false;
    const char* const byte = m_text.At(offset == 0 ? 0 : offset - 1);
    return offset == 0 ? !byte || *byte != '\n' : byte && *byte == '\n';
}

// The lines that begin between two offsets, both excluded.
std::uint64_t VerifyLog::CountLineStarts(std::uint64_t after, std::uint64_t before)
{
    std::uint64_t count = 0;
    std::uint64_t position = after;
    if (after == kNoOffset)
    {
        position = 0;
        if (before > 0 && m_text.Size() > 0 && IsLineStart(0))
            ++count;
    }
    // A line feed at p begins a line at p + 1.
    while (position + 1 < before)
    {
        const char* const bytes = m_text.At(position);
        if (!bytes)
            break;
        const std::uint64_t size = std::min(m_text.BytesFrom(position), before - 1 - position);
        count += static_cast<std::uint64_t>(std::count(bytes, bytes + size, '\n'));
        position += size;
    }
    return count;
}

// Judges the rows from `firstRow` to before `endRow`, which are not live, and the lines without a row
// between the live rows around them, at `after` and `before`.
void VerifyLog::CheckGap(std::uint64_t firstRow, std::uint64_t endRow, std::uint64_t after,
                         std::uint64_t before)
{
    const std::uint64_t lines = CountLineStarts(after, before);
    const std::uint64_t rows = endRow - firstRow;
    const bool atEnd = endRow == RowCount();

    if (atEnd && lines == 0)
        firstRow = SkipRowsWithLateText(firstRow, endRow);
    if (atEnd && lines == 0 && LieBehindText(firstRow, endRow) && !IsOneWrite(m_rows, firstRow, endRow))
        m_findings.Add(QmLogFindingKind::TextCut, "LOG", QmLogFinding::kNoRow,
                       "the text ends at byte " + Number(m_text.Size()) +
                           ", but the index goes on with row " + Number(firstRow) + " to row " +
                           Number(endRow - 1));
    else
    {
        for (std::uint64_t index = firstRow; index < endRow && !IsGivenUp(); ++index)
            ReportRow(index, endRow, lines > 0);
    }

    if (IsGivenUp())
        return;
    const bool cut = atEnd && m_rows.Size() % sizeof(CQmLogRow) != 0;
    if (lines > rows)
        m_findings.Add(cut ? QmLogFindingKind::IndexCut : QmLogFindingKind::LineWithoutRow, "ROW", endRow,
                       (cut ? "the record is cut short; lines of the text without a row: "
                            : "lines of the text without a row before this one: ") +
                           Number(lines - rows));
    else if (cut)
        m_findings.Add(QmLogFindingKind::RecordUnfinished, "ROW", endRow,
                       "the record is unfinished, and its line has not been written");
}

// The first of these rows, the last of the index, that still lies after the text: that of the others has
// come since the text was looked at, and is not checked.
std::uint64_t VerifyLog::SkipRowsWithLateText(std::uint64_t firstRow, std::uint64_t endRow)
{
    CQmLogRow row;
    const std::uint64_t size = firstRow < endRow ? m_text.SizeNow() : 0;
    while (firstRow < endRow && ReadRow(firstRow, row) && row.offset > m_text.Size() && row.offset <= size)
        ++firstRow;
    return firstRow;
}

bool VerifyLog::LieBehindText(std::uint64_t firstRow, std::uint64_t endRow)
{
    CQmLogRow row;
    for (std::uint64_t index = firstRow; index < endRow; ++index)
    {
        if (!ReadRow(index, row) || row.offset <= m_text.Size())
            return false;
    }
    return true;
}

// Reports a row that is not live. `displaced`: there is a line that this row may have belonged to.
void VerifyLog::ReportRow(std::uint64_t index, std::uint64_t liveRow, bool displaced)
{
    CQmLogRow row;
    CQmLogRow before;
    CQmLogRow live;
    if (!ReadRow(index, row))
        return;
    const bool descends = index > 0 && ReadRow(index - 1, before) && row.offset <= before.offset;
    const bool behindText = row.offset > m_text.Size();
    const bool atEnd = liveRow == RowCount();
    // An empty text first of all has a row; it has no line if the next text begins with a line feed.
    const bool isOfEmptyText = row.offset == 0 && (index == 0 || before.offset == 0) && !IsLineStart(0);

    std::string reason = "offset " + Number(row.offset);
    if (descends)
        reason += " is not above the " + Number(before.offset) + " of the row before";
    else if (behindText)
        reason += " lies behind the end of the text, which has " + Number(m_text.Size()) + " bytes";
    else
        reason += " is not just behind a line feed";

    if (!displaced && atEnd && behindText)
        m_findings.Add(QmLogFindingKind::RowBeforeText, "ROW", index, reason + ": its text has not come yet");
    else if (!displaced && (isOfEmptyText || (!atEnd && ReadRow(liveRow, live) && live.offset == row.offset)))
        m_findings.Add(QmLogFindingKind::RowWithoutText, "ROW", index, reason + ": its text never came");
    else
        m_findings.Add(descends ? QmLogFindingKind::OffsetNotAscending : QmLogFindingKind::OffsetNotAtLine,
                       "ROW", index, reason);
}

} // namespace logfiles
