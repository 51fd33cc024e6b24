#include "msgservice/saved/SavedSource.h"

#include <utility>

namespace msgservice
{
namespace
{

constexpr std::uint32_t kPieceMessages = 10'000;

// A writer holds a file for the moment of a commit. Who follows comes again anyway.
constexpr int kWaitToRead = 5'000; // milliseconds
constexpr int kWaitToFollow = 50;

} // namespace

SavedSource::SavedSource(const std::string& path, AtEnd atEnd, MessageFile::Access access)
    : m_file(path, access), m_atEnd(atEnd)
{
    m_file.SetWait(atEnd == AtEnd::Follow ? kWaitToFollow : kWaitToRead);
}

MessageSource::State SavedSource::Read(MessageSink& sink)
{
    if (m_hasFailed)
        return State::Ended;
    try
    {
        const MessageFile::Piece piece = m_file.Read(m_next, kPieceMessages, sink);
        m_next = piece.next;
        m_missing += piece.missing;
        m_wrongValues += piece.wrongValues;
        if (!piece.atEnd)
            return State::More;
    }
    catch (const MessageFileError& error)
    {
        if (m_atEnd == AtEnd::Follow && error.Why() == MessageFileError::Reason::InUse)
            return State::Waiting;
        m_notices += error.what() + std::string("\n");
        m_hasFailed = true;
    }
    TellWhatIsMissing();
    return m_atEnd == AtEnd::Follow && !m_hasFailed ? State::Waiting : State::Ended;
}

std::string SavedSource::Explanation()
{
    std::string text = "A saved file of " + std::to_string(m_file.Count()) + " messages";
    for (const auto& [name, before] : {std::pair("program", ", saved by "), std::pair("version", " "),
                                       std::pair("saved", ", "), std::pair("origin", ", from ")})
        if (const std::string value = m_file.About(name); !value.empty())
            text += before + value;
    return text + ".\n";
}

std::string SavedSource::TakeNotices()
{
    return std::exchange(m_notices, std::string());
}

void SavedSource::TellWhatIsMissing()
{
    const bool isDamageNew = m_file.IsDamaged() && !m_toldDamage;
    m_toldDamage = m_file.IsDamaged();
    const std::string missing =
        m_missing == 1 ? "1 message is missing" : std::to_string(m_missing) + " messages are missing";
    const std::string begin = m_file.Path() + ": ";
    if (m_missing > 0)
        m_notices += begin + (isDamageNew ? "it is damaged, and " : "") + missing + "\n";
    else if (isDamageNew)
        m_notices += begin + "it is damaged, though no message is known to be missing\n";
    if (m_wrongValues > 0)
        m_notices += begin + std::to_string(m_wrongValues) + " values were left out that cannot be right\n";
    m_missing = m_wrongValues = 0;
}

} // namespace msgservice
