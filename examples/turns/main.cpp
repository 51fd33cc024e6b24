// A parent that logs, starts a child that logs into the same folder, and waits for it.
#include "../common/CommandLine.h"

#include <QmLogWriter.h>

#include <windows.h>

#include <string>

namespace
{

bool RunAndWait(std::string command)
{
    STARTUPINFOA startup = {};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process = {};
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &process))
        return false;
    WaitForSingleObject(process.hProcess, INFINITE);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return true;
}

int Child()
{
    CQmLogWriter& log = QmLogWriterDefine("Run");
    QmLogBlock block(log, kPlainKind, "Child");
    log.WriteLine("Step 1");
    return 0;
}

int Parent(const std::string& program)
{
    CQmLogWriter& log = QmLogWriterDefine("Main");
    log.WriteLine("Parent started");
    bool started = false;
    {
        QmLogBlock block(log, kNoticeKind, "Run child");
        QmLogWriterCloseAll(); // now the child can write
        started = RunAndWait('"' + program + "\" --child");
        log.WriteLine(started ? "Child has ended" : "Child cannot be started"); // opens the files again
    }
    log.WriteLine("Parent done");
    return started ? 0 : 1;
}

} // namespace

int main(int count, char** words)
{
    CommandLine line("turns", "Logs, starts a child that logs into the same folder, and waits for it.");
    try
    {
        bool child = false;
        line.AddFlag("--child", child, "be the child");
        if (!line.Read(count, words))
            return 0;
        const int code = child ? Child() : Parent(words[0]);
        QmLogWriterCloseAll();
        return code;
    }
    catch (const std::exception& error)
    {
        return line.Fail(error);
    }
}
