#include "logtool/MessageFlow.h"

#include "msgservice/view/MessageOrder.h"

#include <utility>

namespace logtool
{

using msgservice::MessageStore;
using msgservice::View;

MessageFlow::MessageFlow(msgservice::ViewDescription description, Taker take)
    : m_description(std::move(description)), m_take(std::move(take)), m_store(MessageStore::Make())
{
}

msgservice::MessageSource::State MessageFlow::Read(msgservice::MessageSource& source)
{
    if (msgservice::IsSorted(m_description.keys))
        return source.Read(*m_store);

    // The message shown last comes along, for the next one may be its duplicate.
    const auto piece = MessageStore::Make();
    const bool comesAlong = m_last && !m_description.showDuplicates;
    if (comesAlong)
        piece->Add(msgservice::FieldsOf(*m_store, *m_last));
    const auto state = source.Read(*piece);
    m_store = piece;
    View view(m_store, m_description);
    view.Append(m_store->Count());
    HandOn(view, comesAlong ? 1 : 0);
    return state;
}

void MessageFlow::Finish()
{
    if (!msgservice::IsSorted(m_description.keys))
        return;
    View view(m_store, m_description);
    msgservice::Work unwatched;
    view.Insert(m_store->Count(), unwatched);
    HandOn(view, 0);
}

void MessageFlow::HandOn(const View& view, std::uint32_t from)
{
    for (std::uint32_t position = from; position < view.Count(); ++position)
        m_take(*m_store, view.MessageAt(position));
    m_count += view.Count() - from;
    if (view.Count() > 0)
        m_last = view.MessageAt(view.Count() - 1);
}

} // namespace logtool
