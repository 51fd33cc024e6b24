#include "logdesk/MessageText.h"

namespace logdesk
{

namespace
{

// With commas between its thousands.
std::string Counted(std::uint32_t number)
{
    std::string text = std::to_string(number);
    for (std::size_t place = text.size(); place > 3; place -= 3)
        text.insert(place - 3, ",");
    return text;
}

} // namespace

std::string MessagesText(const MessageState& state)
{
    if (state.busy)
        return (state.sorted ? "Sorting " : "Filtering ") +
               std::to_string(static_cast<int>(state.progress * 100)) + " %";
    if (state.filtered)
        return Counted(state.shown) + " of " + Counted(state.all) + ", filtered";
    const std::string text = Counted(state.shown) + (state.shown == 1 ? " message" : " messages");
    return state.cleared > 0 ? text + ", " + Counted(state.cleared) + " cleared" : text;
}

std::string ErrorsText(std::uint32_t errors)
{
    return errors == 0 ? "No errors" : Counted(errors) + (errors == 1 ? " error" : " errors");
}

std::string MessagesButton(const MessageState& state)
{
    if (state.busy)
        return "Cancel";
    return state.filtered ? "Remove filters" : "";
}

} // namespace logdesk
