// The messages: where they come from, the service that orders them, and the list that shows them.
#pragma once

#include "logdesk/MessageList.h"
#include "logdesk/MessageText.h"
#include "msgservice/MsgService.h"
#include "msgservice/session/SessionRows.h"
#include "msgservice/session/SessionSource.h"
#include "msgservice/text/TextFormat.h"

#include <atomic>

namespace logdesk
{

// How sources are read.
struct MessageOptions
{
    bool follow = true;        // what comes later; else it is of no interest, as for pictures
    std::uint32_t traffic = 0; // messages a second that are made up beside
};

// Sources are read by a thread, which posts a message to the parent window when there is something to
// publish. Whatever else changes the view, focus, selection and place in the list stay with their messages.
class MessageView
{
public:
    // `cleared` is called when the user has cleared the list.
    MessageView(MessageList::Commands commands, std::function<void()> cleared);
    ~MessageView();
    MessageView(const MessageView&) = delete;
    MessageView& operator=(const MessageView&) = delete;

    // Makes the list. Publish is to be called when `parent` gets `wake`, and now and then.
    BOOL Create(CWnd& parent, UINT id, UINT wake, const MessageOptions& options);
    void Publish();

    // After the window has become dark, or light.
    void UseColours();

    MessageList& List() { return m_list; }
    msgservice::MsgService& Service() { return m_service; }

    // The rows of the logs that `findLogs` finds in the log folder, and once another session begins there, of
    // that. It is called on the reader's thread.
    void ShowSession(msgservice::SessionSource::FindLogs findLogs);

    // The messages of a file, which is opened for reading only. False if it cannot be opened: the service's
    // notices tell why, and what is shown stays.
    bool ShowFile(const std::string& path);

    // The file that is shown; empty for the session.
    std::string File();

    // What the user should know, a sentence a line, since the last call.
    std::string TakeNotices();

    // Which row of the session a message is, and the other way round: kNoLogMsgId for a row that is not among
    // the messages, or not shown by this view.
    std::optional<msgservice::SessionRows::Row> RowOf(std::uint32_t id);
    std::uint32_t IdOf(std::string_view log, std::uint32_t row);

    // The message with the focus; kNoLogMsgId if there is none.
    std::uint32_t FocusedId();

    // The first line of a field of a message; empty if there is no such message.
    std::string FieldLine(std::uint32_t id, ILogMsgDataKind field);

    MessageState State();
    void RemoveFilters();
    void CancelApply(); // and shows again what is in force

    // Leaves out all messages that there are, or takes them back in.
    void Clear();
    void ShowCleared();

    // Waits until all is read and shown. For sources that are not followed.
    void Settle();

private:
    // Notices a new view before the list is told of it.
    class ViewWatch : public ILogViewer
    {
    public:
        explicit ViewWatch(MessageList& list) : m_list(list) {}
        void SetLogMsgService(ILogMsgService*) override {}
        void AddMsg(std::uint32_t, ILogMsgData*) override {}
        void SetMsgIdRange(std::uint32_t, std::uint32_t) override;
        void Present(std::uint32_t) override {}
        CWnd* GetWnd() override { return nullptr; }
        bool isOther = false;

    private:
        MessageList& m_list;
    };

    std::unique_ptr<msgservice::MessageSource> Open(const std::string& path);
    std::unique_ptr<msgservice::MessageSource> WithTraffic(std::unique_ptr<msgservice::MessageSource> source);

    void Wake();
    bool ShowsSession() const;

    MessageOptions m_options;
    HWND m_parent = nullptr;
    UINT m_wake = 0;
    msgservice::TextFormats m_formats;
    std::string m_notices;                           // about the user's own formats
    std::shared_ptr<msgservice::SessionRows> m_rows; // of the session that was shown last
    msgservice::SessionSource::FindLogs m_findLogs;
    std::atomic<bool> m_isWoken = false;
    MessageList m_list;
    ViewWatch m_watch;
    msgservice::MsgService m_service; // last: its threads end first
};

} // namespace logdesk
