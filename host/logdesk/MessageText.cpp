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

std::string CountText(std::uint32_t count, const char* what)
{
    return Counted(count) + " " + what + (count == 1 ? "" : "s");
}

std::string MessagesText(const MessageState& state)
{
    if (state.busy)
        return (state.sorted ? "Sorting " : "Filtering ") +
               std::to_string(static_cast<int>(state.progress * 100)) + " %";
    if (state.saving)
        return "Saving " + std::to_string(static_cast<int>(state.saved * 100)) + " %";
    if (state.filtered)
        return Counted(state.shown) + " of " + Counted(state.all) + ", filtered";
    const std::string text = CountText(state.shown, "message");
    return state.cleared > 0 ? text + ", " + Counted(state.cleared) + " cleared" : text;
}

std::string ErrorsText(std::uint32_t errors)
{
    return errors == 0 ? "No errors" : CountText(errors, "error");
}

std::string MessagesButton(const MessageState& state)
{
    if (state.busy || state.saving)
        return "Cancel";
    return state.filtered ? "Remove filters" : "";
}

} // namespace logdesk
