#include "logdesk/Steps.h"

#include "LogMsg.h"

#include <algorithm>
#include <cctype>
#include <charconv>

namespace logdesk
{

namespace
{

enum class Value
{
    None,
    Count,
    Tab,
    Switch,
    Size,
    Percent,
    SortKey,
    Level,
    Text
};

struct Form
{
    const char* name;
    StepAction action;
    Value value;
};

constexpr Form kForms[] = {
    {"home", StepAction::Home, Value::None},
    {"end", StepAction::End, Value::None},
    {"up", StepAction::Up, Value::Count},
    {"down", StepAction::Down, Value::Count},
    {"next-fold", StepAction::NextFold, Value::None},
    {"unfold", StepAction::Unfold, Value::None},
    {"unfold-all", StepAction::UnfoldAll, Value::None},
    {"fold", StepAction::Fold, Value::None},
    {"next-error", StepAction::NextError, Value::None},
    {"previous-error", StepAction::PreviousError, Value::None},
    {"find", StepAction::Find, Value::Text},
    {"select", StepAction::Select, Value::Count},
    {"select-all", StepAction::SelectAll, Value::None},
    {"follow", StepAction::Follow, Value::Switch},
    {"tab", StepAction::Tab, Value::Tab},
    {"during", StepAction::During, Value::None},
    {"message", StepAction::Message, Value::Count},
    {"next-message-error", StepAction::NextMessageError, Value::None},
    {"previous-message-error", StepAction::PreviousMessageError, Value::None},
    {"find-message", StepAction::FindMessage, Value::Text},
    {"next-found", StepAction::NextFound, Value::None},
    {"previous-found", StepAction::PreviousFound, Value::None},
    {"sort", StepAction::Sort, Value::SortKey},
    {"level", StepAction::Level, Value::Level},
    {"report", StepAction::Report, Value::Switch},
    {"preview", StepAction::Preview, Value::Switch},
    {"show-in-log", StepAction::ShowInLog, Value::None},
    {"show-in-messages", StepAction::ShowInMessages, Value::None},
    {"log-text", StepAction::LogText, Value::Switch},
    {"messages", StepAction::Messages, Value::Switch},
    {"split", StepAction::Split, Value::Percent},
    {"dark", StepAction::Dark, Value::Switch},
    {"zoom", StepAction::Zoom, Value::Count},
    {"size", StepAction::Size, Value::Size},
    {"sample", StepAction::Sample, Value::None},
};

bool ParseNumber(const std::string& text, int least, int greatest, int& number)
{
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc() && result.ptr == end && number >= least && number <= greatest;
}

// "error-number", "source-line:desc": fields are named as users see them, in small letters.
bool ParseSortKey(const std::string& text, Step& step)
{
    const std::size_t colon = std::min(text.find(':'), text.size());
    const std::string direction = text.substr(colon);
    step.height = direction == ":desc" ? 1 : 0;
    for (step.count = 0; step.count < kLogMsgKindCount; ++step.count)
    {
        std::string name = LogMsgDataKindText(step.count);
        for (char& letter : name)
            letter =
                letter == ' ' ? '-' : static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
        if (text.substr(0, colon) == name)
            return direction.empty() || direction == ":asc" || direction == ":desc";
    }
    return false;
}

bool ParseLevel(const std::string& text, Step& step)
{
    step.count = text == "error" ? 4 : text == "warning" ? 3 : 0;
    return step.count > 0 || text == "all";
}

bool ParseValue(Value value, const std::string& text, Step& step)
{
    switch (value)
    {
    case Value::None:
        return false;
    case Value::Count:
        return ParseNumber(text, 1, 1'000'000'000, step.count);
    case Value::Tab: // 0: all logs
        return ParseNumber(text, 0, 5, step.count);
    case Value::Switch:
        step.count = text == "on" ? 1 : 0;
        return text == "on" || text == "off";
    case Value::Size: {
        const std::size_t times = text.find('x');
        return times != std::string::npos && ParseNumber(text.substr(0, times), 1, 10'000, step.count) &&
               ParseNumber(text.substr(times + 1), 1, 10'000, step.height);
    }
    case Value::Percent:
        return ParseNumber(text, 1, 99, step.count);
    case Value::SortKey:
        return ParseSortKey(text, step);
    case Value::Level:
        return ParseLevel(text, step);
    case Value::Text:
        step.text = text;
        return !text.empty();
    }
    return false;
}

} // namespace

bool ParseStep(const std::string& word, Step& step)
{
    const std::size_t colon = word.find(':');
    const std::string name = word.substr(0, colon);
    for (const Form& form : kForms)
    {
        if (name != form.name)
            continue;
        step = Step();
        step.action = form.action;
        if (colon == std::string::npos)
            return form.value == Value::None;
        return ParseValue(form.value, word.substr(colon + 1), step);
    }
    return false;
}

} // namespace logdesk
