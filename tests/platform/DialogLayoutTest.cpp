// Where controls of a resized dialog go.
#include "platform/qmcommon/DialogLayout.h"
#include "qmcommon/QmSizerFlags.h"

#include <gtest/gtest.h>

namespace
{

using namespace qmcommon;

std::string Text(const RECT& rect)
{
    std::ostringstream text;
    text << rect.left << " " << rect.top << " " << rect.right << " " << rect.bottom;
    return text.str();
}

TEST(DialogLayout, ControlsFollowTheDialog)
{
    const RECT control = {10, 20, 60, 40};
    constexpr unsigned kBoth = kSizerWider | kSizerHigher;
    const struct
    {
        SizerRule rule;
        int gainX, gainY;
        const char* place;
    } cases[] = {
        {{1, 0, 1, 0}, 31, 7, "10 20 60 40"},
        {{1, 0, 1, kSizerWider}, 31, 7, "10 20 75 40"},
        {{1, 1, 1, 0}, 31, 7, "25 20 75 40"},
        {{1, 1, 1, kSizerWider}, 31, 7, "25 20 91 40"}, // the odd pixel is not lost
        {{1, 0, 2, kBoth}, 31, 7, "10 20 91 47"},
        {{1, 1, 1, kSizerToRight | kSizerToBottom}, 31, 7, "41 27 91 47"},
        {{1, 0, 2, kSizerWider | kSizerToBottom}, 31, 7, "10 27 91 47"},
        {{1, 1, 1, kBoth | kSizerToBottom}, -5, -5, "10 20 60 40"},
    };
    for (const auto& test : cases)
        EXPECT_EQ(test.place, Text(PlaceOf(test.rule, control, 2, test.gainX, test.gainY))) << &test - cases;
}

TEST(DialogLayout, ADialogIsBroughtWithinTheScreen)
{
    const RECT screen = {-100, 0, 900, 700};
    const std::pair<RECT, const char*> cases[] = {
        {{10, 20, 400, 300}, "10 20 400 300"},      {{-300, -9, 100, 291}, "-100 0 300 300"},
        {{800, 650, 1200, 950}, "500 400 900 700"}, {{0, 0, 5000, 4000}, "-100 0 900 700"},
        {{50, 60, 50, 60}, "50 60 350 260"},        {{2000, 2000, 1000, 1000}, "600 500 900 700"},
    };
    for (const auto& [wanted, place] : cases)
        EXPECT_EQ(place, Text(BringWithin(wanted, {300, 200}, screen)));
    EXPECT_EQ("0 0 90 80", Text(BringWithin({5, 5, 10, 10}, {300, 200}, {0, 0, 90, 80})));
}

} // namespace
