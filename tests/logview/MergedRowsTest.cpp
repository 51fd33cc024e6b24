// All rows of five logs in the order of their numbers, compared with plain loops over random sessions.
#include "LogRows.h"
#include "logview/merge/StripState.h"
#include "tests/support/LongRun.h"

#include <gtest/gtest.h>

#include <random>

using namespace logview;

namespace
{

// Adds rows and blocks as processes do that share numbers and depth.
class SessionWriter
{
public:
    SessionWriter(LogRows& logs, unsigned seed) : m_logs(logs), m_random(seed) {}

    void Write(unsigned rows)
    {
        for (unsigned i = 0; i < rows; ++i)
        {
            if (m_depth > 0 && m_random() % 9 == 0)
                --m_depth;
            const bool begins = m_depth < 8 && m_random() % 8 == 0;
            m_depth += begins ? 1 : 0;
            if (begins || m_random() % 4 == 0)
                m_log = static_cast<unsigned>(m_random() % (m_random() % 3 == 0 ? 5 : 2));
            if (m_random() % 400 == 0)
                m_logs.time += static_cast<std::uint32_t>(m_random() % 300); // taken by one that was killed
            if (m_log == m_late.file || m_random() % 40 == 0)
                WriteLate();
            m_logs.Add(m_log, "x\n", static_cast<std::uint8_t>(m_depth), begins,
                       static_cast<QmLogBlockKind>(m_random() % 20 < 16 ? 0 : m_random() % 5));
            if (m_late.file == kFileCount && m_random() % 60 == 0)
                HoldLast();
        }
    }

    void WriteLate()
    {
        if (m_late.file < kFileCount)
            m_logs.rows[m_late.file].push_back(m_lateRow);
        m_late.file = kFileCount;
    }

private:
    // A process that has its number is slow to write.
    void HoldLast()
    {
        m_late.file = m_log;
        m_lateRow = m_logs.rows[m_log].back();
        m_logs.rows[m_log].pop_back();
    }

    RowId m_late = {kFileCount, 0};
    CQmLogRow m_lateRow;
    LogRows& m_logs;
    std::mt19937 m_random;
    int m_depth = 0;
    unsigned m_log = 0;
};

// What is to be shown, by sorting all rows and looking at each.
class PlainRows
{
public:
    struct Fold
    {
        RowId header;
        bool allLogs;
    };

    explicit PlainRows(const LogRows& logs)
    {
        for (std::uint32_t file = 0; file < kFileCount; ++file)
            for (std::uint32_t row = 0; row < logs.rows[file].size(); ++row)
                all.push_back({{file, row}, logs.rows[file][row], 0});
        std::sort(all.begin(), all.end(),
                  [](const PlacedRow& a, const PlacedRow& b) { return a.record.time < b.record.time; });
    }

    std::size_t IndexOf(RowId place) const
    {
        return static_cast<std::size_t>(
            std::find_if(all.begin(), all.end(), [&](const PlacedRow& row) { return row.place == place; }) -
            all.begin());
    }

    // The row that ends a header's block.
    std::size_t EndOf(std::size_t header) const
    {
        const PlacedRow& first = all[header];
        std::size_t at = header + 1;
        for (; at < all.size(); ++at)
        {
            const PlacedRow& row = all[at];
            if (row.place.file == first.place.file && row.record.indent < first.record.indent)
                break;
            if (row.record.blockBegin && row.record.indent > 0 && row.record.indent <= first.record.indent)
                break;
        }
        return at;
    }

    std::vector<PlacedRow> Shown(const RowChoice& choice, const std::optional<NumberRange>& range,
                                 const std::vector<Fold>& folds) const
    {
        std::vector<bool> hidden(all.size());
        for (const Fold& fold : folds)
        {
            const std::size_t header = IndexOf(fold.header);
            const std::size_t end = EndOf(header);
            for (std::size_t at = header + 1; at < end; ++at)
                hidden[at] = hidden[at] || fold.allLogs || all[at].place.file == fold.header.file;
        }
        std::vector<PlacedRow> shown;
        for (std::size_t at = 0; at < all.size(); ++at)
        {
            const PlacedRow& row = all[at];
            const bool inRange =
                !range || (row.record.time >= range->first && row.record.time <= range->last);
            if (inRange && !hidden[at] && (choice.logs >> row.place.file & 1) != 0 &&
                (choice.classes >> ClassOf(row.record) & 1) != 0)
                shown.push_back(row);
        }
        return shown;
    }

