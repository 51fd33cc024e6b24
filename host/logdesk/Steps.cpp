#include "logdesk/Steps.h"

#include <charconv>

namespace logdesk
{

namespace
{

enum class Value
{
    kNone,
    kCount,
    kSwitch,
    kSize,
    kText
};

struct Form
{
    const char* name;
    StepAction action;
    Value value;
};

constexpr Form kForms[] = {
    {"home", StepAction::kHome, Value::kNone},
    {"end", StepAction::kEnd, Value::kNone},
    {"up", StepAction::kUp, Value::kCount},
    {"down", StepAction::kDown, Value::kCount},
    {"next-fold", StepAction::kNextFold, Value::kNone},
    {"unfold", StepAction::kUnfold, Value::kNone},
    {"unfold-all", StepAction::kUnfoldAll, Value::kNone},
    {"fold", StepAction::kFold, Value::kNone},
    {"next-error", StepAction::kNextError, Value::kNone},
    {"previous-error", StepAction::kPreviousError, Value::kNone},
    {"find", StepAction::kFind, Value::kText},
    {"select", StepAction::kSelect, Value::kCount},
    {"select-all", StepAction::kSelectAll, Value::kNone},
    {"follow", StepAction::kFollow, Value::kSwitch},
    {"size", StepAction::kSize, Value::kSize},
    {"sample", StepAction::kSample, Value::kNone},
};

bool ParseNumber(const std::string& text, int least, int greatest, int& number)
{
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc() && result.ptr == end && number >= least && number <= greatest;
}

bool ParseValue(Value value, const std::string& text, Step& step)
{
    switch (value)
    {
    case Value::kNone:
        return false;
    case Value::kCount:
        return ParseNumber(text, 1, 1'000'000'000, step.count);
    case Value::kSwitch:
        step.count = text == "on" ? 1 : 0;
        return text == "on" || text == "off";
    case Value::kSize: {
        const std::size_t times = text.find('x');
        return times != std::string::npos && ParseNumber(text.substr(0, times), 1, 10'000, step.count) &&
               ParseNumber(text.substr(times + 1), 1, 10'000, step.height);
    }
    case Value::kText:
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
            return form.value == Value::kNone;
        return ParseValue(form.value, word.substr(colon + 1), step);
    }
    return false;
}

} // namespace logdesk
