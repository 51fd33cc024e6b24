// A viewer of log messages, as the host of the messages sees it.
#pragma once

#include <cstdint>

class CWnd;
class ILogMsgData;
class ILogMsgService;

// What a host hangs on a viewer, to be told when the viewer lets go of it.
class ILogViewerData
{
public:
    virtual void Release() = 0;

protected:
    ~ILogViewerData() = default;
};

// Implemented by the message list and the watch window. All calls are made on the thread of the viewer's
// window; docs of ILogMsgService in LogMsg.h tell which calls a service has to make.
class ILogViewer
{
public:
    virtual ~ILogViewer() = default;

    // The service is not owned and must outlive the viewer's use of it; null takes it away.
    virtual void SetLogMsgService(ILogMsgService* service) = 0;

    // Stores the host's value; it replaces the one before without releasing it.
    virtual void SetViewerData(ILogViewerData* data) { m_viewerData = data; }

    // For how many messages the viewer is made; -1 if there is no limit.
    virtual std::int32_t GetMaxLogSize() { return -1; }

    // The host has nothing else to do.
    virtual void OnViewerIdle() {}

    // Message `id` is the newest. `message` is not owned and may be null.
    virtual void AddMsg(std::uint32_t id, ILogMsgData* message) = 0;

    // The messages to show are now those from `first` to `last`.
    virtual void SetMsgIdRange(std::uint32_t first, std::uint32_t last) = 0;

    // Brings the message to the user's eyes.
    virtual void Present(std::uint32_t id) = 0;

    virtual bool IsViewerReady() { return true; }
    virtual CWnd* GetWnd() = 0;

    // Releases the host's value and forgets it.
    virtual void ReleaseViewerData()
    {
        ILogViewerData* const data = m_viewerData;
        m_viewerData = nullptr;
        if (data)
            data->Release();
    }

protected:
    ILogViewer() = default;
    ILogViewer(const ILogViewer&) = default;
    ILogViewer& operator=(const ILogViewer&) = default;

private:
    ILogViewerData* m_viewerData = nullptr;
};
