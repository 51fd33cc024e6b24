// Displayed rows as text that one pastes into a mail.
#pragma once

#include "logview/SelectedRows.h"
#include "logview/TextPieces.h"
#include "zemacore/WideText.h"

#include <vector>

namespace logview
{

// Rows that have no view of their own.
class RowList final : public DisplayedRows
{
public:
    RowList(RowSource& source, std::vector<RowId> rows) : DisplayedRows(source), m_rows(std::move(rows)) {}

    int RowCount() const override { return static_cast<int>(m_rows.size()); }
    RowId Translate(std::int64_t row, int& depth) const override;
    using DisplayedRows::Translate;
    bool IsFoldable(const RowSurroundings&, bool&) const override { return false; }
    std::uint32_t CountFolded(int, const PlacedRow&) const override { return 0; }

private:
    std::vector<RowId> m_rows;
};

// Made row by row. First come the headers of the blocks that the first row lies in, the outermost first. Then
// each row is a line, which begins with its log and number, as in "  SQL     #18342  ", and goes on with the
// row's text, indented by its depth; "*" marks rows of other logs than the first row's. A folded row has a
// line after it that tells what it hides. Control characters are blanks, and lines end as the system's do.
class Excerpt
{
public:
    // The rows from `first` to `last`.
    Excerpt(RowSource& source, const DisplayedRows& rows, std::vector<RowId> headers, int first, int last,
            std::size_t maxCharacters);

    // Adds a row. False when there is no other one, or the next one would exceed `maxCharacters`.
    bool Step();

    bool IsTooLong() const { return m_isTooLong; }
    double Progress() const { return m_rows.Progress(); } // 0 to 1
    TextPieces<ZEMA::WideChar>& Characters() { return m_characters; }

private:
    void AddRow(const PlacedRow& row, std::string_view line);
    void AddFolded(const PlacedRow& row, std::uint32_t count);
    void AddLine(std::size_t indent, std::string_view text);

    const DisplayedRows& m_displayed;
    RowList m_list;
    SelectedRows m_headers;
    SelectedRows m_rows;
    std::size_t m_maxCharacters;
    std::uint32_t m_file;          // of the first row
    std::size_t m_numberWidth = 1; // of the first or the last number with its sign
    bool m_isTooLong = false;
    std::string m_head; // of a line, before its indent
    ZEMA::WideString m_wide;
    ZEMA::WideString m_line;
    TextPieces<ZEMA::WideChar> m_characters;
};

} // namespace logview
