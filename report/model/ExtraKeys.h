// The keys that an owner switches on (RVP_KEYS). They come before those of Input.
#pragma once

#include "report/model/Input.h"
#include "report/model/TypeAhead.h"

namespace report
{

// Bits of RVP_KEYS.
constexpr unsigned kFoldKeys = 0x01;
constexpr unsigned kDoubleClickToggles = 0x02;
constexpr unsigned kSelectAllKey = 0x04;
constexpr unsigned kCopyKeys = 0x08;
constexpr unsigned kTypeAheadKeys = 0x10;
constexpr unsigned kColumnKeys = 0x20;
constexpr unsigned kEditKey = 0x40;
constexpr unsigned kAllExtraKeys = 0x7F;

// What of the tree a row shows.
struct TreeRow
{
    bool hasChildren = false;
    bool isExpanded = false;
    int parent = kNoRow; // its row; kNoRow for a top-level item
};

// What these keys ask of the control beside InputTarget, and have it do. Columns are counted in display
// order.
class ExtraKeysTarget : public TypeAheadRows
{
public:
    virtual TreeRow TreeRowAt(int row) = 0;
    virtual void SelectAll() = 0;
    virtual void Copy() = 0; // the selected rows

    virtual int MarkedColumn() = 0; // kNoColumn for none
    virtual void MarkColumn(int column) = 0;
    virtual int WidthOf(int column) = 0;
    virtual void SetWidth(int column, int width) = 0;
    virtual void FitColumn(int column) = 0; // as wide as its texts need
    virtual void MoveColumn(int from, int to) = 0;
    virtual void ClickColumn(int column) = 0; // as with the mouse
};

struct ExtraKeysState
{
    unsigned switchedOn = 0;
    TypeAhead typing;
};

class ExtraKeys
{
public:
    static constexpr int kWidthStep =
        8; // pixels that a key makes a column wider; none becomes narrower than that

    ExtraKeys(ExtraKeysState& state, Selection& selection, InputTarget& rows, ExtraKeysTarget& target)
        : m_state(state), m_selection(selection), m_rows(rows), m_target(target)
    {
    }

    // False for a key or click that Input deals with, and for a character that nobody wants.
    bool KeyDown(unsigned key, Modifiers modifiers, std::uint32_t time);
    bool Character(unsigned character, std::uint32_t time);
    bool DoubleClick(int row);

private:
    bool Has(unsigned key) const { return (m_state.switchedOn & key) != 0; }
    bool ControlKey(unsigned key);
    bool Fold(Key key, Modifiers modifiers);
    bool ColumnKey(unsigned key, Modifiers modifiers);
    bool MarkNext(int direction);
    void MoveColumn(int column, int direction);
    bool IsCellFocused() const { return m_rows.IsCellFocus() && m_selection.focusColumn >= 0; }
    int CurrentColumn();

    ExtraKeysState& m_state;
    Selection& m_selection;
    InputTarget& m_rows;
    ExtraKeysTarget& m_target;
};

} // namespace report
