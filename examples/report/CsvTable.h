// A CSV file as a table whose cells and rows are changed, with undo. No window system.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Keeps the bytes of each row and changes no others: what is saved differs from what was read in the edited
// fields alone. Fields without an edit keep their quotes and blanks, and rows keep their line ends, their
// number of fields and their encoding. Texts are bytes in the encoding of the file.
//
// Rows are numbered from 0 after the captions, and empty lines are rows. `place` says where in the owner's
// view rows come or go; the table only gives it back. Rows and columns have to exist.
class CsvTable
{
public:
    // Reads the bytes of a file. Throws std::runtime_error if they are UTF-16, or a row cannot be shown.
    explicit CsvTable(std::string_view bytes);

    // Returns the bytes to be saved. If a row was inserted after one without a line end, that one has got the
    // line end of the file.
    std::string Bytes() const;

    int RowCount() const { return static_cast<int>(m_rows.size()); }

    // Returns the number of fields in the longest row, captions included.
    int ColumnCount() const { return m_columnCount; }

    // Both return as many texts as there are columns: a missing field is an empty text.
    std::vector<std::string> Captions() const { return Texts(m_captions); }
    std::vector<std::string> Texts(int row) const { return Texts(Row(row)); }

    // Returns the row as it is saved.
    const std::string& Row(int row) const { return m_rows[static_cast<std::size_t>(row)]; }

    // What has happened to the table.
    enum class Kind
    {
        Text, // of one cell
        Insert,
        Delete
    };
    struct Change
    {
        Kind kind;
        std::vector<int> rows; // their numbers while they are in the table, in the order of the view
        int column;            // of the text
        int place;             // of the first row in the view
    };

    // Changes a cell. Returns nothing if it has this text already.
    std::optional<Change> SetText(int row, int column, std::string_view text);

    // Inserts a row of empty cells before `row`; the number of rows stands for the end.
    Change InsertRow(int row, int place);

    // Deletes rows, which may be in any order.
    Change DeleteRows(const std::vector<int>& rows, int place);

    // These take the last change back and make it again, as often as there is one: else they return nothing.
    bool CanUndo() const { return m_done > 0; }
    bool CanRedo() const { return m_done < m_steps.size(); }
    std::optional<Change> Undo();
    std::optional<Change> Redo();

    // Returns whether the table differs from what was read, or from what SetSaved was last called for.
    bool IsChanged() const { return m_saved != m_done; }
    void SetSaved() { m_saved = m_done; }

private:
    // A change, and the bytes that it has taken out of the table or will bring back: those of a row before or
    // after its edit, or of rows that are not in the table now.
    struct Step
    {
        Change change;
        std::vector<std::string> bytes;
    };

    std::vector<std::string> Texts(const std::string& row) const;
    Change Do(Step step);
    Change Apply(Step& step, Kind kind);
    void Put(const std::vector<int>& rows, std::vector<std::string>& bytes);
    void Take(const std::vector<int>& rows, std::vector<std::string>& bytes);

    char m_separator = ',';
    std::string m_lineEnd;  // of rows that are new
    std::string m_mark;     // before the captions: that of UTF-8, and empty lines
    std::string m_captions; // as all rows, with its line end
    int m_columnCount = 0;
    std::vector<std::string> m_rows;
    std::vector<Step> m_steps;
    std::size_t m_done = 0;  // how many of the steps; what follows has been undone
    std::size_t m_saved = 0; // the value of m_done that was saved; npos if no step leads back there
};

// Returns an order of the rows, such as a sorted one, as it is after a change: new rows come together at its
// place, others stay where they are.
std::vector<int> OrderAfter(const CsvTable::Change& change, std::vector<int> order);
