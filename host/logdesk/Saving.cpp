#include "logdesk/Saving.h"

#include "logdesk/NumberText.h"

namespace logdesk
{

namespace
{

constexpr std::uint32_t kMessagesAStep = 1024;

} // namespace

// The thread frees the store, which is large, if nobody else shows it any more.
Saving::Saving(std::shared_ptr<const msgservice::MessageStore> store, std::uint32_t first, std::uint32_t end,
               std::string path, msgservice::SavedAbout about)
    : m_thread([this, store = std::move(store), first, end, path = std::move(path),
                about = std::move(about)]() mutable {
          m_outcome = Save(*store, first, end, path, about);
          m_isDone = true;
          store.reset();
      })
{
}

Saving::~Saving()
{
    Cancel();
}

const std::string& Saving::Outcome()
{
    if (m_thread.joinable())
        m_thread.join();
    return m_outcome;
}

std::string Saving::Save(const msgservice::MessageStore& store, std::uint32_t first, std::uint32_t end,
                         const std::string& path, const msgservice::SavedAbout& about)
{
    try
    {
        msgservice::MessageFileWriter file(path, msgservice::MessageFileWriter::Mode::Replace, about);
        for (std::uint32_t i = first; i < end; ++i)
        {
            if ((i - first) % kMessagesAStep == 0)
                m_work.Check(i - first, end - first, 0, 1);
            file.Add(msgservice::FieldsOf(store, i));
        }
        m_work.Check(1, 1, 0, 1);
        file.Commit();
        return CountText(end - first, "message") + (end - first == 1 ? " is" : " are") + " saved in " + path;
    }
    catch (const msgservice::Cancelled&)
    {
        return path + " was not saved: you have given it up";
    }
    catch (const std::bad_alloc&)
    {
        return path + " was not saved: there is not enough memory";
    }
    catch (const std::exception& error)
    {
        return error.what();
    }
}

} // namespace logdesk
