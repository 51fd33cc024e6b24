#include "logdesk/MessageText.h"

#include "logdesk/NumberText.h"

namespace logdesk
{

std::string MessagesText(const MessageState& state)
{
    if (state.busy)
        return (state.sorted ? "Sorting " : "Filtering ") +
               std::to_string(static_cast<int>(state.progress * 100)) + " %";
    if (state.saving)
        return "Saving " + std::to_string(static_cast<int>(state.saved * 100)) + " %";
    if (state.filtered)
        return NumberText(state.shown) + " of " + NumberText(state.all) + ", filtered";
    const std::string text = CountText(state.shown, "message");
    return state.cleared > 0 ? text + ", " + NumberText(state.cleared) + " cleared" : text;
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
