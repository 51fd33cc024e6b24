// The wide margin's places and patterns, and the contrast of the offered colours.
#include "logview/LookColors.h"
#include "logview/MarginLayout.h"
#include "logview/RowSource.h"
#include "vkgrafic/UiColors.h"

#include <gtest/gtest.h>

#include <set>

using namespace logview;
using VkGrafic::Contrast;

namespace
{

struct MarginCase
{
    int rowHeight, columnWidth, windowWidth;
};

// 96 and 192 dpi, small and large fonts, narrow windows, and sizes that no window has.
constexpr MarginCase kMargins[] = {{16, 7, 760}, {14, 8, 600},  {33, 15, 1500}, {80, 40, 1600},
                                   {16, 7, 150}, {12, 6, 400},  {5, 3, 200},    {1, 1, 0},
                                   {0, 0, -5},   {13, 7, 2000}, {17, 8, 900}};

TEST(LogLook, MarginPartsLieSideBySideAndClicksMeetThem)
{
    for (const MarginCase& c : kMargins)
    {
        SCOPED_TRACE(testing::Message() << c.rowHeight << " " << c.columnWidth << " " << c.windowWidth);
        const MarginLayout layout(c.rowHeight, c.columnWidth, c.windowWidth);
        const MarginBox box = layout.FoldBox();
        int end = 0;
        for (const MarginBand band :
             {layout.Bookmark(), layout.Stripe(), layout.Initial(), MarginBand{box.left, box.left + box.size},
              layout.Count(), MarginBand{layout.Width(), layout.Width()}})
        {
            EXPECT_LE(end, band.begin);
            EXPECT_LE(band.begin, band.end);
            end = band.end;
        }
        EXPECT_LT(layout.Bookmark().begin, layout.Bookmark().end);
        EXPECT_LT(layout.Stripe().begin, layout.Stripe().end);

        EXPECT_EQ(1, box.size % 2);
        EXPECT_TRUE(box.top >= 0 && box.top + box.size <= std::max(c.rowHeight, 1)) << "within its row";
        if (c.rowHeight > MarginLayout::kLeastBox)
            EXPECT_GE(box.size, MarginLayout::kLeastBox);
        EXPECT_LT(2 * layout.Line(), box.size + 2);

        for (int x = -1; x <= layout.Width(); ++x)
        {
            const MarginZone zone = layout.ZoneAt(x);
            EXPECT_EQ(x < 0 || x == layout.Width(), zone == MarginZone::Outside) << x;
            EXPECT_EQ(x >= 0 && x < layout.Bookmark().end, zone == MarginZone::Bookmark) << x;
            if (x >= box.left && x < box.left + box.size)
                EXPECT_EQ(MarginZone::Fold, zone) << x;
            if (x >= layout.Stripe().begin && x < std::max(layout.Initial().end, layout.Stripe().end))
                EXPECT_EQ(MarginZone::Log, zone) << x;
        }
        const bool isWide = c.windowWidth - layout.Width() >= 40 * c.columnWidth && c.columnWidth > 0;
        EXPECT_EQ(isWide, layout.Initial().Width() > 0);
        EXPECT_EQ(isWide, layout.Count().Width() > 0);
    }
    EXPECT_EQ((MarginBand{34, 138}), MarginLayout(16, 8, 1000, 13).Text());
    EXPECT_EQ(MarginLayout(16, 8, 1000).Width() + 13 * 8, MarginLayout(16, 8, 1000, 13).Width());
    EXPECT_EQ(0, MarginLayout(16, 8, 480, 13).Text().Width()) << "not enough room";
    EXPECT_EQ(25, MarginLayout(33, 15, 1500).FoldBox().size) << "grows with the row";
}

TEST(LogLook, LogsAreToldApartWithoutColour)
{
    std::set<std::string> initials;
    std::set<std::string> stripes;
    for (int file = 0; file < static_cast<int>(kFileCount); ++file)
    {
        const StripePattern stripe = StripeOf(file);
        EXPECT_TRUE(stripe.begin < stripe.end && stripe.end <= 16);
        EXPECT_TRUE(stripe.dash > 0 && stripe.dash <= stripe.period && 16 % stripe.period == 0);
        stripes.insert(
            testing::PrintToString(std::vector{stripe.begin, stripe.end, stripe.dash, stripe.period}));
        initials.insert(InitialOf(file));
        EXPECT_LE(std::string(InitialOf(file)).size(), std::size_t{MarginLayout::kInitialColumns});
    }
    EXPECT_EQ(kFileCount, stripes.size());
    EXPECT_EQ(kFileCount, initials.size());
    EXPECT_STREQ("", InitialOf(5));
    EXPECT_EQ(0, StripeOf(-1).end);

    const std::pair<unsigned, const char*> counts[] = {
        {0, ""}, {1, "1"}, {99, "99"}, {100, "99+"}, {~0u, "99+"}};
    for (const auto& [count, text] : counts)
        EXPECT_EQ(text, CountText(count));
}

TEST(LogLook, EveryTextCanBeRead)
{
    EXPECT_NEAR(21.0, Contrast(0xFFFFFF, 0), 0.01);
    EXPECT_NEAR(4.48, Contrast(0xFFFFFF, 0x777777), 0.01); // known for just failing
    EXPECT_NEAR(5.25, Contrast(0, 0x0000FF), 0.01);        // red
    for (const QmLogTheme theme : {QmLogTheme::Light, QmLogTheme::Dark})
    {
        const QmLogColors& colors = ThemeColors(theme);
        EXPECT_EQ(theme, ThemeFor(colors.window));
        std::vector<std::pair<std::uint32_t, std::uint32_t>> pairs = {
            {colors.selectionText, colors.selection},
            {colors.inactiveSelectionText, colors.inactiveSelection}};
        for (const std::uint32_t background : {colors.window, colors.caretMargin})
        {
            for (const std::uint32_t kind : colors.kinds)
                pairs.emplace_back(kind, background);
            for (const std::uint32_t log : colors.logs)
                pairs.emplace_back(log, background);
            pairs.emplace_back(colors.mark, background);
        }
        for (const auto& [text, background] : pairs)
            EXPECT_GE(Contrast(text, background), 4.5)
                << std::hex << text << " on " << background << ", set " << static_cast<int>(theme);
    }
}

} // namespace
