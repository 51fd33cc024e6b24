// Copying from the log text window: the selection, and excerpts.
#include "QmLogTextCtrl.h"
#include "logview/Excerpt.h"
#include "logview/SelectionText.h"
#include "logview/ShownRows.h"
#include "qmcommon/QmClipboard.h"
#include "qmcommon/QmProgressDialog.h"

#include <algorithm>
#include <new>
#include <optional>

using Characters = logview::TextPieces<ZEMA::WideChar>;
using Bytes = logview::TextPieces<char>;

namespace
{

constexpr const char* kTitle = "Copy";
constexpr const char* kTooLong = "The selected rows have more than 1 GB of text. Nothing was copied.";
constexpr const char* kNoMemory = "There is not enough memory for the selected rows. Nothing was copied.";
constexpr const char* kMoved = "The rows have changed meanwhile. Nothing was copied.";
constexpr const char* kNoClipboard = "The clipboard does not take the selected rows.";

// Collected text on its way, piece by piece, to memory that the clipboard takes over. Without that memory
// there is nothing to be done.
template <typename Char> class ClipboardText
{
public:
    ClipboardText(UINT format, logview::TextPieces<Char>& pieces)
        : m_pieces(pieces), m_block(format, (pieces.Size() + 1) * sizeof(Char)),
          m_room(static_cast<Char*>(m_block.GetBytes()))
    {
    }

    bool Step() { return m_room && m_pieces.WriteNext(m_room); }
    QmClipboardBlock&& TakeBlock() { return std::move(m_block); }

private:
    logview::TextPieces<Char>& m_pieces;
    QmClipboardBlock m_block; // the system clears it: the text ends with a NUL
    Char* m_room;
};

} // namespace

void CQmLogTextCtrl::SetCopiesInSteps(bool steps)
{
    m_copiesInSteps = steps;
}

bool CQmLogTextCtrl::GetCopiesInSteps() const
{
    return m_copiesInSteps;
}

logview::Selection CQmLogTextCtrl::GetSelection() const
{
    return {GetSelectionBeginRow(), GetSelectionBeginColumn(), GetSelectionEndRow(), GetSelectionEndColumn()};
}

std::string CQmLogTextCtrl::GetSelectedText()
{
    return logview::SelectedBytes(m_rows->source, m_rows->Rows(), GetSelection());
}

// Says why nothing is copied.
bool CQmLogTextCtrl::RefuseCopy(const char* reason)
{
    if (m_copiesInSteps)
        MessageBox(reason, kTitle, MB_OK | MB_ICONINFORMATION);
    return false;
}

// Takes steps to the end. False if the user gave up, if there was not enough memory, or if the window has
// been made anew or destroyed meanwhile: then no member may be used.
bool CQmLogTextCtrl::RunCopySteps(const std::function<bool()>& step, const std::function<double()>& progress)
{
    const std::shared_ptr<logview::ShownRows> rows = m_rows;
    const auto isThere = [&rows] { return rows.use_count() > 1; };
    bool hasMemory = true;
    const auto guarded = [&] {
        try
        {
            return isThere() && step();
        }
        catch (const std::bad_alloc&)
        {
            hasMemory = false;
            return false;
        }
    };
    bool isDone = true;
    rows->isCopied = true;
    if (m_copiesInSteps)
        isDone = QmRunSteps(*this, kTitle, guarded, progress);
    else
        while (guarded())
            continue;
    rows->isCopied = false;
    return isThere() && isDone && (hasMemory || RefuseCopy(kNoMemory));
}

// Has all rows added to a copy.
template <typename CopiedRows> bool CQmLogTextCtrl::Collect(CopiedRows& copied)
{
    const int rowCount = GetRowCount();
    const std::uint32_t changes = m_rows->merged.Changes();
    bool isMoved = false;
    const auto step = [&] {
        isMoved = GetRowCount() != rowCount || m_rows->merged.Changes() != changes;
        return !isMoved && copied.Step();
    };
    return RunCopySteps(step, [&copied] { return copied.Progress(); }) && (!isMoved || RefuseCopy(kMoved));
}

bool CQmLogTextCtrl::PutOnClipboard(Characters& characters, Bytes* bytes)
{
    if (characters.Size() == 0)
        return false;
    std::vector<QmClipboardBlock> blocks;
    {
        ClipboardText wide(CF_UNICODETEXT, characters);
        Bytes none;
        ClipboardText plain(CF_TEXT, bytes ? *bytes : none);
        if (!RunCopySteps([&] { return wide.Step() || plain.Step(); }, [] { return 1.0; }))
            return false;
        blocks.push_back(wide.TakeBlock());
        if (bytes)
            blocks.push_back(plain.TakeBlock());
    }
    for (QmClipboardBlock& block : blocks)
        if (!block.GetBytes())
            return RefuseCopy(kNoMemory);
    return QmSetClipboard(m_hWnd, blocks.data(), blocks.size()) || RefuseCopy(kNoClipboard);
}

bool CQmLogTextCtrl::Copy()
{
    logview::SelectionCopy copy(m_rows->source, m_rows->Rows(), GetSelection());
    if (!Collect(copy))
        return false;
    if (copy.IsTooLong() && m_copiesInSteps)
        return RefuseCopy(kTooLong);
    return PutOnClipboard(copy.Characters(), &copy.Bytes());
}

bool CQmLogTextCtrl::CopyExcerpt()
{
    const logview::Selection selection = GetSelection();
    const bool endsBefore = selection.endRow > selection.beginRow && selection.endColumn == 0;
    const int last = std::min(selection.endRow - (endsBefore ? 1 : 0), GetRowCount() - 1);
    if (selection.beginRow > last)
        return false;
    const logview::RowId first = m_rows->Rows().Translate(selection.beginRow);
    if (!ReadIndexTo(first))
        return false;
    std::vector<logview::RowId> headers = m_rows->merged.FindPath(first);
    if (!headers.empty() && headers.back() == first)
        headers.pop_back();
    logview::Excerpt excerpt(m_rows->source, m_rows->Rows(), std::move(headers), selection.beginRow, last,
                             logview::kMaxSelectionBytes / sizeof(ZEMA::WideChar));
    if (!Collect(excerpt))
        return false;
    if (excerpt.IsTooLong())
        return RefuseCopy(kTooLong);
    return PutOnClipboard(excerpt.Characters(), nullptr);
}

// The blocks of a row are known as far as the index has been read.
bool CQmLogTextCtrl::ReadIndexTo(logview::RowId place)
{
    KeepIndex();
    const logview::MergeIndex& index = m_rows->merged.Index();
    const auto read = [&] {
        const bool goesOn = index.End().RowsOf(place.file) <= place.row && !index.IsComplete();
        if (goesOn)
            ReadIndex();
        return goesOn;
    };
    double progress = 0; // the window may have gone when it is asked for
    return RunCopySteps([&] { return progress = GetIndexProgress() / 100.0, read(); },
                        [&] { return progress; });
}
