// A table in a report control: items are its rows, subitems its columns.
#pragma once

#include "Contents.h"
#include "CsvTable.h"
#include "TextCoding.h"

#include <memory>
#include <string>

// Changes the table and has the control show what has changed, focused and selected. The order of rows stays
// as it is until the user sorts again.
class TableView
{
public:
    // Both outlive this object.
    TableView(CReportCtrl& report, RowOrder& order) : m_report(report), m_order(order) {}

    // Fills the control from the bytes of a file. If it shows a table with the same captions already, its
    // columns stay as they are. Throws std::runtime_error, with nothing changed, if they are no table.
    void Load(const std::string& bytes, const Progress& progress);

    CsvTable& Table() { return *m_table; }

    // Returns the text of a cell as the file has it. The control shows line ends and other control characters
    // as blanks.
    std::string Text(int item, int subitem) const;

    // Takes a text that the user has typed, in UTF-8. Throws std::runtime_error, with the reason, if the file
    // cannot hold it; CheckText does that without changing anything.
    void SetText(int item, int subitem, const std::string& text);
    void CheckText(int item, const std::string& text) const { m_coding.Encode(text, m_table->Row(item)); }

    // Has the control show a row as the table has it.
    void FillItem(int item);

    void InsertRow(); // below the focused one
    int DeleteRows(); // that are selected; their number
    bool Undo() { return Show(m_table->Undo()); }
    bool Redo() { return Show(m_table->Redo()); }

private:
    bool Show(const std::optional<CsvTable::Change>& change);
    void ShowText(const CsvTable::Change& change);
    void ShowRows(const CsvTable::Change& change);
    void FillItems(const Progress& progress);
    void DefineColumns(const std::vector<std::string>& captions);
    void FitColumns();
    enum class Widen
    {
        No,
        Yes
    };
    void OfferChoices(Widen widen);
    void Focus(int row, int column);

    CReportCtrl& m_report;
    RowOrder& m_order;
    std::unique_ptr<CsvTable> m_table;
    TextCoding m_coding;
};