    // The headers of the blocks that are open at a row, as a stack has them.
    std::vector<RowId> PathOf(std::size_t index) const
    {
        std::vector<PlacedRow> open;
        for (std::size_t at = 0; at <= index; ++at)
        {
            const RowId place = all[at].place;
            const CQmLogRow record = all[at].record;
            std::erase_if(open, [&](const PlacedRow& header) {
                const bool own = header.place.file == place.file && record.indent < header.record.indent;
                return own ||
                       (record.blockBegin && record.indent > 0 && record.indent <= header.record.indent);
            });
            if (record.blockBegin && record.indent > 0)
                open.push_back(all[at]);
        }
        const std::uint32_t file = all[index].place.file;
        const auto isOwn = [&](const PlacedRow& header) { return header.place.file == file; };
        if (std::any_of(open.begin(), open.end(), isOwn))
            while (!isOwn(open.back()))
                open.pop_back();
        std::vector<RowId> path;
        for (const PlacedRow& header : open)
            path.push_back(header.place);
        return path;
    }

    std::vector<PlacedRow> all;
};

// One session, its merged rows, and random operations on both.
class Comparison
{
public:
    explicit Comparison(unsigned seed) : m_random(seed), m_writer(m_logs, seed), m_rows(m_logs, 32) {}

    void Run(unsigned steps)
    {
        m_writer.Write(50 + m_random() % 800);
        m_rows.Refresh();
        Extend(m_random() % 2 == 0 ? 100000 : m_random() % 500);
        for (unsigned i = 0; i < steps && !testing::Test::HasFailure(); ++i)
        {
            Change();
            Compare();
        }
    }

private:
    void Extend(std::uint64_t rows)
    {
        while (m_rows.Extend(rows) && rows > 10000)
        {
        }
    }

    void Change()
    {
        const std::uint32_t kinds = m_random() % 8;
        RowChange change;
        const int before = m_rows.RowCount();
        const int row = before > 0 ? static_cast<int>(m_random() % static_cast<unsigned>(before)) : 0;
        if (kinds < 3)
        {
            Extend(100000); // a fold reaches as far as it is known
            m_rows.SetFoldsAllLogs(m_random() % 2 == 0);
            int header = row;
            bool expanded = false;
            while (header < before && !m_rows.ReadExpanded(header, expanded))
                ++header;
            const RowId place = m_rows.Translate(header);
            if (header < before && expanded && m_rows.Fold(header, change))
                m_folds.push_back({place, m_rows.GetFoldsAllLogs()});
            else if (header < before && !expanded)
            {
                EXPECT_TRUE(m_rows.Unfold(header, change));
                std::erase_if(m_folds, [&](const auto& fold) { return fold.header == place; });
            }
            if (change.delta != 0)
                EXPECT_EQ(header + 1, change.row);
            EXPECT_EQ(m_rows.RowCount() - before, change.delta);
        }
        else if (kinds == 3)
        {
            RowChoice choice;
            choice.logs = m_random() % 2 == 0 ? choice.logs : m_random() & choice.logs;
            choice.classes = m_random() % 2 == 0 ? choice.classes : m_random() & choice.classes;
            Extend(100000); // classes are shown as far as they are counted
            m_rows.Choose(choice);
        }
        else if (kinds == 4)
        {
            const auto first = static_cast<std::uint32_t>(m_random() % (m_logs.time + 1));
            const auto last = first + static_cast<std::uint32_t>(m_random() % 600);
            m_rows.ShowOnly(m_random() % 2 == 0 ? std::optional<NumberRange>()
                                                : std::optional<NumberRange>({first, last}));
        }
        else if (kinds == 5)
        {
            m_writer.Write(m_random() % 300);
            m_rows.Refresh();
            if (m_rows.GetChoice().classes != RowChoice().classes || !m_folds.empty())
                Extend(100000);
        }
        else if (kinds == 6)
            Extend(m_random() % 500);
        else
            Reveal();
    }

