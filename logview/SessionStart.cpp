#include "logview/SessionStart.h"

#include "QmLogReader.h"
#include "QmLogWriter.h"
#include "logfiles/Counters.h"
#include "logview/FileLook.h"
#include "logview/LogNames.h"
#include "logview/RowSource.h"
#include "zemacore/File.h"
#include "zemacore/FileCalls.h"

#include <string>

namespace
{

using logview::CanOpen;
using logview::kCountersFile;

// Whether nobody has the file open, so that it can be deleted. One that is missing counts as free.
bool IsFree(const char* file)
{
    char path[MAX_PATH] = {};
    if (!QmLogMakeFilePath(file, path))
        return false;
    if (CanOpen(path, GENERIC_READ | GENERIC_WRITE, 0, OPEN_EXISTING))
        return true;
    return logview::IsMissing(ZEMA::FileCalls().LastError());
}

bool AreLogsFree()
{
    for (int file = 0; file < int{logview::kFileCount}; ++file)
    {
        const std::string name = logview::GetLogName(file);
        if (!IsFree((name + ".LOG").c_str()) || !IsFree((name + ".ROW").c_str()))
            return false;
    }
    return true;
}

void WriteHeader(CQmLogWriter& log)
{
    const QmLogBlock session(log, kPlainKind, "QmLog");
    {
        const QmLogBlock activation(log, kPlainKind, "Activated on VK.INI by:");
        const QmLogBlock setting(log, kDetailKind, "[QmLog]");
        log.Write("\nActive=1");
    }
    {
        const QmLogBlock version(log, kPlainKind, "Dev Version: 20041014");
    }
    {
        char path[MAX_PATH] = {};
        QmLogMakeFilePath(log.GetFilePath(), path);
        const QmLogBlock place(log, kPlainKind, "Text FilePath: ");
        log.Write(path);
        log.Write(".LOG");
    }
    {
        const QmLogBlock notice(log, kNoticeKind,
                                "Log.DAT,Main.LOG and Main.ROW are deleted before each session.");
        log.Write("\nQmLog.LOG contains QmLog internal errors.");
        log.Write("\nEnsure Disk Free Space availability.");
    }
    const QmLogBlock hint(
        log, kNoticeKind,
        "S'il n'y a pas d'autres messages, c'est peut-etre que VKFSM n'est pas en version patchee.");
}

// An analysis job of the sample session. `failure` is what went wrong; null for nothing.
struct SampleJob
{
    const char* caption;
    const char* key;
    int statements;
    const char* failure;
};

constexpr SampleJob kSampleJobs[] = {
    {"Dependency analysis", "Key=DEP-100", 3, nullptr},
    {"Call graph", "Key=CALL-210", 5, nullptr},
    {"Table usage", "Key=TAB-305", 2, "Table usage: no answer from the database"},
    {"Dead code", "Key=DEAD-412", 4, nullptr},
};

void WriteSampleJob(const SampleJob& job, CQmLogWriter& main, CQmLogWriter& source, CQmLogWriter& sql)
{
    const QmLogBlock block(main, kPlainKind, job.caption);
    {
        const QmLogBlock detail(source, kDetailKind, job.key);
        for (int i = 1; i <= job.statements; ++i)
        {
            const QmLogBlock statement(sql, kPlainKind, nullptr);
            sql.WriteFormat("SQL %d\nselect * from table;", i);
        }
    }
    if (job.failure)
    {
        const QmLogBlock error(main, kErrorKind, job.failure);
    }
}

} // namespace

namespace logview
{

bool StartSession()
{
    QmLogWriterCloseAll();
    for (int file = 0; file < int{kFileCount}; ++file)
        QmLogReaderDefine(GetLogName(file)).Close();
    char counters[MAX_PATH] = {};
    if (!QmLogMakeFilePath(kCountersFile, counters) || !AreLogsFree() || !IsFree(kCountersFile) ||
        !CanOpen(counters, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, OPEN_ALWAYS))
        return false;

    ZEMA_DeleteFile(counters);
    if (!logfiles::TryOpenCounters()) // a process has come between: the header would wait for it
        return false;
    char times[MAX_PATH] = {};
    if (QmLogMakeFilePath("Log.TIM", times))
        ZEMA_DeleteFile(times);
    for (int file = 0; file < int{kFileCount}; ++file)
        QmLogWriterDefine(GetLogName(file)).Clear();
    WriteHeader(QmLogWriterDefine(GetLogName(0)));
    return QmLogWriterCloseAll();
}

bool WriteSampleSession()
{
    QmLogWriterCloseAll();
    if (!logfiles::TryOpenCounters())
        return false;
    CQmLogWriter& main = QmLogWriterDefine("Main");
    CQmLogWriter& source = QmLogWriterDefine("Source");
    CQmLogWriter& sql = QmLogWriterDefine("SQL");
    {
        const QmLogBlock test(main, kPlainKind, "Taskel Log TEST");
        {
            const QmLogBlock step(main, kPlainKind, "Initialization");
            const QmLogBlock startup(main, kDetailKind, "Service Startup");
        }
        {
            const QmLogBlock step(main, kPlainKind, "Load Job Definition List");
            for (const SampleJob& job : kSampleJobs)
                WriteSampleJob(job, main, source, sql);
        }
        const QmLogBlock step(main, kPlainKind, "Service Shutdown");
    }
    return QmLogWriterCloseAll();
}

} // namespace logview
