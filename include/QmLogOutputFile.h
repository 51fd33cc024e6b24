// A plain text file for a run's output, in the folder that the application registry names.
#pragma once

#include "QmLogApi.h"

#include "zemacore/String.h"

// Appends to "<folder><name>.TXT", where <folder> is the registry value "Run.Output.Path". The file is
// opened on the first write and begins each opening with a line feed and a line of ten hyphens. Without a
// folder, or when the file cannot be opened, every write does nothing, for the life of the object.
// No failure is reported. One thread at a time.
//
// A copy shares the handle of its source, and both close it: copies are for passing, not for keeping.
class QMLOG_API QmLogOutputFile
{
public:
    // Characters that formatted text may have.
    static constexpr unsigned kMaxFormatted = 4095;

    QmLogOutputFile() = default;
    QmLogOutputFile(const char* name);
    QmLogOutputFile(const QmLogOutputFile&) = default;
    QmLogOutputFile& operator=(const QmLogOutputFile&) = default;
    virtual ~QmLogOutputFile();

    // The file name without extension. No effect on a file that is already open.
    void SetName(const char* name);

    // Appends text formatted as printf does, without a line end.
    // A result of more than kMaxFormatted characters is a fatal range error, and one that cannot be formatted
    // a fatal format error: the process is ended.
    void Write(const char* format, ...) QMLOG_PRINTF(2, 3);

    // Appends a line feed and then the formatted text, in one write. The line feed comes first on purpose:
    // the file never ends with an empty line.
    void WriteLine(const char* format, ...) QMLOG_PRINTF(2, 3);

    // Appends `size` bytes as they are.
    void WriteDirect(const char* data, unsigned long long size);

protected:
    // Opens the file. Only the first call does anything, whether it succeeds or not.
    void Init();

private:
    bool m_initialised = false;
    ZEMA::String m_name;
    void* m_file = nullptr;
};
