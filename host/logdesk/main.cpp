#include "QmLogWriter.h"
#include "logdesk/Arguments.h"
#include "logdesk/Messages.h"
#include "logdesk/Screenshot.h"
#include "logdesk/SessionFiles.h"

#include <cstdlib>
#include <cstring>

// The run-time would replace '*' and '?' in arguments by file names.
extern "C" int _CRT_glob;
int _CRT_glob = 0;

namespace logdesk
{

namespace
{

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kAskedWrongly = 2;
constexpr Place kPicturePlace = {0, 0, 900, 640};

// The folder becomes the log folder of this process. One to be opened must be there; a session makes its own.
void UseFolder(const std::string& folder, bool open)
{
    char path[MAX_PATH] = {};
    const DWORD length = ::GetFullPathName(folder.c_str(), MAX_PATH, path, nullptr);
    const DWORD attributes = ::GetFileAttributes(path);
    const bool isFolder =
        attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if (length == 0 || length >= MAX_PATH || (open && !isFolder))
        throw UsageError(folder, "no such folder");
    ::_putenv_s("QM_LOG_FOLDER", path);
}

// With its backslash; makes the user's own folder when it is missing.
std::string LogFolder()
{
    char path[MAX_PATH] = {};
    if (!QmLogMakeFilePath("x", path))
        throw std::runtime_error("there is no log folder, or it cannot be made");
    return std::string(path).erase(std::strlen(path) - 1);
}

} // namespace

class DeskApp : public CWinApp
{
public:
    BOOL InitInstance() override;
    int ExitInstance() override;

private:
    void Start();
    SessionState ClaimSession(const std::string& folder);
    void TakePicture();

    Arguments m_arguments;
    std::unique_ptr<FolderClaim> m_claim;
    std::unique_ptr<DeskFrame> m_frame;
    int m_exitCode = kDone;
};

BOOL DeskApp::InitInstance()
{
    try
    {
        m_arguments = ParseArguments(std::vector<std::string>(__argv + 1, __argv + __argc));
        if (m_arguments.help)
            Tell(HelpText());
        else
            Start();
    }
    catch (const UsageError& error)
    {
        Tell(std::string("LogDesk: ") + error.what() + "\n");
        m_exitCode = kAskedWrongly;
    }
    catch (const std::runtime_error& error)
    {
        Tell(std::string("LogDesk: ") + error.what() + "\n");
        m_exitCode = kFailed;
    }
    return m_pMainWnd != nullptr;
}

void DeskApp::Start()
{
    if (!m_arguments.folder.empty())
        UseFolder(m_arguments.folder, m_arguments.open);
    const std::string folder = LogFolder();
    m_frame = std::make_unique<DeskFrame>(folder, ClaimSession(folder));
    const bool forPicture = !m_arguments.screenshot.empty();
    if (!m_frame->CreateFrame(forPicture ? std::optional(kPicturePlace) : std::nullopt))
        throw std::runtime_error("the window cannot be made");
    QmLogWriterCloseAll(); // the session's header is written: now other programs may write
    m_frame->ShowFrame(forPicture ? SW_SHOWNORMAL : m_nCmdShow);
    if (forPicture)
        TakePicture();
    else
        m_pMainWnd = m_frame.get();
}

// A session that is only opened claims nothing: any number of programs may show it.
SessionState DeskApp::ClaimSession(const std::string& folder)
{
    if (m_arguments.open)
        return SessionState::kOpened;
    m_claim = std::make_unique<FolderClaim>(folder);
    if (!m_claim->IsFirst())
        return SessionState::kElsewhere;
    if (m_arguments.keep > 0)
        KeepSession(folder, m_arguments.keep);
    return SessionState::kStarted;
}

void DeskApp::TakePicture()
{
    for (const Step& step : m_arguments.steps)
        TakeStep(*m_frame, step);
    m_frame->RefreshStatus();
    if (!WriteScreenshot(*m_frame, m_arguments.screenshot))
        throw std::runtime_error(m_arguments.screenshot + ": cannot be written");
}

int DeskApp::ExitInstance()
{
    m_frame.reset();
    QmLogWriterCloseAll();
    return m_exitCode;
}

} // namespace logdesk

logdesk::DeskApp theApp;

int WINAPI WinMain(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPSTR lpCmdLine, int nShowCmd)
{
    return AfxWinMain(hInstance, hPrevInstance, lpCmdLine, nShowCmd);
}
