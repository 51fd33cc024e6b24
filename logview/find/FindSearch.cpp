#include "logview/find/FindSearch.h"

#include "zemacore/WideText.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace logview
{

namespace
{

constexpr std::uint32_t kBlockRows = 4096;
constexpr std::uint32_t kBlockBytes = 256 * 1024;
constexpr std::size_t kBlockMatches = 8192; // with more, a block ends: they are sorted in one go
constexpr std::size_t kContext = 16;        // bytes before a slice that an expression may look at
constexpr std::uint32_t kMostRows = std::numeric_limits<int>::max();

} // namespace

void FindSearch::Begin(std::unique_ptr<FindText> text, std::uint32_t number)
{
    m_text = std::move(text);
    m_number = number;
    Start();
}

void FindSearch::End()
{
    m_text.reset();
    m_matches.Clear();
    m_givenUp = 0;
    m_state = State::Off;
    ++m_changes;
}

void FindSearch::Start()
{
    m_matches.Clear();
    m_givenUp = 0;
    m_state = State::Searching;
    ++m_changes;

    // Rows that come after all that are there do not come before the beginning.
    std::uint64_t behind = 0;
    for (std::uint32_t file = 0; file < kFileCount; ++file)
    {
        LogEnd& end = m_ends[file];
        end = {};
        end.rows = static_cast<std::uint32_t>(std::min<unsigned long>(m_source.RowCount(file), kMostRows));
        if (end.rows > 0 && m_source.ReadRows(file, end.rows - 1, 1, &end.last) == 1)
            behind = std::max(behind, std::uint64_t{end.last.time} + 1);
        else
            end.rows = 0;
    }
    m_begin = static_cast<std::uint32_t>(std::min<std::uint64_t>(m_number, behind));

    for (std::uint32_t file = 0; file < kFileCount; ++file)
    {
        Walk& after = m_after[file] = {};
        Walk& before = m_before[file] = {};
        RecordPages pages(m_source, kLookRows);
        std::uint32_t row = 0;
        std::uint32_t number = 0;
        pages.FindFirst(file, m_begin, row, number);
        after.file = before.file = file;
        before.end = after.first = after.row = after.end = std::min(row, m_ends[file].rows);
        after.number = m_begin;
        before.most = m_begin > 0 ? m_begin - 1 : 0;
    }
}

// A log that lost its last row, or has another there, is not the one that was looked at.
bool FindSearch::IsCut(const std::uint32_t (&counts)[kFileCount])
{
    for (unsigned file = 0; file < kFileCount; ++file)
    {
        const LogEnd& end = m_ends[file];
        CQmLogRow last;
        if (end.rows > 0 &&
            (counts[file] < end.rows || m_source.ReadRows(file, end.rows - 1, 1, &last) == 0 ||
             std::memcmp(&last, &end.last, sizeof(last)) != 0))
            return true;
    }
    return false;
}

void FindSearch::TakeGrowth(const std::uint32_t (&counts)[kFileCount])
{
    for (unsigned file = 0; file < kFileCount; ++file)
    {
        LogEnd& end = m_ends[file];
        m_after[file].end = std::max(m_after[file].end, counts[file]);
        if (counts[file] > end.rows && m_source.ReadRows(file, counts[file] - 1, 1, &end.last) == 1)
            end.rows = counts[file];
        for (Walk* const walk : {&m_after[file], &m_before[file]})
            if (walk->hasOpenRow &&
                (walk->openCount != counts[file] || walk->openSize != m_source.TextSize(file)))
                GoBack(*walk);
    }
}

// Looks again at the rows whose text was not there.
void FindSearch::GoBack(Walk& walk)
{
    walk.hasOpenRow = false;
    if (walk.row < walk.openRow)
        return;
    walk.row = walk.openRow;
    walk.number = walk.openNumber;
    walk.records.clear();
    walk.record = 0;
    walk.isLoaded = false;
    m_matches.Remove(walk.file, walk.openRow);
    std::erase_if(walk.found, [&](const FoundMatch& match) { return match.row >= walk.openRow; });
    ++m_changes;
}

void FindSearch::Step(const std::function<bool()>& goesOn)
{
    if (m_state == State::Off)
        return;
    std::uint32_t counts[kFileCount];
    for (unsigned file = 0; file < kFileCount; ++file)
        counts[file] =
            static_cast<std::uint32_t>(std::min<unsigned long>(m_source.RowCount(file), kMostRows));
    if (IsCut(counts))
        Start();
    if (m_state == State::Full)
        return;
    TakeGrowth(counts);
    while (Walk* const walk = NextWalk())
    {
        Look(*walk);
        Tell(m_after, true);
        Tell(m_before, false);
        if (m_matches.IsFull() || !goesOn())
            break;
    }
    m_state = m_matches.IsFull() ? State::Full : NextWalk() ? State::Searching : State::Done;
}

std::uint64_t FindSearch::RowsDone() const
{
    std::uint64_t rows = 0;
    for (unsigned file = 0; file < kFileCount; ++file)
        rows += m_before[file].row + (m_after[file].row - m_after[file].first);
    return rows;
}

std::uint64_t FindSearch::RowsInAll() const
{
    std::uint64_t rows = 0;
    for (const Walk& walk : m_after)
        rows += walk.end;
    return rows;
}

FindSearch::Answer FindSearch::FindNext(std::uint64_t number, std::size_t& index) const
{
    index = m_matches.CountBefore(number);
    if (IsComplete())
    {
        index = index < m_matches.Count() ? index : 0;
        return m_matches.Count() > 0 ? Answer::Found : Answer::None;
    }
    const std::size_t before = m_matches.CountBefore(m_begin);
    if (index < (number < m_begin ? before : m_matches.Count()))
        return Answer::Found;
    const bool isAtEnd = EndOfTold(m_after) > kMaxNumber;
    index = 0;
    return number >= m_begin && isAtEnd && before > 0 ? Answer::Found : Answer::Wait;
}

FindSearch::Answer FindSearch::FindPrevious(std::uint64_t number, std::size_t& index) const
{
    index = m_matches.CountBefore(number);
    if (IsComplete())
    {
        index = (index > 0 ? index : m_matches.Count()) - 1;
        return m_matches.Count() > 0 ? Answer::Found : Answer::None;
    }
    if (number <= m_begin || number > EndOfTold(m_after) || index <= m_matches.CountBefore(m_begin))
        return Answer::Wait;
    --index;
    return Answer::Found;
}

// The log that is farthest back; those after the beginning first.
FindSearch::Walk* FindSearch::NextWalk()
{
    for (Walk(*const walks)[kFileCount] : {&m_after, &m_before})
    {
        Walk* next = nullptr;
        for (Walk& walk : *walks)
            if (!walk.IsDone() && (!next || walk.number < next->number))
                next = &walk;
        if (next)
            return next;
    }
    return nullptr;
}

void FindSearch::Look(Walk& walk)
{
    if (!walk.isLoaded && !Load(walk))
        walk.row = walk.end; // the rows have gone; the next step sees why
    else if (walk.count > 0)
        LookAtBlock(walk);
    else if (!LookAtSlice(walk))
        GoBehind(walk, 1);
}

// Reads the next rows, and the text of those that follow each other in it. False when there are none.
bool FindSearch::Load(Walk& walk)
{
    constexpr std::size_t kNeighbours = 3; // a row, the one that ends it, and one that tells whether it does
    if (walk.RecordsLeft() < kNeighbours)
    {
        walk.record = 0;
        walk.records.resize(std::min(walk.end - walk.row, kBlockRows) + kNeighbours - 1);
        const unsigned long read = m_source.ReadRows(
            walk.file, walk.row, static_cast<unsigned long>(walk.records.size()), walk.records.data());
        walk.records.resize(std::min<std::size_t>(read, walk.records.size()));
    }
    if (walk.RecordsLeft() == 0)
        return false;
    walk.isLoaded = true;
    walk.foundBefore = walk.found.size();
    walk.slice = 0;
    walk.isRowGivenUp = false;
    walk.number = std::max(walk.number, walk.records[walk.record].time);

    const CQmLogRow* const records = &walk.records[walk.record];
    const std::size_t rows = std::min<std::size_t>(walk.RecordsLeft() - 1, walk.end - walk.row);
    const std::uint32_t begin = records[0].offset;
    std::uint32_t count = 0;
    while (count < rows && records[count + 1].offset >= records[count].offset &&
           records[count + 1].offset - records[count].offset <= m_text->SliceBytes() &&
           records[count + 1].offset - begin <= kBlockBytes)
        ++count;
    walk.text.resize(records[count].offset - begin);
    if (!walk.text.empty())
        walk.text.resize(std::min<std::size_t>(m_source.ReadText(walk.file, begin,
                                                                 static_cast<unsigned long>(walk.text.size()),
                                                                 walk.text.data()),
                                               walk.text.size()));
    while (count > 0 && records[count].offset - begin > walk.text.size())
        --count; // its text is not there
    walk.text.resize(records[count].offset - begin);
    walk.at = 0;
    walk.count = count;
    if (!walk.text.empty())
        walk.hasOpenRow = false;
    walk.isUtf8 = m_text->NeedsKind() &&
                  ZEMA::GetTextKind(walk.text.data(), walk.text.size()) != ZEMA::TextKind::CodePage;
    return true;
}

// The next rows with a match in the block, or the rest of it.
void FindSearch::LookAtBlock(Walk& walk)
{
    const std::string_view text = walk.text;
    const CQmLogRow* const records = &walk.records[walk.record];
    const std::uint32_t begin = records[0].offset;
    constexpr int kTogether = 16; // rows that are verified without asking for the time
    for (int looked = 0; looked < kTogether; ++looked)
    {
        const std::size_t place =
            walk.at < text.size() ? m_text->FindFirst(text.substr(walk.at), walk.isUtf8) : FindText::kNowhere;
        if (place == FindText::kNowhere)
        {
            GoBehind(walk, walk.count);
            return;
        }
        const std::uint32_t offset = begin + static_cast<std::uint32_t>(walk.at + place);
        const CQmLogRow* const next =
            std::upper_bound(records, records + walk.count, offset,
                             [](std::uint32_t a, const CQmLogRow& b) { return a < b.offset; });
        const std::uint32_t row = static_cast<std::uint32_t>(next - records) - 1;
        const std::size_t lineBegin = records[row].offset - begin;
        walk.at = records[row + 1].offset - begin;
        m_stretches.clear();
        if (!m_text->FindAll(text.substr(lineBegin, walk.at - lineBegin), 0, m_stretches))
            ++m_givenUp;
        Keep(walk, walk.row + row, records[row].time, m_stretches.size());
        if (walk.found.size() >= walk.foundBefore + kBlockMatches)
        {
            GoBehind(walk, row + 1);
            return;
        }
    }
}

// A slice of the row; false if that was the last one.
bool FindSearch::LookAtSlice(Walk& walk)
{
    const CQmLogRow* const records = &walk.records[walk.record];
    const bool isLast = walk.RecordsLeft() < 2;
    const std::uint32_t offset = records[0].offset;
    const unsigned long size = m_source.TextSize(walk.file);
    const std::uint64_t end = isLast ? size : std::min<std::uint64_t>(records[1].offset, size);
    std::uint64_t length = LineLength(offset, end);
    if (walk.RecordsLeft() > 2 && records[2].offset < records[1].offset)
        length = std::min<std::uint64_t>(length, kBlockBytes);

    const std::uint64_t left = length - std::min(walk.slice, length);
    std::size_t context = static_cast<std::size_t>(std::min<std::uint64_t>(walk.slice, kContext));
    std::string& text = walk.text;
    text.resize(static_cast<std::size_t>(std::min<std::uint64_t>(left, m_text->SliceBytes())) + context);
    const unsigned long read =
        m_source.ReadText(walk.file, static_cast<unsigned long>(offset + walk.slice - context),
                          static_cast<unsigned long>(text.size()), text.data());
    bool isRowEnd = text.size() >= left + context || read < text.size();
    text.resize(std::min<std::size_t>(read, text.size()));

    std::string_view line = text;
    context = std::min(context, line.size());
    while (context > 0 && (static_cast<unsigned char>(line.front()) & 0xC0) == 0x80)
    {
        line.remove_prefix(1); // within a character
        --context;
    }
    bool isWhole = isLast ? false : records[1].offset <= size;
    if (isLast)
    {
        line = line.substr(0, context + LastLine(line.substr(context)).size());
        isWhole = line.size() > context && line.ends_with('\n');
        isRowEnd = isRowEnd || isWhole;
    }
    const std::size_t done = LookAtLine(walk, line, context, isRowEnd);
    walk.slice += done - context;
    if (!isRowEnd)
        return true;
    if (isWhole && length > 0)
        walk.hasOpenRow = false;
    else if (!isWhole && !walk.hasOpenRow)
        Open(walk, size);
    m_givenUp += walk.isRowGivenUp ? 1 : 0;
    return false;
}

// Looks at the part of a long row that `line` has after `context` bytes; answers how many bytes of it are
// done.
std::size_t FindSearch::LookAtLine(Walk& walk, std::string_view line, std::size_t context, bool isRowEnd)
{
    m_stretches.clear();
    std::size_t done = line.size();
    if (!isRowEnd)
    {
        line = line.substr(0, std::max(context, ZEMA::WholeCharacters(line.data(), line.size())));
        done = ZEMA::WholeCharacters(line.data(), line.size() - FindText::kOverlap);
    }
    if (line.size() > context && !m_text->FindAll(line, context, m_stretches))
        walk.isRowGivenUp = true;
    if (!isRowEnd) // what ends with the slice may only do so because the slice does
        std::erase_if(m_stretches, [=](const FoundStretch& match) {
            return match.begin >= done || match.end == line.size();
        });
    if (!m_stretches.empty())
        done = std::max(done, m_stretches.back().end);
    Keep(walk, walk.row, walk.records[walk.record].time, m_stretches.size());
    return done;
}

// The row's text is not there as a whole: a writer makes rows before their text.
void FindSearch::Open(Walk& walk, unsigned long size)
{
    walk.hasOpenRow = true;
    walk.openRow = walk.row;
    walk.openCount = m_ends[walk.file].rows;
    walk.openNumber = walk.number;
    walk.openSize = size;
}

void FindSearch::GoBehind(Walk& walk, std::uint32_t rows)
{
    walk.row += rows;
    walk.record += rows;
    walk.isLoaded = false;
    if (walk.record < walk.records.size())
        walk.number = std::max(walk.number, walk.records[walk.record].time);
}

void FindSearch::Keep(Walk& walk, std::uint32_t row, std::uint32_t number, std::size_t count)
{
    const std::uint32_t least = walk.found.empty() ? walk.number : walk.found.back().number;
    if (count > 0)
        walk.found.insert(walk.found.end(), std::min(count, FindMatches::kMost),
                          {std::min(std::max(number, least), walk.most), walk.file, row});
}

// Rows with less numbers have been looked at.
std::uint64_t FindSearch::EndOfTold(const Walk (&walks)[kFileCount])
{
    std::uint64_t end = std::numeric_limits<std::uint64_t>::max();
    for (const Walk& walk : walks)
        if (!walk.IsDone())
            end = std::min<std::uint64_t>(end, walk.number);
    return end;
}

// Tells the matches that no row can come before any more.
void FindSearch::Tell(Walk (&walks)[kFileCount], bool after)
{
    const std::uint64_t limit = EndOfTold(walks);
    m_told.clear();
    for (Walk& walk : walks)
    {
        const auto end = std::find_if(walk.found.begin(), walk.found.end(),
                                      [=](const FoundMatch& match) { return match.number >= limit; });
        m_told.insert(m_told.end(), walk.found.begin(), end);
        walk.found.erase(walk.found.begin(), end);
    }
    if (m_told.empty())
        return;
    std::stable_sort(m_told.begin(), m_told.end(), [](const FoundMatch& left, const FoundMatch& right) {
        return left.number < right.number;
    });
    if (after)
        m_matches.AddAfter(m_told);
    else
        m_matches.AddBefore(m_told);
    ++m_changes;
}

} // namespace logview
