#include "QmLogFolder.h"
#include "QmLogWriter.h"
#include "Version.h"
#include "commandline/Printable.h"
#include "engine/EngineUrl.h"
#include "logdesk/Arguments.h"
#include "logdesk/EngineFrame.h"
#include "logdesk/Messages.h"
#include "logdesk/Screenshot.h"
#include "logdesk/SessionFiles.h"
#include "logdesk/SessionFolder.h"

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

// What the user typed comes back in it, and may be anything.
void TellFailure(const std::exception& error)
{
    Tell("LogDesk: " + commandline::Printable(error.what()) + "\n", Tone::Failure);
}

} // namespace

class DeskApp : public CWinApp
{
public:
    BOOL InitInstance() override;
    int ExitInstance() override;

private:
    void Start();
    void StartEngine(const engine::EngineUrl& url);
    SessionState ClaimSession(const std::string& folder);
    void TakePicture();
    void WritePicture(CWnd& frame);

    Arguments m_arguments;
    std::unique_ptr<FolderClaim> m_claim;
    std::unique_ptr<DeskFrame> m_frame;
    std::unique_ptr<EngineFrame> m_engineFrame; // in its place
    int m_exitCode = kDone;
};

BOOL DeskApp::InitInstance()
{
    try
    {
        m_arguments = ParseArguments(std::vector<std::string>(__argv + 1, __argv + __argc));
        if (m_arguments.help)
            Tell(HelpText(), Tone::Answer);
        else if (m_arguments.version)
            Tell("LogDesk " LOGDESK_VERSION "\n", Tone::Answer);
        else if (engine::IsEngineUrl(m_arguments.path))
            StartEngine(engine::ParseEngineUrl(m_arguments.path));
        else
            Start();
    }
    catch (const UsageError& error)
    {
        TellFailure(error);
        m_exitCode = kAskedWrongly;
    }
    catch (const std::runtime_error& error)
    {
        TellFailure(error);
        m_exitCode = kFailed;
    }
    return m_pMainWnd != nullptr;
}

void DeskApp::Start()
{
    const SessionPlace place = FindPlace(m_arguments);
    const SessionState session =
        place.file.empty() ? ClaimSession(place.folder) : SessionState::Opened; // a file is nobody's
    QmLogTellErrors(session == SessionState::Started); // else the folder is not ours to write into
    m_frame = std::make_unique<DeskFrame>(place, session);
    m_frame->OfferForDevelopers(m_arguments.developer);
    const bool forPicture = !m_arguments.screenshot.empty();
    const MessageOptions messages = {!forPicture, m_arguments.traffic};
    if (!m_frame->CreateFrame(forPicture ? std::optional(kPicturePlace) : std::nullopt, messages))
        throw std::runtime_error("the window cannot be made");
    QmLogWriterCloseAll(); // the session's header is written: now other programs may write
    m_frame->ShowFrame(forPicture ? SW_SHOWNORMAL : m_nCmdShow);
    if (forPicture)
        TakePicture();
    else
        m_pMainWnd = m_frame.get();
}

void DeskApp::StartEngine(const engine::EngineUrl& url)
{
    if (m_arguments.start)
        throw UsageError("--start", "begins a session in a folder");
    if (url.session.empty())
        throw UsageError(m_arguments.path,
                         "names no session: say ?session=NAME at its end; \"logtool sessions\" lists them");
    const bool forPicture = !m_arguments.screenshot.empty();
    m_engineFrame = std::make_unique<EngineFrame>(url);
    if (!m_engineFrame->CreateFrame(forPicture ? std::optional(kPicturePlace) : std::nullopt))
        throw std::runtime_error("the window cannot be made");
    m_engineFrame->ShowFrame(forPicture ? SW_SHOWNORMAL : m_nCmdShow);
    if (!forPicture)
    {
        m_pMainWnd = m_engineFrame.get();
        return;
    }
    for (const Step& step : m_arguments.steps)
        m_engineFrame->TakeStep(step);
    m_engineFrame->Settle();
    WritePicture(*m_engineFrame);
}

// Any number of programs may show a session; none begins a new one under the eyes of another.
SessionState DeskApp::ClaimSession(const std::string& folder)
{
    m_claim = std::make_unique<FolderClaim>(folder);
    if (!m_arguments.start)
        return SessionState::Opened;
    if (!m_claim->IsFirst())
        return SessionState::Elsewhere;
    if (m_arguments.keep > 0)
        KeepSession(folder, m_arguments.keep);
    return SessionState::Started;
}

void DeskApp::TakePicture()
{
    for (const Step& step : m_arguments.steps)
        TakeStep(*m_frame, step);
    WaitForIndex(m_frame->GetTextCtrl());
    m_frame->GetMessages().Settle();
    m_frame->RefreshNotices();
    m_frame->RefreshStatus();
    WritePicture(*m_frame);
}

void DeskApp::WritePicture(CWnd& frame)
{
    if (!WriteScreenshot(frame, m_arguments.screenshot))
        throw std::runtime_error(m_arguments.screenshot + ": cannot be written");
}

int DeskApp::ExitInstance()
{
    m_frame.reset();
    m_engineFrame.reset();
    QmLogWriterCloseAll();
    return m_exitCode;
}

} // namespace logdesk

logdesk::DeskApp theApp;

int WINAPI WinMain(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPSTR lpCmdLine, int nShowCmd)
{
    return AfxWinMain(hInstance, hPrevInstance, lpCmdLine, nShowCmd);
}
