// Times in what logtool shows.
#include "LogtoolTest.h"

#include "QmLogTimes.h"
#include "msgservice/session/ClockText.h"

namespace
{

constexpr QmLogTimeValue kMinute = 60000 * kQmLogMillisecond;

class LogtoolTimes : public LogtoolTest
{
protected:
    LogtoolTimes()
    {
        session.files.now = *msgservice::ReadLocalTime("2026-11-23 14:03:10.5", 0);
        QmLogSetTimes(true);
    }
    ~LogtoolTimes() override { QmLogSetTimes(false); }

    void Pass(QmLogTimeValue time, const std::string& script)
    {
        session.files.now += time;
        Play(script);
    }
};

TEST_F(LogtoolTimes, AreShownAndChooseRows)
{
    Play("'Main+head' 'Main=a' 'Run=b'");
    Pass(kMinute + 5 * kQmLogMillisecond, "'Main=c' 'Main-'");
    Pass(-30 * 60 * kMinute, "'Main?open' 'Main=d'");
    EXPECT_EQ("2026-11-23 14:03:10.500     head\n2026-11-23 14:03:10.500+    a\n"
              "2026-11-23 14:03:10.500+  b\n2026-11-23 14:04:10.505     c\n"
              "-- the clock was set back by 1 d 6 h\n"
              "2026-11-22 08:04:10.505     open\n2026-11-22 08:04:10.505+    d\n",
              Run("cat --times"));
    EXPECT_EQ("2026-11-23 14:04:10.505       4  Main    c\n",
              Run("cat --times --numbers --from 4 --to 4 --log Main"));
    EXPECT_EQ("  c\n  open\n  d\n", Run("cat --from-time 14:04"));
    EXPECT_EQ("  head\n  a\nb\n", Run("cat --to-time '2026-11-23 14:04:10.505'"));
    EXPECT_EQ("", Run("cat --from-time 14:05"));
    EXPECT_EQ("2026-11-23 14:03:10.500     head\n2026-11-23 14:03:10.500+    a\n"
              "2026-11-23 14:03:10.500+  b\n2026-11-23 14:04:10.505     c\n",
              Run("during 1 --times"));
    EXPECT_EQ("2 logs, 6 rows, 2 blocks, 0 errors\n"
              "2026-11-23 14:03:10.500   head  [Main, 4 rows, 1 min 0 s]\n"
              "2026-11-22 08:04:10.505   open  [Main, 2 rows, over 0.000 s]\n",
              Run("tree --times"));
    EXPECT_EQ("note: Log.TIM: row 3: the clock was set back at number 5\n2 logs, 6 rows: no damage\n",
              Run("verify"));
    EXPECT_EQ("logtool: --from-time: '25:00' is no time: 14:03, 14:03:10.5 or \"2026-11-23 14:03\"\nexit 2",
              Run("cat --from-time 25:00"));
}

TEST_F(LogtoolTimes, AreNotedWhereTheUserWantsThem)
{
    QmLogSetTimes(false);
    host.inputs["a.txt"] = {"one\n"};
    EXPECT_EQ("", Run("write Main a.txt"));
    EXPECT_FALSE(session.files.Exists(session.Path("Log.TIM")));
    EXPECT_EQ("logtool: --times: the session in C:\\Logs\\ has no times: see \"logtool help write\"\nexit 2",
              Run("cat --times"));
    host.inputs["a.txt"] = {"two\n"};
    EXPECT_EQ("", Run("write Main a.txt --times"));
    host.logs = {"Main"};
    EXPECT_EQ(std::string(26, ' ') + "one\n2026-11-23 14:03:10.500   two\n", Run("cat --times"));
}

TEST(ClockText, ReadsWhatItWritesAndNothingElse)
{
    const QmLogTimeValue day = *msgservice::ReadLocalTime("2026-11-23", 0);
    const std::pair<const char*, const char*> cases[] = {
        {"14:03", "2026-11-23 14:03:00.000"},
        {"4:03:09", "2026-11-23 04:03:09.000"},
        {"14:03:10.05", "2026-11-23 14:03:10.050"},
        {"2026-02-28 23:59:59.9999999", "2026-02-28 23:59:59.999"},
        {"2026-02-28T23:59", "2026-02-28 23:59:00.000"},
        {"1969-12-31 10:00:00.25", "1969-12-31 10:00:00.250"},
        {"2026-13-01", ""},
        {"2026-11", ""},
        {"24:00", ""},
        {"14", ""},
        {"14:60", ""},
        {"14:03 ", ""},
        {"14:03:10.12345678", ""},
        {"", ""},
        {"x", ""},
        {"2026-11-23 14:", ""},
    };
    for (const auto& [text, expected] : cases)
    {
        const std::optional<QmLogTimeValue> time = msgservice::ReadLocalTime(text, day);
        EXPECT_EQ(expected, time ? msgservice::LocalTime(*time) : "") << text;
        EXPECT_TRUE(!time || msgservice::ReadLocalTime(msgservice::LocalTime(*time), 0) ==
                                 *time - *time % kQmLogMillisecond);
    }
    EXPECT_EQ(1000000000, msgservice::NanosecondsSince1970(116444736010000000));
    std::string durations;
    for (const QmLogTimeValue milliseconds : {4ll, 9999ll, 12540ll, 185000ll, 7380000ll, 363600000ll})
        durations += msgservice::DurationText(milliseconds * kQmLogMillisecond) + "|";
    EXPECT_EQ("0.004 s|9.999 s|12.5 s|3 min 5 s|2 h 3 min|4 d 5 h|", durations);
}

} // namespace
