#include "CommandLine.h"

#include <CLI/CLI.hpp>

#include <windows.h>

#include <stdexcept>

namespace
{

const char* const kExitCodes =
    "Exit code: 0 done, 1 something cannot be read, written or started, 2 asked wrongly.";

// To the standard output or error; where the program was started without them, in a message box.
void Tell(DWORD stream, const std::string& text)
{
    DWORD written = 0;
    if (!::WriteFile(::GetStdHandle(stream), text.data(), static_cast<DWORD>(text.size()), &written, nullptr))
        ::MessageBoxA(nullptr, text.c_str(), nullptr, MB_OK);
}

} // namespace

// CLI11 takes seconds to compile: this file alone includes it.
struct CommandLine::Data
{
    CLI::App app;
};

CommandLine::CommandLine(const char* name, const char* about) : m_data(new Data{CLI::App(about, name)})
{
    CLI::App& app = m_data->app;
    app.set_help_flag("-h,--help", "show this text");
    app.footer(kExitCodes);
    app.allow_windows_style_options(false); // a path may begin with a slash
}

CommandLine::~CommandLine() = default;

void CommandLine::AddOperand(const char* label, std::string& value, Need need, const char* help)
{
    m_data->app.add_option(label, value, help)->required(need == Need::Required);
}

void CommandLine::AddFlag(const char* names, bool& value, const char* help)
{
    m_data->app.add_flag(names, value, help);
}

void CommandLine::AddText(const char* names, const char* label, std::string& value, const char* help)
{
    m_data->app.add_option(names, value, help)->type_name(label);
}

void CommandLine::AddValue(const char* names, const char* label, std::function<void(const std::string&)> take,
                           const char* help)
{
    m_data->app.add_option_function<std::string>(names, take, help)->type_name(label);
}

bool CommandLine::Read(int count, char** words)
{
    CLI::App& app = m_data->app;
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

int CommandLine::Fail(const std::exception& error) const
{
    Tell(STD_ERROR_HANDLE, m_data->app.get_name() + ": " + error.what() + "\n");
    return dynamic_cast<const std::invalid_argument*>(&error) ? 2 : 1;
}
