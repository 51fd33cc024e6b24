// report: shows a CSV file as a list, or a folder as a tree, and remembers how it was shown.
#include "../common/CommandLine.h"
#include "../common/Picture.h"
#include "ReportWnd.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace
{

const char* const kUse =
    R"(Shows a CSV file as a list, or a folder as a tree, and remembers how it was shown: place, columns, order, view.

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
                    "a CSV or TSV file, its first line has the captions; or a folder");
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

void Start(ReportWnd& wnd, const Options& options)
{
    wnd.Open(FullPath(options.path), LayoutFile(options.layout, !options.picture.empty()));
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
        m_pMainWnd = &m_wnd;
        CommandLine line("report", kUse);
        try
        {
            Options options;
            Declare(line, options);
            if (line.Read(__argc, __argv))
                Start(m_wnd, options);
            return m_wnd.GetSafeHwnd() != nullptr; // FALSE ends the program
        }
        catch (const std::exception& error)
        {
            m_exitCode = line.Fail(error);
            return FALSE;
        }
    }

    int ExitInstance() override { return m_exitCode; }

    ReportWnd m_wnd;
    int m_exitCode = 0;
};

ReportApp theApp;

int WINAPI WinMain(HINSTANCE instance, HINSTANCE previous, LPSTR commandLine, int show)
{
    return AfxWinMain(instance, previous, commandLine, show);
}
