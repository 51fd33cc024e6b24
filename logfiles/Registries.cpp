// The writers and readers that a process shares by name.

#include "QmLogReader.h"
#include "QmLogWriter.h"
#include "logfiles/Counters.h"
#include "logfiles/Registry.h"

namespace
{

// Made when the library is loaded, destroyed when it is unloaded.
logfiles::Registry<CQmLogWriter> writers("QmLogWriterDefine()");
logfiles::Registry<CQmLogReader> readers("QmLogReaderDefine()");

} // namespace

CQmLogWriter& QmLogWriterDefine(const char* name)
{
    return writers.Define(name);
}

bool QmLogWriterCloseAll()
{
    for (CQmLogWriter& writer : writers)
        writer.Close();
    logfiles::CloseCounters();
    return true;
}

CQmLogReader& QmLogReaderDefine(const char* name)
{
    return readers.Define(name);
}
