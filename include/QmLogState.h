// The layout of a message viewer, kept from one run to the next.
#pragma once

#include "LogMsg.h"
#include "QmLogApi.h"
#include "wintypes.h"

#include <cstdint>
#include <memory>

class CReportCtrlLog;
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

// The layout of one message viewer. In the profile it is the section "Log.Report":
//
//   Column.0.SubItem, Column.1.SubItem ...   the fields with a column, from left to right, until a key is
//                                            missing; at most 100 are read
//   Column.0.Width, Column.1.Width ...       in pixels, 100 if missing
//   Follow, Header, Report                   0 or 1
//   Color.Warning, Color.Error
//
// What is missing leaves the state as it is; without any profile all of it is read as 0.
// `Load` applies it to the viewer; the viewer saves its own when its window is destroyed.
class QMLOG_API CQmLogState : public IConfigState
{
public:
    // The state of `viewer`, which is not owned and is used by the operations with "Process" in their names,
    // Load and Save only. No columns, following, with header, not as a report, in the colours that viewers
    // have at first.
    explicit CQmLogState(CReportCtrlLog* viewer);
    ~CQmLogState() override;
    CQmLogState(const CQmLogState&) = delete;
    CQmLogState& operator=(const CQmLogState&) = delete;

    bool ReadFromProcess() override;

    // Without columns the viewer keeps those that it has. A column whose field is no field or comes a second
    // time is left out, and one of no sensible width gets the viewer's own.
    bool WriteToProcess() override;

    bool ReadFromProfile() override;
    bool WriteToProfile() override;

    // From left to right. A position outside 0 to GetColumnCount() - 1 raises the platform's invalid-argument
    // exception.
    std::int32_t GetColumnCount() const;
    const CQmLogStateColumn& GetColumn(std::int32_t position) const;
    void SetColumn(std::int32_t position, const CQmLogStateColumn& column);
    void AddColumn(const CQmLogStateColumn& column);
    void RemoveAllColumns();

    // Each 1 or 0: the newest message is kept in sight; there is a header; messages are shown as rows of a
    // report.
    std::int32_t GetFollow() const;
    void SetFollow(std::int32_t follow);
    std::int32_t GetHeader() const;
    void SetHeader(std::int32_t header);
    std::int32_t GetReport() const;
    void SetReport(std::int32_t report);

    // That of the system for text in windows at first. It is held only: neither viewer nor profile has it.
    COLORREF GetTextColor() const;
    void SetTextColor(COLORREF color);

    COLORREF GetWarningColor() const;
    void SetWarningColor(COLORREF color);
    COLORREF GetErrorColor() const;
    void SetErrorColor(COLORREF color);

private:
    struct Data;
    std::unique_ptr<Data> m_data;
};
