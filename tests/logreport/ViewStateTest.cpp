// The layout of a viewer in the profile, and the steps of a state.
#include "logreport/model/ViewState.h"
#include "QmLogState.h"
#include "zemacore/AppDataManager.h"

#include <iterator>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace
{

using logreport::ViewState;
using Columns = std::vector<CQmLogStateColumn>;

// Keeps values as "section/key"; it may be there without a store, or not be there.
class MemoryProfile : public IProfileStore, public IAppDataManager
{
public:
    MemoryProfile() : m_before(AppDataManager::LoadAppDataManager())
    {
        AppDataManager::SetAppDataManager(this);
    }
    ~MemoryProfile() override { AppDataManager::SetAppDataManager(m_before); }

    int GetInteger(const char* section, const char* key, int missing) override
    {
        const auto found = values.find(std::string(section) + "/" + key);
        return found != values.end() ? found->second : missing;
    }
    bool SetInteger(const char* section, const char* key, int value) override
    {
        values[std::string(section) + "/" + key] = value;
        return true;
    }
    COLORREF GetColor(const char* section, const char* key, COLORREF missing) override
    {
        return static_cast<COLORREF>(GetInteger(section, key, static_cast<int>(missing)));
    }
    bool SetColor(const char* section, const char* key, COLORREF value) override
    {
        return SetInteger(section, key, static_cast<int>(value));
    }
    bool RemoveKey(const char* section, const char* key) override
    {
        values.erase(std::string(section) + "/" + key);
        return true;
    }
    IAppDataAccess* GetAccess() override { return nullptr; }
    IProfileStore* GetProfileStore() override { return hasStore ? this : nullptr; }

    std::map<std::string, int> values;
    bool hasStore = true;

private:
    IAppDataManager* m_before;
};

// "3:100 1:50 | follow header report | warning error"
std::string Told(const Columns& columns)
{
    std::string told;
    for (const CQmLogStateColumn& column : columns)
        told += std::to_string(column.GetField()) + ":" + std::to_string(column.GetWidth()) + " ";
    return told;
}
std::string Told(const ViewState& state)
{
    std::string told = Told(state.columns) + "|";
    for (const std::int32_t flag : {state.follow, state.header, state.report})
        told += " " + std::to_string(flag);
    return told + " | " + std::to_string(state.warning) + " " + std::to_string(state.error);
}

std::string ReadOver(ViewState state)
{
    logreport::ReadFromProfile(state);
    return Told(state);
}

const std::string kFirst = "| 1 1 0 | 51400 250"; // colours as 0x00BBGGRR

TEST(ViewState, IsReadOverWhatItWas)
{
    ViewState changed;
    changed.columns = {{kLogMsgBody, 20}};
    changed.follow = 0;
    changed.header = 0;
    changed.report = 1;
    changed.warning = 1;
    changed.error = 2;
    const struct
    {
        std::map<std::string, int> values; // without their section
        std::string overFirst;
        std::string overChanged;
    } profiles[] = {
        {{}, kFirst, "3:20 | 0 0 1 | 1 2"},
        {{{"Column.1.SubItem", 5}, {"Column.0.Width", 7}}, kFirst, "3:20 | 0 0 1 | 1 2"},
        {{{"Column.0.SubItem", -1}, {"Column.1.SubItem", 5}}, kFirst, "3:20 | 0 0 1 | 1 2"},
        {{{"Column.0.SubItem", 0}, {"Column.0.Width", 7}}, "0:7 " + kFirst, "0:7 | 0 0 1 | 1 2"},
        {{{"Column.0.SubItem", 99}, {"Column.1.SubItem", 2}, {"Column.1.Width", -3}, {"Column.3.SubItem", 4}},
         "99:100 2:-3 " + kFirst,
         "99:100 2:-3 | 0 0 1 | 1 2"},
        {{{"Follow", 7}, {"Header", -1}, {"Report", 0}}, "| 1 1 0 | 51400 250", "3:20 | 1 1 0 | 1 2"},
        {{{"Follow", 0}, {"Header", 0}, {"Report", 2}}, "| 0 0 1 | 51400 250", "3:20 | 0 0 1 | 1 2"},
        {{{"Color.Warning", 8}, {"Color.Error", 9}}, "| 1 1 0 | 8 9", "3:20 | 0 0 1 | 8 9"}};
    MemoryProfile profile;
    for (const auto& [values, overFirst, overChanged] : profiles)
    {
        profile.values.clear();
        for (const auto& [key, value] : values)
            profile.values["Log.Report/" + key] = value;
        EXPECT_EQ(overFirst, ReadOver(ViewState()));
        EXPECT_EQ(overChanged, ReadOver(changed));
    }
}

TEST(ViewState, ComesBackAsItWasKept)
{
    MemoryProfile profile;
    for (const std::size_t count : {5u, 3u, 0u, 150u, 1u})
    {
        ViewState kept;
        for (std::size_t i = 0; i < count; ++i)
            kept.columns.emplace_back(static_cast<ILogMsgDataKind>(12 - i % 13), static_cast<int>(i));
        kept.follow = count == 3;
        kept.header = count != 3;
        kept.report = count == 3;
        kept.warning = RGB(1, 2, 3);
        kept.error = RGB(0xFF, 0xFE, 0xFD);
        logreport::WriteToProfile(kept);
        if (count > 100)
            kept.columns.resize(100);
        EXPECT_EQ(Told(kept), ReadOver(ViewState()));
    }
    // What lies beyond the end is not cleared away, and does no harm.
    EXPECT_EQ(1u, profile.values.count("Log.Report/Column.2.SubItem"));
}

TEST(ViewState, IsZeroWithoutAProfile)
{
    std::string zeros;
    for (int i = 0; i < 100; ++i)
        zeros += "0:0 ";
    MemoryProfile profile;
    profile.hasStore = false;
    EXPECT_EQ(zeros + "| 0 0 0 | 0 0", ReadOver(ViewState()));
    AppDataManager::SetAppDataManager(nullptr);
    EXPECT_EQ(zeros + "| 0 0 0 | 0 0", ReadOver(ViewState()));
    logreport::WriteToProfile(ViewState());
    EXPECT_TRUE(profile.values.empty());
}

TEST(ViewState, ShowsWhatCanBeShown)
{
    constexpr ILogMsgDataKind none = kLogMsgNone;
    constexpr ILogMsgDataKind beyond = static_cast<ILogMsgDataKind>(13);
    const struct
    {
        Columns columns;
        std::string shown;
    } lists[] = {
        {{}, ""},
        {{{kLogMsgBody, 1}, {kLogMsgTimestamp, 32767}, {kLogMsgSourceColumn, 0}}, "3:1 0:32767 12:0 "},
        {{{none, 10}, {kLogMsgWho, 20}, {beyond, 30}}, "11:20 "},
        {{{none, 10}, {beyond, 30}}, ""},
        {{{kLogMsgWho, 20}, {kLogMsgBody, 5}, {kLogMsgWho, 30}}, "11:20 3:5 "},
        {{{kLogMsgWho, -5}, {kLogMsgBody, 2000000000}, {kLogMsgLine, 32768}}, "11:-1 3:-1 6:-1 "},
        {{{kLogMsgWho, 0}, {kLogMsgBody, 0}}, "11:-1 3:-1 "},
        {{{kLogMsgWho, 0}, {kLogMsgBody, -5}}, "11:0 3:-1 "},
        {{{kLogMsgWho, 0}, {none, 5}, {kLogMsgWho, 5}}, "11:-1 "}};
    for (const auto& [columns, shown] : lists)
        EXPECT_EQ(shown, Told(logreport::ShowableColumns(columns)));
}

// Notes its steps, and fails at one of them.
class NotedState : public IConfigState
{
public:
    bool ReadFromProcess() override { return Note('r'); }
    bool WriteToProcess() override { return Note('w'); }
    bool ReadFromProfile() override { return Note('R'); }
    bool WriteToProfile() override { return Note('W'); }
    bool ReadFromCommandLine(QmCommandLineWorker&) override { return Note('c'); }

    std::string steps;
    char failing = ' ';

private:
    bool Note(char step)
    {
        steps += step;
        return step != failing;
    }
};

TEST(ConfigState, GoesStepByStepUntilOneFails)
{
    const struct
    {
        bool (IConfigState::*operation)();
        char failing;
        const char* steps;
    } calls[] = {{&IConfigState::Load, ' ', "Rcw"},
                 {&IConfigState::Load, 'R', "R"},
                 {&IConfigState::Load, 'c', "Rc"},
                 {&IConfigState::Load, 'w', "Rcw"},
                 {&IConfigState::LoadFromCommandLine, ' ', "cw"},
                 {&IConfigState::LoadFromCommandLine, 'c', "c"},
                 {&IConfigState::LoadFromCommandLine, 'w', "cw"},
                 {&IConfigState::Save, ' ', "rW"},
                 {&IConfigState::Save, 'r', "r"},
                 {&IConfigState::Save, 'W', "rW"}};
    for (const auto& [operation, failing, steps] : calls)
    {
        NotedState state;
        state.failing = failing;
        EXPECT_EQ(failing == ' ', (state.*operation)());
        EXPECT_EQ(steps, state.steps);
    }
    NotedState disabled;
    disabled.SetEnabled(false);
    EXPECT_TRUE(disabled.Save());
    EXPECT_EQ("", disabled.steps);

    IConfigState& plain = disabled;
    EXPECT_TRUE(plain.IConfigState::ReadFromProcess() && plain.IConfigState::WriteToProcess() &&
                plain.IConfigState::ReadFromProfile() && plain.IConfigState::WriteToProfile() &&
                plain.Hook6() && plain.Hook7());
}

} // namespace
