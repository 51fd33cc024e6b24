// States that are kept from one run to the next, and a column of the message viewer.
#pragma once

#include "LogMsg.h"
#include "QmLogApi.h"

#include <cstdint>

class QmCommandLineWorker;

// A state that goes from the process (the running control, window ...) to the user's profile and back. All
// operations answer whether they succeeded; the ones that are not overridden do nothing and succeed.
class QMLOG_API IConfigState
{
public:
    virtual ~IConfigState();

    virtual bool ReadFromProcess();
    virtual bool WriteToProcess();
    virtual bool ReadFromProfile();
    virtual bool WriteToProfile();
    virtual bool ReadFromCommandLine(QmCommandLineWorker& line);

    // Of derived states' own.
    virtual bool Hook6();
    virtual bool Hook7();

    // Gives the process what the profile and then the command line say. The first step that fails is the
    // last.
    virtual bool Load();

    // Likewise without the profile.
    virtual bool LoadFromCommandLine();

    // Puts what the process has into the profile. Does nothing, with success, as long as the state is not
    // enabled.
    virtual bool Save();

    // At first it is.
    bool IsEnabled() const { return m_enabled; }
    void SetEnabled(bool enabled) { m_enabled = enabled; }

protected:
    IConfigState() = default;
    IConfigState(const IConfigState&) = default;
    IConfigState& operator=(const IConfigState&) = default;

private:
    bool m_enabled = true;
};

// A column of the viewer.
class CQmLogStateColumn
{
public:
    CQmLogStateColumn() = default;
    CQmLogStateColumn(ILogMsgDataKind field, std::int32_t width) : m_field(field), m_width(width) {}

    ILogMsgDataKind GetField() const { return m_field; }
    void SetField(ILogMsgDataKind field) { m_field = field; }

    // In pixels.
    std::int32_t GetWidth() const { return m_width; }
    void SetWidth(std::int32_t width) { m_width = width; }

private:
    ILogMsgDataKind m_field = kLogMsgNone;
    std::int32_t m_width = 100;
};