    void Reveal()
    {
        const PlainRows plain(m_logs);
        const PlacedRow row = plain.all[m_random() % plain.all.size()];
        const int found = m_rows.Reveal(row.place);
        ASSERT_NE(DisplayedRows::kNoRow, found);
        EXPECT_EQ(row.place, m_rows.Translate(found));
        std::erase_if(m_folds, [&](const PlainRows::Fold& fold) {
            const std::size_t header = plain.IndexOf(fold.header);
            const std::size_t at = plain.IndexOf(row.place);
            const std::size_t end = plain.EndOf(header);
            return at > header && at < end && (fold.allLogs || fold.header.file == row.place.file);
        });
    }

    void Compare()
    {
        const PlainRows plain(m_logs);
        const std::vector<PlacedRow> shown = plain.Shown(m_rows.GetChoice(), m_rows.GetRange(), m_folds);
        ASSERT_EQ(static_cast<int>(shown.size()), m_rows.RowCount());
        const bool isWhole = m_random() % 4 == 0;
        for (std::size_t i = 0; i < shown.size(); i += isWhole ? 1 : 1 + m_random() % 40)
            ASSERT_EQ(shown[i].place, m_rows.Translate(static_cast<int>(i))) << i;
        CompareErrorParts(plain);
        for (int i = 0; i < 8; ++i)
            CompareRow(plain, shown, m_random() % plain.all.size());
    }

    // By number, as the strip beside the scroll bar shows them.
    void CompareErrorParts(const PlainRows& plain)
    {
        const NumberRange numbers = m_rows.Numbers();
        EXPECT_EQ(plain.all.front().record.time, numbers.first);
        EXPECT_EQ(plain.all.back().record.time, numbers.last);
        if (!m_rows.Index().IsComplete())
            return;
        StripState strip;
        strip.numbers = numbers;
        strip.height = 40 + static_cast<int>(m_random() % 400);
        std::vector<std::uint8_t> logs(static_cast<std::size_t>(strip.height));
        for (const PlacedRow& row : plain.all)
            if (ClassOf(row.record) == kErrorHeader)
                logs[static_cast<std::size_t>(strip.RowOf(row.record.time))] |=
                    static_cast<std::uint8_t>(1u << row.place.file);
        EXPECT_EQ(logs, m_rows.FindErrorParts(numbers, logs.size()));

        const int row = static_cast<int>(m_random() % static_cast<unsigned>(strip.height));
        const std::uint32_t number = strip.NumberAt(row);
        EXPECT_LE(row, strip.RowOf(number));
        if (number > numbers.first)
            EXPECT_GT(row, strip.RowOf(number - 1)) << "the first number of the row";
        const auto error = std::find_if(plain.all.begin(), plain.all.end(), [&](const PlacedRow& each) {
            return each.record.time >= number && ClassOf(each.record) == kErrorHeader;
        });
        const std::optional<PlacedRow> found = m_rows.FindErrorFrom(number);
        ASSERT_EQ(error != plain.all.end(), found.has_value());
        if (found)
            EXPECT_EQ(error->place, found->place);
    }

