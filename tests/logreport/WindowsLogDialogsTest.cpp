// The dialogs of the message viewer, driven by their controls.
#include "ReportHeaderCtrl.h"
#include "tests/logreport/LogDialogDriver.h"
#include "tests/logreport/PlainMessages.h"
#include "tests/support/NothingLeft.h"

namespace
{

void Choose(HWND dialog, int id, const char* text)
{
    ::SendDlgItemMessage(dialog, id, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                         reinterpret_cast<LPARAM>(text));
}

int Entries(HWND dialog, int id)
{
    return static_cast<int>(::SendDlgItemMessage(dialog, id, CB_GETCOUNT, 0, 0));
}

struct FilterService : PlainService
{
    void GetSortKeys(LogMsgSortKey* given, std::int32_t count) override { std::copy_n(keys, count, given); }
    void SetSortKeys(const LogMsgSortKey* wanted, std::int32_t count) override
    {
        std::copy_n(wanted, count, keys);
    }
    void SetFilters(const LogMsgFilter* wanted, std::int32_t count) override
    {
        std::copy_n(wanted, count, filters.begin());
    }
    void GetShowDuplicate(std::int32_t& show) override { show = duplicates; }
    void SetShowDuplicate(std::int32_t show) override { duplicates = show; }
    LogMsgSortKey keys[3];
    std::int32_t duplicates = 0;
};

class LogDialogs : public MessageViewerTest
{
protected:
    LogDialogs() { viewer.SetLogMsgService(&full); }
    ~LogDialogs() override { viewer.SetLogMsgService(nullptr); }

