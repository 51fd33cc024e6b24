// How files come into the frame.
#include "Version.h"
#include "afxdlgs.h"
#include "logdesk/DeskFrame.h"
#include "logdesk/OpenedFile.h"

#include <array>
#include <shellapi.h>
#include <shlobj.h>

namespace logdesk
{

namespace
{

constexpr const char* kFilter =
    "Logs (*.log;*.txt;*.row;*.json;*.zemalog)|*.log;*.txt;*.row;*.json;*.zemalog|All files (*.*)|*.*||";

std::vector<std::string> FilesOf(HDROP drop)
{
    std::vector<std::string> files;
    const UINT count = ::DragQueryFileA(drop, 0xFFFFFFFF, nullptr, 0);
    for (UINT i = 0; i < count; ++i)
    {
        std::string file(::DragQueryFileA(drop, i, nullptr, 0) + 1, '\0');
        file.resize(::DragQueryFileA(drop, i, file.data(), static_cast<UINT>(file.size())));
        files.push_back(file);
    }
    return files;
}

// The dialog begins with the folder that is shown.
int CALLBACK SelectFolder(HWND dialog, UINT message, LPARAM, LPARAM folder)
{
    if (message == BFFM_INITIALIZED)
        ::SendMessageA(dialog, BFFM_SETSELECTIONA, TRUE, folder);
    return 0;
}

} // namespace

void DeskFrame::AskForFiles()
{
    std::array<char, 0x8000> buffer = {}; // for many files at once
    CFileDialog dialog(TRUE, nullptr, nullptr,
                       OFN_HIDEREADONLY | OFN_ALLOWMULTISELECT | OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST |
                           OFN_NOCHANGEDIR,
                       kFilter, this);
    dialog.m_ofn.lpstrFile = buffer.data();
    dialog.m_ofn.nMaxFile = static_cast<DWORD>(buffer.size());
    if (dialog.DoModal() != IDOK)
        return;
    std::vector<std::string> paths;
    for (POSITION position = dialog.GetStartPosition(); position;)
        paths.emplace_back(static_cast<LPCSTR>(dialog.GetNextPathName(position)));
    Open(paths);
}

void DeskFrame::AskForFolder()
{
    BROWSEINFOA browse = {};
    browse.hwndOwner = m_hWnd;
    browse.lpszTitle = "The folder of a session's logs:";
    browse.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE | BIF_NONEWFOLDERBUTTON;
    browse.lpfn = SelectFolder;
    const std::string shown = FolderName(m_place.folder);
    browse.lParam = reinterpret_cast<LPARAM>(shown.c_str());
    PIDLIST_ABSOLUTE const chosen = ::SHBrowseForFolderA(&browse);
    if (!chosen)
        return;
    char path[MAX_PATH] = {};
    const bool isPath = ::SHGetPathFromIDListA(chosen, path);
    ::CoTaskMemFree(chosen);
    if (isPath)
        Open({path});
}

LRESULT DeskFrame::OnDropFiles(WPARAM drop, LPARAM)
{
    const HDROP handle = reinterpret_cast<HDROP>(drop);
    const std::vector<std::string> files = FilesOf(handle);
    ::DragFinish(handle);
    ::SetForegroundWindow(m_hWnd);
    Open(files);
    return 0;
}

// The first file comes into this window; sessions and further files get windows of their own.
void DeskFrame::Open(const std::vector<std::string>& paths)
{
    bool mayShowHere = true;
    for (const std::string& path : paths)
        mayShowHere = !OpenOne(path, mayShowHere) && mayShowHere;
    RefreshStatus();
}

// True if it is shown here.
bool DeskFrame::OpenOne(const std::string& path, bool mayShowHere)
{
    SessionPlace place;
    try
    {
        place = PlaceOf(path);
    }
    catch (const UsageError& error)
    {
        Tell(error.what());
        Remember(path, false);
        RememberSession(path, false);
        return false;
    }
    if (place.file.empty())
        RememberSession(FolderName(place.folder), true);
    else
        Remember(path, true);
    if (!place.file.empty() && mayShowHere)
        return ShowFile(place.file);
    const bool isOurs = place.file.empty() && IsSameLog(FolderName(place.folder), FolderName(m_place.folder));
    if (!isOurs)
    {
        if (m_options.openHere && place.file.empty())
            LeaveFor(path);
        else
            StartAnother(path);
        return false;
    }
    m_place.log = place.log;
    ShowPane(Pane::LogText, true);
    ShowWantedLog();
    if (!m_messages.File().empty())
        ShowSessionMessages();
    return true;
}

bool DeskFrame::ShowFile(const std::string& file)
{
    m_told.Clear();
    const bool isShown = m_messages.ShowFile(file);
    if (isShown)
    {
        ShowPane(Pane::Messages, true);
        FocusPane(Pane::Messages);
    }
    RefreshNotices();
    return isShown;
}

void DeskFrame::ShowSessionMessages()
{
    m_messages.ShowSession([folder = m_place.folder] { return LogsIn(folder); });
}

// All messages as they arrived, whatever the list sorts and filters; those that were cleared are left out.
void DeskFrame::SaveMessages()
{
    const auto store = m_messages.Service().Store();
    const std::uint32_t first = m_messages.Service().GetClearedCount();
    const std::uint32_t end = store->Count();
    const std::string file = m_messages.File();
    CFileDialog dialog(FALSE, "zemalog", nullptr,
                       OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST | OFN_NOCHANGEDIR,
                       "Saved messages (*.zemalog)|*.zemalog||", this);
    dialog.m_ofn.lpstrTitle = "Save messages";
    if (dialog.DoModal() != IDOK || m_saving)
        return;
    m_saving = std::make_unique<Saving>(
        store, first, end, static_cast<LPCSTR>(dialog.GetPathName()),
        msgservice::SavedAbout{"", "LogDesk", LOGDESK_VERSION, file.empty() ? m_place.folder : file});
    RefreshStatus();
}

bool DeskFrame::MayLeave()
{
    return !m_saving || m_saving->IsDone() ||
           MessageBox("The messages are still being saved. Leave, and give that up?", "LogDesk",
                      MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2) == IDYES;
}

void DeskFrame::TellSaved()
{
    if (!m_saving || !m_saving->IsDone())
        return;
    Tell(m_saving->Outcome());
    m_saving.reset();
}

void DeskFrame::OpenNewWindow()
{
    StartAnother(m_messages.File().empty() ? FolderName(m_place.folder) : m_messages.File());
}

// A session's window takes the place of this one, which is hidden so that the other one does not avoid it.
void DeskFrame::LeaveFor(const std::string& session)
{
    if (!MayLeave())
        return;
    m_saving.reset();
    if (m_remember)
        RememberOptions();
    ShowWindow(SW_HIDE);
    if (StartAnother(session))
        PostMessage(WM_CLOSE);
    else
        ShowWindow(SW_SHOW);
}

bool DeskFrame::StartAnother(const std::string& path)
{
    std::array<char, MAX_PATH> program = {};
    ::GetModuleFileNameA(nullptr, program.data(), static_cast<DWORD>(program.size()));
    std::string line = CommandLineOf(program.data(), path);
    STARTUPINFOA startup = {};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process = {};
    if (!::CreateProcessA(program.data(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                          &process))
    {
        Tell(path + " cannot be shown: no other window can be opened");
        return false;
    }
    ::AllowSetForegroundWindow(process.dwProcessId);
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
    return true;
}

// As the first of the recent files, or as none of them any more.
void DeskFrame::Remember(const std::string& path, bool isThere)
{
    if (!m_remember)
        return;
    m_recent = ReadRecentFiles(); // other windows remember files, too
    if (isThere)
        m_recent.Add(path);
    else
        m_recent.Remove(path);
    WriteRecentFiles(m_recent);
}

void DeskFrame::RememberSession(const std::string& folder, bool isThere)
{
    if (!m_remember)
        return;
    m_recentSessions = ReadRecentSessions();
    if (isThere)
        m_recentSessions.Add(folder);
    else
        m_recentSessions.Remove(folder);
    WriteRecentSessions(m_recentSessions);
}

} // namespace logdesk