    void CompareRow(const PlainRows& plain, const std::vector<PlacedRow>& shown, std::size_t index)
    {
        const PlacedRow& row = plain.all[index];
        const auto numbered = [](const PlacedRow& a, std::uint32_t number) { return a.record.time < number; };
        const auto at = std::lower_bound(shown.begin(), shown.end(), row.record.time, numbered);
        const bool isShown = at != shown.end() && at->place == row.place;
        EXPECT_EQ(isShown, m_rows.IsDisplayed(row.place));
        EXPECT_EQ(at - shown.begin() - (isShown ? 0 : 1), m_rows.FindRow(row.place));
        EXPECT_EQ(at - shown.begin(), m_rows.FindNumber(row.record.time));

        const bool isIndexed = m_rows.Index().IsComplete();
        if (!isIndexed)
            return;
        EXPECT_EQ(plain.PathOf(index), m_rows.FindPath(row.place));
        if (row.record.blockBegin && row.record.indent > 0)
        {
            const std::size_t end = plain.EndOf(index);
            const NumberRange block = m_rows.FindBlock(row.place);
            EXPECT_EQ(row.record.time, block.first);
            EXPECT_EQ(end < plain.all.size() ? plain.all[end].record.time - 1 : 0xFFFFFFFF, block.last);
        }
        const auto isError = [&](const PlacedRow& each) {
            return (m_rows.GetChoice().logs >> each.place.file & 1) != 0 && each.record.kind == kErrorKind &&
                   each.record.blockBegin != 0;
        };
        const auto here = plain.all.begin() + static_cast<std::ptrdiff_t>(index);
        const auto next = std::find_if(here + 1, plain.all.end(), isError);
        const auto previous = std::find_if(std::make_reverse_iterator(here), plain.all.rend(), isError);
        EXPECT_EQ(next != plain.all.end() ? std::optional(next->place) : std::nullopt,
                  m_rows.FindError(row.place, true, m_rows.GetChoice().logs));
        EXPECT_EQ(previous != plain.all.rend() ? std::optional(previous->place) : std::nullopt,
                  m_rows.FindError(row.place, false, m_rows.GetChoice().logs));

        const auto last = row.record.time + static_cast<std::uint32_t>(m_random() % 800);
        const auto errors = std::count_if(here, plain.all.end(), [&](const PlacedRow& each) {
            return each.record.time <= last && each.record.kind == kErrorKind && each.record.blockBegin != 0;
        });
        EXPECT_EQ(errors, m_rows.CountErrors({row.record.time, last}));
    }

    std::mt19937 m_random;
    LogRows m_logs;
    SessionWriter m_writer;
    MergedRows m_rows;
    std::vector<PlainRows::Fold> m_folds;
};

} // namespace

