// What the user can do with the times of rows.
#include "logdesk/DeskFrame.h"
#include "msgservice/session/ClockText.h"

#include <algorithm>

namespace logdesk
{

namespace
{

using Direction = msgservice::MsgService::Direction;

constexpr QmLogTimeValue kPause = 10000 * kQmLogMillisecond;
constexpr std::size_t kDateLength = 11; // of a local time, its blank counted
constexpr int kTimeColumns = 14;        // " 14:03:10.123+"

} // namespace

// The time of day, with a plus sign if the row was written a little later; empty for a row without a time.
std::string DeskFrame::TimeText(std::uint32_t number)
{
    QmLogTime time;
    if (!m_times.TimeOf(number, time))
        return "";
    const std::string text = msgservice::LocalTime(time.time);
    return text.substr(std::min(kDateLength, text.size())) + (time.isExact ? "" : "+");
}

// "14:03:10.123, after 12.5 s of nothing"
std::string DeskFrame::LongTimeText(std::uint32_t number)
{
    QmLogTime time;
    if (!m_times.TimeOf(number, time))
        return "";
    const std::string text = TimeText(number);
    return time.pause < kPause ? text
                               : text + ", after " + msgservice::DurationText(time.pause) + " of nothing";
}

// A session may get times while it is looked at.
void DeskFrame::RefreshTimes()
{
    const bool hadTimes = HasTimes();
    if (!m_times.Refresh())
        return;
    if (hadTimes != HasTimes())
        UseTimes();
    else if (m_options.showTimes)
        GetTextCtrl().Invalidate();
}

void DeskFrame::OpenTimes()
{
    m_times.SetFolder(m_place.folder.c_str());
    UseTimes();
}

void DeskFrame::UseTimes()
{
    GetTextCtrl().SetMarginTexts(HasTimes() && m_options.showTimes ? kTimeColumns : 0,
                                 [this](std::uint32_t number) { return " " + TimeText(number); });
}

void DeskFrame::ScanTimes(IQmCommand& collector)
{
    AddCommand(collector,
               {"Next Pause", [this] { GoToPause(Direction::Forward); }, VK_NEXT, kQmAlt, false, HasTimes()});
    AddCommand(collector, {"Previous Pause", [this] { GoToPause(Direction::Backward); }, VK_PRIOR, kQmAlt,
                           false, HasTimes()});
}

std::string DeskFrame::GoToTime(const std::string& typed)
{
    QmLogTime here;
    QmLogTimeSample first;
    if (!HasTimes())
        return "The session has no times: its writers had no clock";
    m_times.ReadSample(0, first);
    const QmLogTimeValue day = m_times.TimeOf(CaretNumber(), here) ? here.time : first.time;
    const std::optional<QmLogTimeValue> time = msgservice::ReadLocalTime(typed, day);
    std::uint32_t number = 0;
    if (!time)
        return "\"" + typed + "\" is no time such as 14:03, 14:03:10.5 or 2026-11-23 14:03";
    if (!m_times.NumberAt(*time, number))
        return "Nothing was written at " + msgservice::LocalTime(*time) + " or later";
    return GoToNumber(number);
}

// The row that ended the pause.
void DeskFrame::GoToPause(Direction direction)
{
    const bool forward = direction == Direction::Forward;
    QmLogTimeGap gap;
    if (!m_times.FindGap(CaretNumber(), kPause, forward, gap))
        return Tell(std::string("There is no ") + (forward ? "later" : "earlier") + " pause of " +
                    msgservice::DurationText(kPause) + " or more");
    const std::string error = GoToNumber(gap.after.number);
    Tell(!error.empty() ? error
                        : "Nothing for " + msgservice::DurationText(gap.after.time - gap.before.time) +
                              " before " + TimeText(gap.after.number));
}

} // namespace logdesk
