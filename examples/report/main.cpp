// report: shows a CSV file as a list, or a folder as a tree, and remembers how it was shown.
#include "../common/Picture.h"
#include "ReportWnd.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <stdexcept>
#include <vector>

namespace
{

const char* const kHelp =
    R"(report FILE.csv [OPTION...]    a CSV or TSV file as a list; its first line has the captions
report FOLDER [OPTION...]      a folder as a tree

--layout FILE           the INI file that remembers place, columns, order and view, instead of
                        %APPDATA%\QmLogReport.ini
--size WxH              the window's size in pixels
--screenshot FILE.bmp   write a picture of the window and end; without --layout nothing is remembered
--help                  this text

A click on a column's header sorts by it. Columns can be dragged to another place and off the header;
from the list that "Hidden Columns" of the menu "View" shows, a drag or a double click brings them back.

Exit code: 0 done, 1 something cannot be read or written, 2 asked wrongly.
)";

using Options = std::map<std::string, std::string>;

// Options with their values, empty where not given. What is to be shown is the value of "".
Options ReadOptions(const std::vector<std::string>& words)
{
    Options options = {{"", ""}, {"--layout", ""}, {"--screenshot", ""}, {"--size", ""}};
    for (auto word = words.begin(); word != words.end(); ++word)
    {
        const bool isOption = word->starts_with("--");
        const auto option = options.find(isOption ? *word : "");
        if (option == options.end() || !option->second.empty())
            throw std::invalid_argument(*word + ": not understood, see report --help");
        if (isOption && ++word == words.end())
            throw std::invalid_argument(option->first + ": needs a value");
        option->second = *word;
    }
    if (options[""].empty())
        throw std::invalid_argument("FILE or FOLDER is missing, see report --help");
    return options;
}

CSize ReadSize(const std::string& text)
{
    int width = 0;
    int height = 0;
    char rest = 0;
    if (std::sscanf(text.c_str(), "%5dx%5d%c", &width, &height, &rest) != 2 || width < 1 || height < 1)
        throw std::invalid_argument(text + ": no size such as 800x500");
    return {width, height};
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

// Where the program was started without standard output or error, in a message box.
void Tell(DWORD stream, const std::string& text)
{
    DWORD written = 0;
    if (!::WriteFile(::GetStdHandle(stream), text.data(), static_cast<DWORD>(text.size()), &written, nullptr))
        AfxMessageBox(text.c_str());
}

void Start(ReportWnd& wnd, Options options)
{
    const std::string& picture = options["--screenshot"];
    const CSize size = options["--size"].empty() ? CSize() : ReadSize(options["--size"]);
    wnd.Open(FullPath(options[""]), LayoutFile(options["--layout"], !picture.empty()));
    if (size.cx > 0)
        wnd.SetWindowPos(nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER);
    if (picture.empty())
        return;
    if (!WritePicture(wnd, picture))
        throw std::runtime_error(picture + ": cannot be written");
    wnd.SendMessage(WM_CLOSE);
}

} // namespace

class ReportApp : public CWinApp
{
    BOOL InitInstance() override
    {
        m_pMainWnd = &m_wnd;
        try
        {
            const std::vector<std::string> words(__argv + 1, __argv + __argc);
            if (std::count(words.begin(), words.end(), "--help") > 0)
                Tell(STD_OUTPUT_HANDLE, kHelp);
            else
                Start(m_wnd, ReadOptions(words));
            return m_wnd.GetSafeHwnd() != nullptr; // FALSE ends the program
        }
        catch (const std::exception& error)
        {
            Tell(STD_ERROR_HANDLE, std::string("report: ") + error.what() + "\n");
            m_exitCode = dynamic_cast<const std::invalid_argument*>(&error) ? 2 : 1;
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
