#include "logdesk/Screenshot.h"

#include "msgservice/SystemPath.h"
#include "vkgrafic/DrawingGuards.h"
#include "zemacore/WideText.h"

#include <algorithm>
#include <cstdint>
#include <fstream>

namespace logdesk
{

namespace
{

constexpr ULONGLONG kIndexWait = 10'000; // milliseconds; damaged logs may never be read to their end

void MoveCaret(CQmLogTextCtrl& text, int delta)
{
    const std::int64_t row = std::int64_t{text.GetCaretRow()} + delta;
    const std::int64_t last = std::max(text.GetRowCount(), 1) - 1;
    text.Focus(static_cast<int>(std::clamp<std::int64_t>(row, 0, last)), 0, delta > 0);
}

void GoToFold(CQmLogTextCtrl& text)
{
    for (int row = text.GetCaretRow(); row < text.GetRowCount(); ++row)
    {
        bool expanded = false;
        if (!text.GetExpanded(row, expanded) || expanded)
            continue;
        text.Focus(row, 0, false);
        return;
    }
}

// Types into the find bar, which takes the focus, and waits for the search.
void FindText(CQmLogTextCtrl& text, const std::string& wanted)
{
    text.FindInput();
    ZEMA::WideString characters;
    ZEMA::ToWide(wanted.data(), wanted.size(), characters);
    for (const wchar_t character : characters)
        ::SendMessageW(::GetFocus(), WM_CHAR, character, 1);
    text.FindNext();
    MSG message = {};
    while (text.IsFinding() && ::GetMessageW(&message, nullptr, 0, 0) > 0)
        ::DispatchMessageW(&message);
}

// Until the message is there.
void WaitForFind(MessageList& list)
{
    MSG message = {};
    while (list.IsFinding() && ::GetMessageW(&message, nullptr, 0, 0) > 0)
        ::DispatchMessageW(&message);
}

} // namespace

void TakeMessageStep(DeskFrame& frame, const Step& step)
{
    using Direction = msgservice::MsgService::Direction;
    MessageView& messages = frame.GetMessages();
    messages.Settle();
    switch (step.action)
    {
    case StepAction::Message:
        return messages.List().SelectMsg(static_cast<std::uint32_t>(step.count));
    case StepAction::NextMessageError:
        return frame.GoToMessageError(Direction::Forward);
    case StepAction::PreviousMessageError:
        return frame.GoToMessageError(Direction::Backward);
    case StepAction::FindMessage:
        messages.List().OpenFind(step.text.c_str());
        messages.List().FindNext();
        return WaitForFind(messages.List());
    case StepAction::NextFound:
        messages.List().FindNext();
        return WaitForFind(messages.List());
    case StepAction::PreviousFound:
        messages.List().FindPrevious();
        return WaitForFind(messages.List());
    case StepAction::Sort: {
        const LogMsgSortKey key = {static_cast<ILogMsgDataKind>(step.count), step.height == 0};
        messages.Service().SetSortKeys(&key, 1);
        return messages.Service().Apply();
    }
    case StepAction::Level:
        return frame.SetLeastLevel(static_cast<std::uint32_t>(step.count));
    case StepAction::Report:
        return messages.List().ShowReport(step.count != 0);
    case StepAction::Preview:
        return messages.List().SetShowPreview(step.count != 0);
    case StepAction::ShowInLog:
        return frame.ShowInLog(messages.FocusedId());
    case StepAction::ShowInMessages:
        return frame.ShowInMessages();
    case StepAction::LogText:
        return frame.ShowPane(Pane::LogText, step.count != 0);
    case StepAction::Messages:
        return frame.ShowPane(Pane::Messages, step.count != 0);
    case StepAction::Split:
        return frame.SetSplit(step.count * PaneSplit::kWhole / 100);
    default:
        return;
    }
}

void TakeStep(DeskFrame& frame, const Step& step)
{
    CQmLogTextCtrl& text = frame.GetTextCtrl();
    const int caret = text.GetCaretRow();
    switch (step.action)
    {
    case StepAction::Home:
        return text.Focus(0, 0, false);
    case StepAction::End:
        return text.Focus(text.GetRowCount() - 1, 0, true);
    case StepAction::Up:
        return MoveCaret(text, -step.count);
    case StepAction::Down:
        return MoveCaret(text, step.count);
    case StepAction::NextFold:
        return GoToFold(text);
    case StepAction::Unfold:
        text.Expand(caret);
        return;
    case StepAction::UnfoldAll:
        text.ExpandAll(caret);
        return;
    case StepAction::Fold:
        text.Collapse(caret);
        return;
    case StepAction::NextError:
        text.GoToError(true);
        return;
    case StepAction::PreviousError:
        text.GoToError(false);
        return;
    case StepAction::Find:
        return FindText(text, step.text);
    case StepAction::Select:
        text.Focus(caret, 0, false);
        return text.Select(std::min(step.count, text.GetRowCount() - caret) + caret, 0);
    case StepAction::SelectAll:
        return text.SelectAll();
    case StepAction::Follow:
        return text.SetFollow(step.count != 0);
    case StepAction::Dark:
        return frame.SetColours(step.count != 0 ? ColourChoice::Dark : ColourChoice::Light);
    case StepAction::Zoom:
        return frame.Zoom(step.count);
    case StepAction::Tab: // 0 for all logs
        return frame.ShowTab(step.count - 1);
    case StepAction::During:
        return frame.ShowDuring();
    case StepAction::Size:
        frame.SetWindowPos(nullptr, 0, 0, step.count, step.height,
                           SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        return;
    case StepAction::Sample:
        text.WriteTest();
        text.Browse(text.GetFilePathIndex());
        return frame.ShowSessionMessages();
    default:
        return TakeMessageStep(frame, step);
    }
}

void WaitForIndex(const CQmLogTextCtrl& text)
{
    MSG message = {};
    const ULONGLONG end = ::GetTickCount64() + kIndexWait;
    while (text.GetIndexProgress() < 100 && ::GetTickCount64() < end &&
           ::GetMessageW(&message, nullptr, 0, 0) > 0)
        ::DispatchMessageW(&message);
}

bool WriteScreenshot(CWnd& wnd, const std::string& path)
{
    wnd.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_FRAME | RDW_ALLCHILDREN);
    CRect rect;
    wnd.GetWindowRect(rect);
    BITMAPINFOHEADER info = {};
    info.biSize = sizeof(info);
    info.biWidth = rect.Width();
    info.biHeight = rect.Height();
    info.biPlanes = 1;
    info.biBitCount = 24;
    info.biSizeImage = (static_cast<DWORD>(3 * rect.Width()) + 3) / 4 * 4 * static_cast<DWORD>(rect.Height());

    CDC memory;
    CBitmap bitmap;
    void* bits = nullptr;
    if (!memory.CreateCompatibleDC(nullptr) ||
        !bitmap.Attach(::CreateDIBSection(memory, reinterpret_cast<BITMAPINFO*>(&info), DIB_RGB_COLORS, &bits,
                                          nullptr, 0)))
        return false;
    const VkGrafic::Selected selected(memory, bitmap.GetSafeHandle());
    CWindowDC window(&wnd);
    const bool isPainted =
        memory.BitBlt(0, 0, rect.Width(), rect.Height(), &window, 0, 0, SRCCOPY) && ::GdiFlush();

    BITMAPFILEHEADER header = {};
    header.bfType = 0x4D42; // "BM"
    header.bfOffBits = sizeof(header) + sizeof(info);
    header.bfSize = header.bfOffBits + info.biSizeImage;
    std::ofstream file(msgservice::SystemPath(path), std::ios::binary);
    file.write(reinterpret_cast<const char*>(&header), sizeof(header));
    file.write(reinterpret_cast<const char*>(&info), sizeof(info));
    file.write(static_cast<const char*>(bits), info.biSizeImage);
    file.close();
    return isPainted && file.good();
}

} // namespace logdesk
