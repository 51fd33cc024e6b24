// Messages as the clipboard takes them, made step by step.
#pragma once

#include "logreport/model/LogStream.h"

#include <string>

namespace logreport
{

// The messages from `first` to `last` as lines of text and as CSV. Both are UTF-8, whatever the messages are,
// and without NULs, at which whoever pastes them would end.
class CopiedMessages
{
public:
    CopiedMessages(ILogMsgService& service, const std::vector<std::int32_t>& fields, std::uint32_t first,
                   std::uint32_t last);
    CopiedMessages(const CopiedMessages&) = delete; // the streams write into it
    CopiedMessages& operator=(const CopiedMessages&) = delete;

    void SetGuardsFormulas(bool guards) { m_tableStream.SetGuardsFormulas(guards); }

    // Adds up to `count` messages. Answers true as long as there are more.
    bool Step(std::uint32_t count);

    double Progress() const; // 0 to 1
    const std::string& Text() const { return m_text; }
    const std::string& Table() const { return m_table; }

private:
    std::uint32_t m_first;
    std::uint32_t m_last;
    std::uint64_t m_next; // beyond the last one there may be no id
    std::string m_text;
    std::string m_table;
    ZEMA::StringOutput m_textOutput{m_text};
    ZEMA::StringOutput m_tableOutput{m_table};
    CQmLogStreamText m_textStream;
    CQmLogStreamCSV m_tableStream;
};

} // namespace logreport
