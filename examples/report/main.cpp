// report: edits a CSV file as a table or shows a folder as a tree, and remembers how it was shown.
#include "../common/CommandLine.h"
#include "../common/Picture.h"
#include "TableWnd.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>

namespace
{

const char* const kUse =
    R"(Edits a CSV file as a table or shows a folder as a tree, and remembers how it was shown: place, columns, order, view.

A second click on the focused cell, typing on it, F2 or Return edit it; Ctrl+Z undoes, Ins and Del insert and
delete rows, Ctrl+S saves.

A click on a column's header sorts by it. Columns can be dragged to another place and off the header;
from the list that "Hidden Columns" of the menu "View" shows, a drag or a double click brings them back.)";

struct Options
{
    std::string path;
    std::string layout;
    std::string picture;
    CSize size;
};

CSize ReadSize(const std::string& text)
{
    int width = 0;
    int height = 0;
    char rest = 0;
    if (std::sscanf(text.c_str(), "%5dx%5d%c", &width, &height, &rest) != 2 || width < 1 || height < 1)
        throw std::invalid_argument(text + ": no size such as 800x500");
    return {width, height};
}

void Declare(CommandLine& line, Options& options)
{
    line.AddOperand("PATH", options.path, CommandLine::Need::Required,
                    "a CSV or TSV file, the first row has its captions; or a folder");
    line.AddText("--layout", "FILE", options.layout,
                 "the INI file to remember in, not %APPDATA%\\QmLogReport.ini");
    line.AddValue(
        "--size", "WxH", [&options](const std::string& text) { options.size = ReadSize(text); },
        "the window's size in pixels");
    line.AddText("--screenshot", "FILE", options.picture,
                 "write a picture as BMP and end; without --layout nothing is remembered");
}

std::string FullPath(const std::string& path)
{
    char full[MAX_PATH];
    if (!::_fullpath(full, path.c_str(), MAX_PATH))
        throw std::runtime_error(path + ": no path");
    return full;
}

// Without --layout, a picture looks the same whatever was remembered.
std::string LayoutFile(const std::string& wanted, bool forPicture)
{
    const char* const folder = std::getenv("APPDATA");
    if (wanted.empty())
        return folder && !forPicture ? std::string(folder) + "\\QmLogReport.ini" : "";
    if (!std::ofstream(wanted, std::ios::app))
        throw std::runtime_error(wanted + ": cannot be written");
    return FullPath(wanted);
}

bool IsFolder(const std::string& path)
{
    const DWORD attributes = ::GetFileAttributes(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        throw std::runtime_error(path + ": cannot be found");
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

void Start(ReportWnd& wnd, const std::string& path, bool isFolder, const Options& options)
{
    wnd.Open(path, LayoutFile(options.layout, !options.picture.empty()), isFolder ? "Folders" : path);
    if (options.size.cx > 0)
        wnd.SetWindowPos(nullptr, 0, 0, options.size.cx, options.size.cy, SWP_NOMOVE | SWP_NOZORDER);
    if (options.picture.empty())
        return;
    if (!WritePicture(wnd, options.picture))
        throw std::runtime_error(options.picture + ": cannot be written");
    wnd.SendMessage(WM_CLOSE);
}

} // namespace

class ReportApp : public CWinApp
{
    BOOL InitInstance() override
    {
        CommandLine line("report", kUse);
        try
        {
            Options options;
            Declare(line, options);
            if (!line.Read(__argc, __argv))
                return FALSE; // which ends the program
            const std::string path = FullPath(options.path);
            const bool isFolder = IsFolder(path);
            m_wnd = isFolder ? std::make_unique<ReportWnd>() : std::make_unique<TableWnd>();
            m_pMainWnd = m_wnd.get();
            Start(*m_wnd, path, isFolder, options);
            return m_wnd->GetSafeHwnd() != nullptr;
        }
        catch (const std::exception& error)
        {
            m_exitCode = line.Fail(error);
            return FALSE;
        }
    }

    int ExitInstance() override { return m_exitCode; }

    std::unique_ptr<ReportWnd> m_wnd;
    int m_exitCode = 0;
};

ReportApp theApp;

int WINAPI WinMain(HINSTANCE instance, HINSTANCE previous, LPSTR commandLine, int show)
{
    return AfxWinMain(instance, previous, commandLine, show);
}
