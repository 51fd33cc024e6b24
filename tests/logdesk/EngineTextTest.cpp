#include "host/logdesk/EngineText.h"

#include <gtest/gtest.h>

TEST(EngineText, TellsWhatIsShownAndWhatIsMissing)
{
    using Span = engine::RowReader::Span;
    engineview::EngineService::State none, all, repeated, searching, searched, cutOff, old, busy, lost;
    all.span = repeated.span = searching.span = searched.span = cutOff.span = old.span = busy.span =
        Span{101, 1300};
    all.shown = old.shown = 1200;
    repeated.shown = 24;
    repeated.found = 30;
    searching.shown = searching.found = searched.shown = 1;
    searching.searchedTo = 400;
    searched.searchedTo = 1300;
    cutOff.shown = 1'000'000;
    cutOff.searchedTo = 500;
    cutOff.found = 1'000'001;
    cutOff.isCutOff = old.isOld = busy.isBusy = lost.isLost = lost.isBusy = true;
    const std::pair<engineview::EngineService::State, const char*> cases[] = {
        {none, "No rows yet"},
        {all, "1,200 rows"},
        {repeated, "24 rows of 30"},
        {searching, "1 row, searched 25 %"},
        {searched, "1 row"},
        {cutOff, "Only 1,000,000 rows"},
        {old, "1,200 rows, newer ones: F5"},
        {busy, "The engine is working..."},
        {lost, "The server does not answer"}};
    for (const auto& [state, text] : cases)
        EXPECT_EQ(text, logdesk::EngineRowsText(state));
    EXPECT_EQ("", logdesk::EngineBoundsText({}));
    EXPECT_EQ("Block from number 7 to 90", logdesk::EngineBoundsText(Span{7, 90}));
    EXPECT_EQ("Block from number 7 on", logdesk::EngineBoundsText(Span{7, 0xFFFFFFFF}));
    const engine::EngineUrl url = engine::ParseEngineUrl("clickhouse://me@host:9/t?session=S&machine=m");
    EXPECT_EQ("Session S of m at http://host:9 - LogDesk", logdesk::EngineTitle(url));
}
