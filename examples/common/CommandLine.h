// Command lines, read by CLI11, and what the examples tell their user.
#pragma once

#include <CLI/CLI.hpp>

#include <windows.h>

#include <stdexcept>
#include <string>

inline const char* const kExitCodes =
    "Exit code: 0 done, 1 something cannot be read, written or started, 2 asked wrongly.";

// To the standard output or error; where the program was started without them, in a message box.
inline void Tell(DWORD stream, const std::string& text)
{
    DWORD written = 0;
    if (!::WriteFile(::GetStdHandle(stream), text.data(), static_cast<DWORD>(text.size()), &written, nullptr))
        ::MessageBoxA(nullptr, text.c_str(), nullptr, MB_OK);
}

// Reads the program's words into what the options of `app` name. False when help was asked for, and told.
// Throws std::invalid_argument with one line when the words do not fit.
inline bool ReadWords(CLI::App& app, int count, char** words)
{
    app.set_help_flag("-h,--help", "show this text");
    app.footer(kExitCodes);
    app.allow_windows_style_options(false); // a path may begin with a slash
    try
    {
        app.parse(count, words);
        return true;
    }
    catch (const CLI::CallForHelp&)
    {
        Tell(STD_OUTPUT_HANDLE, app.help());
        return false;
    }
    catch (const CLI::ParseError& error)
    {
        throw std::invalid_argument(std::string(error.what()) + ", see " + app.get_name() + " --help");
    }
}

// Tells why the program fails, in one line; its exit code.
inline int Fail(const CLI::App& app, const std::exception& error)
{
    Tell(STD_ERROR_HANDLE, app.get_name() + ": " + error.what() + "\n");
    return dynamic_cast<const std::invalid_argument*>(&error) ? 2 : 1;
}