    FilterService full;
};

TEST_F(LogDialogs, ConfigurationIsReadAndWritten)
{
    full.keys[0] = {kLogMsgWho, 0};
    full.filters[1] = {kLogMsgBody, static_cast<LogMsgFilterOperator>(5), "value", 1};
    {
        Driver driver("Log Configuration", [](HWND dialog) {
            EXPECT_EQ("307 174", SizeOf(dialog));
            EXPECT_EQ("Sort on:", TextOf(dialog, 2049));
            EXPECT_EQ("Filter on:", TextOf(dialog, 2050));
            EXPECT_EQ("14 14 14 3", Line(Entries(dialog, 2003), Entries(dialog, 2017), Entries(dialog, 2018),
                                         Entries(dialog, 2024)));
            EXPECT_EQ("Who <Empty>", TextOf(dialog, 2003) + " " + TextOf(dialog, 2005));
            EXPECT_EQ("0 1 1 0",
                      Line(::IsDlgButtonChecked(dialog, 2008), ::IsDlgButtonChecked(dialog, 2009),
                           ::IsDlgButtonChecked(dialog, 2011), ::IsDlgButtonChecked(dialog, 2012)));
            EXPECT_EQ("Body Contain value 1", TextOf(dialog, 2020) + " " + TextOf(dialog, 2021) + " " +
                                                  TextOf(dialog, 2022) +
                                                  Line("", ::IsDlgButtonChecked(dialog, 2027)));
            EXPECT_EQ(0u, ::IsDlgButtonChecked(dialog, 2019));
            Choose(dialog, 2003, "<Empty>");
            Choose(dialog, 2017, "Error Number");
            ::SendDlgItemMessage(dialog, 2015, BM_CLICK, 0, 0);
            Choose(dialog, 2023, "Topic");
            Choose(dialog, 2024, "Not empty");
            ::SetDlgItemText(dialog, 2022, "other");
            ::SendDlgItemMessage(dialog, 2027, BM_CLICK, 0, 0);
            ::SendDlgItemMessage(dialog, 2019, BM_CLICK, 0, 0);
            ::SendMessage(dialog, WM_COMMAND, IDOK, 0);
        });
        viewer.ConfigureView();
    }
    EXPECT_EQ("-1 -1 4 0",
              Line(full.keys[0].field, full.keys[1].field, full.keys[2].field, full.keys[2].ascending));
    EXPECT_EQ("3 0 other 0", Line(full.filters[1].field, full.filters[1].operation,
                                  full.filters[1].value.c_str(), full.filters[1].matchCase));
    EXPECT_EQ("2 2 1 1",
              Line(full.filters[2].field, full.filters[2].operation, full.duplicates, full.applied));
    EXPECT_FALSE(viewer.GetHeaderCtrl()->IsItemFiltered(0));

    // "Cancel", and no service: nothing changes. A service that is busy is not asked either.
    {
        Driver driver("Log Configuration", [](HWND dialog) {
            Choose(dialog, 2003, "Body");
            ::SendMessage(dialog, WM_COMMAND, IDCANCEL, 0);
        });
        viewer.ConfigureView();
    }
    viewer.SetLogMsgService(nullptr);
    {
        Driver driver("Log Configuration", [](HWND dialog) {
            EXPECT_EQ("<Empty> ", TextOf(dialog, 2003) + " " + TextOf(dialog, 2006));
            EXPECT_EQ("0 0", Line(::IsDlgButtonChecked(dialog, 2008), ::IsDlgButtonChecked(dialog, 2009)));
            ::SendMessage(dialog, WM_COMMAND, IDOK, 0);
        });
        viewer.ConfigureView();
    }
    EXPECT_EQ("-1 1", Line(full.keys[0].field, full.applied));
}

TEST_F(LogDialogs, AServiceMayGoWhileADialogIsOpen)
{
    {
        Driver driver("Log Configuration", [this](HWND dialog) {
            viewer.SetLogMsgService(nullptr);
            ::SendMessage(dialog, WM_COMMAND, IDOK, 0);
        });
        viewer.ConfigureView();
    }
    EXPECT_EQ(0, full.applied);
    {
        Driver driver("Edit Filter", [this](HWND dialog) {
            viewer.DestroyWindow();
            ::SendMessage(dialog, WM_COMMAND, IDOK, 0);
        });
        viewer.EditFilter(kLogMsgBody, "x");
    }
    EXPECT_EQ(0, full.applied);
}

TEST_F(LogDialogs, OneFilterIsEdited)
{
    full.filters[0].field = kLogMsgLevel;
    {
        Driver driver("Edit Filter", [](HWND dialog) {
            EXPECT_EQ("353 28", SizeOf(dialog));
            EXPECT_EQ("Body contain 1",
                      TextOf(dialog, 2000) + " " + TextOf(dialog, 2001) + Line("", Entries(dialog, 2001)));
            EXPECT_EQ("value", TextOf(dialog, 2002));
            EXPECT_EQ(::GetDlgItem(dialog, 2002), ::GetFocus());
            ::SetDlgItemText(dialog, 2002, "other");
            Choose(dialog, 2000, "Who");
            ::SendMessage(dialog, WM_COMMAND, IDOK, 0);
        });
        viewer.EditFilter(kLogMsgBody, "value");
    }
    EXPECT_EQ("1 11 0 other 1", Line(full.filters[0].field, full.filters[1].field, full.filters[1].operation,
                                     full.filters[1].value.c_str(), full.applied));
    {
        Driver driver("Edit Filter", [](HWND dialog) { ::SendMessage(dialog, WM_COMMAND, IDCANCEL, 0); });
        viewer.EditFilter(kLogMsgBody, "value");
    }
    EXPECT_EQ(1, full.applied);
    ExpectNothingLeft(
        [this] {
            const auto cancel = [](HWND dialog) { ::SendMessage(dialog, WM_COMMAND, IDCANCEL, 0); };
            const auto filter = std::make_unique<Driver>("Edit Filter", cancel);
            viewer.EditFilter(kLogMsgBody, "value");
            const auto configuration = std::make_unique<Driver>("Log Configuration", cancel);
            viewer.ConfigureView();
        },
        LongRounds());
}

} // namespace
