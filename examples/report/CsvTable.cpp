#include "CsvTable.h"

#include "../common/CsvText.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>
#include <utility>

namespace
{

constexpr std::size_t npos = std::string::npos;
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr int kMostColumns = 1000; // more than that is no table

// The places of `rows` from the lowest row to the highest.
std::vector<std::size_t> InOrder(const std::vector<int>& rows)
{
    std::vector<std::size_t> order(rows.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return rows[a] < rows[b]; });
    return order;
}

} // namespace

CsvTable::CsvTable(std::string_view bytes)
{
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF"))
        throw std::runtime_error("UTF-16 cannot be read: save it as UTF-8");
    const std::size_t begin = bytes.find_first_not_of("\r\n", bytes.starts_with(kUtf8Mark) ? 3 : 0);
    if (begin == npos)
        throw std::runtime_error("there are no captions");
    m_mark = bytes.substr(0, begin);
    m_separator = csv::GuessSeparator(bytes.substr(begin));
    for (std::size_t at = begin; at < bytes.size();)
    {
        const auto place = [&] { return "row " + std::to_string(m_rows.size() + !m_captions.empty()); };
        const std::size_t length = csv::RowLength(bytes.substr(at), m_separator);
        if (length == npos)
            throw std::runtime_error("a quote is not closed: " + place());
        const std::string_view row = bytes.substr(at, length);
        const auto fields = static_cast<int>(csv::SplitFields(row, m_separator).size());
        if (fields > kMostColumns)
            throw std::runtime_error("too long: " + place());
        m_columnCount = std::max(m_columnCount, fields);
        (m_captions.empty() ? m_captions : m_rows.emplace_back()) = row;
        at += length;
    }
    m_lineEnd = csv::LineEnd(m_captions);
    if (m_lineEnd.empty())
        m_lineEnd = "\r\n";
}

std::string CsvTable::Bytes() const
{
    std::string bytes = m_mark + m_captions;
    bytes.reserve(
        std::accumulate(m_rows.begin(), m_rows.end(), bytes.size() + 2 * m_lineEnd.size(),
                        [](std::size_t size, const std::string& row) { return size + row.size(); }));
    bool isEnded = !csv::LineEnd(m_captions).empty();
    for (const std::string& row : m_rows)
    {
        if (!isEnded)
            bytes += m_lineEnd;
        bytes += row;
        isEnded = !csv::LineEnd(row).empty();
    }
    return bytes;
}

std::vector<std::string> CsvTable::Texts(const std::string& row) const
{
    std::vector<std::string> texts;
    for (const std::string_view field : csv::SplitFields(row, m_separator))
        texts.push_back(csv::FieldText(field));
    texts.resize(static_cast<std::size_t>(m_columnCount));
    return texts;
}

std::optional<CsvTable::Change> CsvTable::SetText(int row, int column, std::string_view text)
{
    std::string bytes = Row(row);
    const std::vector<std::string_view> fields = csv::SplitFields(bytes, m_separator);
    const auto place = static_cast<std::size_t>(column);
    const bool isThere = place < fields.size();
    if (text == (isThere ? csv::FieldText(fields[place]) : ""))
        return {};
    const std::string_view old = isThere ? fields[place] : fields.back().substr(fields.back().size());
    const std::string missing(isThere ? 0 : place + 1 - fields.size(), m_separator);
    bytes.replace(static_cast<std::size_t>(old.data() - bytes.data()), old.size(),
                  missing + csv::MakeField(text, m_separator));
    if (bytes.empty())
        bytes = m_lineEnd; // or it would be no row
    return Do({{Kind::Text, {row}, column, 0}, {bytes}});
}

CsvTable::Change CsvTable::InsertRow(int row, int place)
{
    const std::size_t captions = csv::SplitFields(m_captions, m_separator).size();
    const std::string& last = m_rows.empty() ? m_captions : m_rows.back();
    const bool isEnded = row < RowCount() || !csv::LineEnd(last).empty(); // else it does without, too
    std::string bytes(captions - 1, m_separator);
    if (isEnded || bytes.empty())
        bytes += m_lineEnd;
    return Do({{Kind::Insert, {row}, -1, place}, {bytes}});
}