// Whatever lies in the padding, and wherever a greater number comes.
TEST(RowTally, CountsAsAPlainLoopDoes)
{
    std::mt19937 random(1);
    for (int turn = 0; turn < 20'000; ++turn)
    {
        std::vector<CQmLogRow> rows(random() % 12);
        const bool isShallow = random() % 2 == 0;
        const std::uint64_t from = std::array{0u, 0x7FFFFFC0u, 0xFFFFFF9Du}[random() % 3];
        const std::uint64_t number = from + random() % 100;
        for (CQmLogRow& row : rows)
        {
            for (std::uint8_t* const byte : {row.padding, row.morePadding})
                std::generate_n(byte, 3, std::ref(random));
            const unsigned depth = static_cast<unsigned>(random() % 3);
            row.indent = static_cast<std::uint8_t>(isShallow ? depth : 255 - depth);
            row.kind = static_cast<QmLogBlockKind>(random() % 8 == 0 ? random() : random() % 4);
            row.blockBegin = static_cast<std::uint8_t>(random() % 2 == 0 ? 0 : random());
            row.time =
                static_cast<std::uint32_t>(from + random() % (random() % 2 == 0 ? number - from + 1 : 99));
        }
        RowTally wanted;
        std::size_t below = 0;
        for (; below < rows.size() && rows[below].time < number; ++below)
        {
            const CQmLogRow& row = rows[below];
            ++wanted.counts[ClassOf(row)];
            wanted.lowest = std::min(wanted.lowest, row.indent);
            if (row.blockBegin != 0 && row.indent > 0)
                wanted.lowestHeader = std::min(wanted.lowestHeader, row.indent);
        }
        RowTally tally;
        EXPECT_EQ(rows.data() + below, tally.AddBelow(rows.data(), rows.data() + rows.size(), number));
        ASSERT_TRUE(std::equal(std::begin(wanted.counts), std::end(wanted.counts), tally.counts)) << turn;
        ASSERT_EQ(wanted.lowest, tally.lowest) << turn;
        ASSERT_EQ(wanted.lowestHeader, tally.lowestHeader) << turn;
    }
}

TEST(MergedRowsTest, ShowWhatPlainLoopsOverAllRowsShow)
{
    const unsigned first = FirstSeed();
    for (unsigned seed = first; seed < first + Rounds(25u, 5000u) && !HasFailure(); ++seed)
    {
        SCOPED_TRACE(SeedText(seed));
        Comparison(seed).Run(16);
    }
}

// Whatever numbers say, rows of a log come in their order and each once; one number alone displaces only its
// own row.
TEST(MergedRowsTest, ShowEveryRowOnceOfDamagedLogs)
{
    enum class Damage
    {
        OneNumber,
        SomeNumbers,
        AllTheSame,
        Backwards
    };
    for (const Damage damage :
         {Damage::OneNumber, Damage::SomeNumbers, Damage::AllTheSame, Damage::Backwards})
    {
        SCOPED_TRACE(static_cast<int>(damage));
        LogRows logs;
        SessionWriter(logs, 7).Write(12000);
        const PlainRows before(logs);
        std::mt19937 random(3);
        std::vector<CQmLogRow>& main = logs.rows[0];
        if (damage == Damage::OneNumber)
            main[2000].time = 0xFFFFFFFF;
        for (std::size_t i = 0; i < main.size() && damage == Damage::SomeNumbers; i += random() % 100)
            main[i].time = static_cast<std::uint32_t>(random());
        for (CQmLogRow& row : main)
            row.time = damage == Damage::AllTheSame ? 5 : row.time;
        for (CQmLogRow& row : main)
            row.time = damage == Damage::Backwards ? 100000 - row.time : row.time;

        MergedRows rows(logs);
        rows.Refresh();
        while (rows.Extend(1000))
            rows.Refresh();
        ASSERT_EQ(static_cast<int>(before.all.size()), rows.RowCount());
        std::uint32_t next[kFileCount] = {};
        for (int i = 0; i < rows.RowCount(); ++i)
        {
            const RowId place = rows.Translate(i);
            ASSERT_EQ(next[place.file]++, place.row) << i;
            if (damage == Damage::OneNumber)
                ASSERT_EQ(before.all[static_cast<std::size_t>(i)].place, place) << i;
            if (i % 500 == 0)
                ASSERT_EQ(i, rows.FindRow(place));
        }
    }
}

TEST(MergedRowsTest, BeginAgainWhereRowsHaveGone)
{
    LogRows logs;
    SessionWriter(logs, 5).Write(4000);
    MergedRows rows(logs);
    rows.Refresh();
    rows.Extend(100000);
    int header = 1000;
    bool expanded = false;
    while (!rows.ReadExpanded(header, expanded))
        ++header;
    const RowId folded = rows.Translate(header);
    RowChange change;
    ASSERT_TRUE(rows.Fold(header, change));

    logs.rows[folded.file].resize(folded.row + 1); // the header stays
    rows.Refresh();
    rows.Extend(100000);
    EXPECT_EQ(folded, rows.Translate(rows.FindRow(folded)));
    EXPECT_EQ(static_cast<int>(PlainRows(logs).all.size()), rows.RowCount());
    logs.rows[folded.file][folded.row].time += 1; // another session's
    rows.Refresh();
    rows.Extend(100000);
    EXPECT_FALSE(rows.Unfold(rows.FindRow(folded), change));
}

// Any place is found with few reads, whether the index is there yet or not.
TEST(MergedRowsTest, FindPlacesWithFewReads)
{
    LogRows logs;
    SessionWriter(logs, 9).Write(200000);
    const PlainRows plain(logs);
    MergedRows rows(logs);
    rows.Refresh();
    for (const unsigned limit : {400u, 10u})
    {
        for (int row = 0; row < rows.RowCount(); row += 9973)
        {
            logs.recordReads = 0;
            EXPECT_EQ(plain.all[static_cast<std::size_t>(row)].place, rows.Translate(row));
            EXPECT_GE(limit, logs.recordReads) << row;
        }
        rows.Extend(1000000);
    }
    EXPECT_GE(8 * rows.Index().Points().back().Rows() / 64,
              rows.Index().Points().size() * sizeof(MergePoint));
}
