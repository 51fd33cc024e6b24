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

    // Act on the open dialog, which a button then ends.
    void Configure(const std::function<void(HWND)>& act, WPARAM button = IDOK)
    {
        const Driver driver("Log Configuration", Ended(act, button));
        viewer.ConfigureView();
    }
    void EditFilter(const std::function<void(HWND)>& act, WPARAM button = IDOK)
    {
        const Driver driver("Edit Filter", Ended(act, button));
        viewer.EditFilter(kLogMsgBody, "value");
    }
    static std::function<void(HWND)> Ended(const std::function<void(HWND)>& act, WPARAM button)
    {
        return [=](HWND dialog) { act(dialog), ::SendMessage(dialog, WM_COMMAND, button, 0); };
    }

    FilterService full;
};

TEST_F(LogDialogs, ConfigurationIsReadAndWritten)
{
    full.keys[0] = {kLogMsgWho, 0};
    full.filters[1] = {kLogMsgBody, static_cast<LogMsgFilterOperator>(5), "value", 1};
    Configure([](HWND dialog) {
        EXPECT_EQ("307 174", SizeOf(dialog));
        EXPECT_EQ("Sort on:", TextOf(dialog, 2049));
        EXPECT_EQ("Filter on:", TextOf(dialog, 2050));
        EXPECT_EQ("14 14 14 3", Line(Entries(dialog, 2003), Entries(dialog, 2017), Entries(dialog, 2018),
                                     Entries(dialog, 2024)));
        EXPECT_EQ("Who <Empty>", TextOf(dialog, 2003) + " " + TextOf(dialog, 2005));
        EXPECT_EQ("0 1 1 0", Line(::IsDlgButtonChecked(dialog, 2008), ::IsDlgButtonChecked(dialog, 2009),
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
    });
    EXPECT_EQ("-1 -1 4 0",
              Line(full.keys[0].field, full.keys[1].field, full.keys[2].field, full.keys[2].ascending));
    EXPECT_EQ("3 0 other 0", Line(full.filters[1].field, full.filters[1].operation,
                                  full.filters[1].value.c_str(), full.filters[1].matchCase));
    EXPECT_EQ("2 2 1 1",
              Line(full.filters[2].field, full.filters[2].operation, full.duplicates, full.applied));
    EXPECT_FALSE(viewer.GetHeaderCtrl()->IsItemFiltered(0));

    // "Cancel", and no service: nothing changes. A service that is busy is not asked either.
    Configure([](HWND dialog) { Choose(dialog, 2003, "Body"); }, IDCANCEL);
    viewer.SetLogMsgService(nullptr);
    Configure([](HWND dialog) {
        EXPECT_EQ("<Empty> ", TextOf(dialog, 2003) + " " + TextOf(dialog, 2006));
        EXPECT_EQ("0 0", Line(::IsDlgButtonChecked(dialog, 2008), ::IsDlgButtonChecked(dialog, 2009)));
    });
    EXPECT_EQ("-1 1", Line(full.keys[0].field, full.applied));
}

TEST_F(LogDialogs, AServiceMayGoWhileADialogIsOpen)
{
    Configure([this](HWND) { viewer.SetLogMsgService(nullptr); });
    EXPECT_EQ(0, full.applied);
    EditFilter([this](HWND) { viewer.DestroyWindow(); });
    EXPECT_EQ(0, full.applied);
}

TEST_F(LogDialogs, OneFilterIsEdited)
{
    full.filters[0].field = kLogMsgLevel;
    EditFilter([](HWND dialog) {
        EXPECT_EQ("353 28", SizeOf(dialog));
        EXPECT_EQ("Body contain 1",
                  TextOf(dialog, 2000) + " " + TextOf(dialog, 2001) + Line("", Entries(dialog, 2001)));
        EXPECT_EQ("value", TextOf(dialog, 2002));
        EXPECT_EQ(::GetDlgItem(dialog, 2002), ::GetFocus());
        ::SetDlgItemText(dialog, 2002, "other");
        Choose(dialog, 2000, "Who");
    });
    EXPECT_EQ("1 11 0 other 1", Line(full.filters[0].field, full.filters[1].field, full.filters[1].operation,
                                     full.filters[1].value.c_str(), full.applied));
    const auto nothing = [](HWND) {};
    EditFilter(nothing, IDCANCEL);
    EXPECT_EQ(1, full.applied);
    ExpectNothingLeft([&] { EditFilter(nothing, IDCANCEL), Configure(nothing, IDCANCEL); }, LeakRounds());
}

} // namespace