CsvTable::Change CsvTable::DeleteRows(const std::vector<int>& rows, int place)
{
    return Do({{Kind::Delete, rows, -1, place}, {}});
}

std::optional<CsvTable::Change> CsvTable::Undo()
{
    if (!CanUndo())
        return {};
    Step& step = m_steps[--m_done];
    const Kind kind = step.change.kind;
    return Apply(step, kind == Kind::Insert   ? Kind::Delete
                       : kind == Kind::Delete ? Kind::Insert
                                              : Kind::Text);
}

std::optional<CsvTable::Change> CsvTable::Redo()
{
    if (!CanRedo())
        return {};
    Step& step = m_steps[m_done++];
    return Apply(step, step.change.kind);
}

CsvTable::Change CsvTable::Do(Step step)
{
    m_steps.resize(m_done);
    if (m_saved > m_done)
        m_saved = npos;
    m_steps.push_back(std::move(step));
    return *Redo();
}

CsvTable::Change CsvTable::Apply(Step& step, Kind kind)
{
    Change change = step.change;
    change.kind = kind;
    if (kind == Kind::Insert)
        Put(change.rows, step.bytes);
    else if (kind == Kind::Delete)
        Take(change.rows, step.bytes);
    else
        std::swap(m_rows[static_cast<std::size_t>(change.rows.front())], step.bytes.front());
    return change;
}

void CsvTable::Put(const std::vector<int>& rows, std::vector<std::string>& bytes)
{
    std::vector<std::string> merged;
    merged.reserve(m_rows.size() + rows.size());
    auto next = m_rows.begin();
    for (const std::size_t i : InOrder(rows))
    {
        const auto last = next + (rows[i] - static_cast<std::ptrdiff_t>(merged.size()));
        merged.insert(merged.end(), std::move_iterator(next), std::move_iterator(last));
        next = last;
        merged.push_back(std::move(bytes[i]));
    }
    merged.insert(merged.end(), std::move_iterator(next), std::move_iterator(m_rows.end()));
    m_rows = std::move(merged);
    bytes.clear();
}

void CsvTable::Take(const std::vector<int>& rows, std::vector<std::string>& bytes)
{
    bytes.resize(rows.size());
    std::vector<char> isTaken(m_rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i)
    {
        const auto row = static_cast<std::size_t>(rows[i]);
        bytes[i] = std::exchange(m_rows[row], {});
        isTaken[row] = true;
    }
    std::size_t kept = 0;
    for (std::size_t row = 0; row < m_rows.size(); ++row)
        if (!isTaken[row])
            std::swap(m_rows[kept++], m_rows[row]);
    m_rows.resize(kept);
}

std::vector<int> OrderAfter(const CsvTable::Change& change, std::vector<int> order)
{
    std::vector<int> rows = change.rows;
    std::sort(rows.begin(), rows.end());
    const auto isChanged = [&](int row) { return std::binary_search(rows.begin(), rows.end(), row); };
    if (change.kind == CsvTable::Kind::Delete)
    {
        std::erase_if(order, isChanged);
        for (int& row : order)
            row -= static_cast<int>(std::lower_bound(rows.begin(), rows.end(), row) - rows.begin());
    }
    else if (change.kind == CsvTable::Kind::Insert)
    {
        // The new number of each old row: those that are none of the new ones, one after the other.
        std::vector<int> numbers(order.size());
        int number = 0;
        for (int& each : numbers)
        {
            while (isChanged(number))
                ++number;
            each = number++;
        }
        for (int& row : order)
            row = numbers[static_cast<std::size_t>(row)];
        const auto place = std::clamp<std::ptrdiff_t>(change.place, 0, std::ssize(order));
        order.insert(order.begin() + place, change.rows.begin(), change.rows.end());
    }
    return order;
}
