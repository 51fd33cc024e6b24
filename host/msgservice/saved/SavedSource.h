// The messages of a saved file, read piece by piece.
#pragma once

#include "msgservice/MessageSource.h"
#include "msgservice/saved/MessageFile.h"

namespace msgservice
{

// Its notices tell what is missing in the file, once all of it is read, and why reading ended early.
class SavedSource : public MessageSource
{
public:
    enum class AtEnd
    {
        Stop,
        Follow // what other programs append
    };

    // Throws MessageFileError, as MessageFile does.
    SavedSource(const std::string& path, AtEnd atEnd,
                MessageFile::Access access = MessageFile::Access::MayRepair);

    const MessageFile& File() const { return m_file; }

    // Throws only what the sink throws; the next call hands on the same messages again.
    State Read(MessageSink& sink) override;
    std::string TakeNotices() override;
    std::string Explanation() override;

private:
    void TellWhatIsMissing();

    MessageFile m_file;
    AtEnd m_atEnd;
    std::int64_t m_next = 1;
    std::uint64_t m_missing = 0;
    std::uint64_t m_wrongValues = 0;
    bool m_toldDamage = false;
    bool m_hasFailed = false;
    std::string m_notices;
};

} // namespace msgservice
