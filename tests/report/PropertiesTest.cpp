// The properties of a report control, and the sizes that grow with the resolution.
#include "report/model/Properties.h"
#include "report/model/CellCodec.h"
#include "report/model/HeaderMark.h"

#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace
{

using report::HeaderMark;
using report::Properties;
using report::Sizes;
using report::View;

class ReportProperties : public testing::Test
{
protected:
    ~ReportProperties() override
    {
        properties.Set(RVP_STRINGSEPARATOR, '\t');
        properties.Set(RVP_TREEINDENT, AddressOf(""));
        report::SetCellSeparator('\x07');
    }

    static std::int64_t AddressOf(const char* text) { return reinterpret_cast<std::intptr_t>(text); }

    // A property's value, texts and addresses alike, as text.
    std::string Read(std::uint64_t id)
    {
        std::int64_t value = 0;
        if (!properties.Get(id, value))
            return "unknown";
        const bool isText = id == RVP_EMPTYTEXT || id == RVP_SORTCAPTION || id == RVP_TREEINDENT;
        return isText ? reinterpret_cast<const char*>(static_cast<std::intptr_t>(value))
                      : std::to_string(value);
    }

    View view;
    Sizes sizes{view};
    Properties properties{view, sizes};
};

TEST_F(ReportProperties, AreTakenOrRefusedAndReadBack)
{
    constexpr std::int64_t kHuge = std::numeric_limits<std::int64_t>::max();
    const std::tuple<std::uint64_t, const char*, std::int64_t, const char*, std::vector<std::int64_t>>
        cases[] = {
            {RVP_MARGIN, "6", 0x7FFF, "32767", {-1, 0x8000, kHuge}},
            {RVP_CHECKSIZE, "524296", 13 | 300 << 16, "19660813", {}},
            {RVP_EMPTYTEXT, "<Empty list>", AddressOf("none"), "none", {0}},
            {RVP_GRIDSTYLE, "2", 0, "0", {-1, 3}},
            {RVP_SORTCAPTION, "Sort by: %s", AddressOf("%n"), "%n", {0}},
            {RVP_NOTIFYMASK, "4294967295", -2, "4294967294", {}},
            {RVP_UNUSED, "0", 5, "0", {}},
            {RVP_CELLSEPARATOR, "7", 0xFF, "255", {0, 1, 2, ',', '-', '0', '9'}},
            {RVP_SHOWPREVIEW, "1", 0, "0", {}},
            {RVP_DOUBLEBUFFER, "1", 0, "0", {}},
            {RVP_TREESTYLE, "0", 2, "2", {-1, 3}},
            {RVP_IMAGEMODE, "0", RVIB_BLEND50, "2", {}},
            {RVP_COLOR, "16777215", 0x010203, "66051", {}},
            {RVP_STRINGSEPARATOR, "9", ';', "59", {}},
            {RVP_TREEINDENT, "", AddressOf("  "), "  ", {0}},
            {RVP_FITITEMHEIGHT, "0", 7, "1", {}},
            {RVP_KEEPIMAGES, "0", 2, "1", {}},
            {RVP_INACTIVEHIGHLIGHT, "-1", 0xFFFFFF, "16777215", {-2, 0x1000000}},
            {RVP_KEYS, "0", RVK_ALL, "127", {-1, 128}},
            {RVP_EDITING, "0", RVED_ALL, "15", {-1, 16}},
        };
    for (const auto& [id, initial, taken, after, refused] : cases)
    {
        EXPECT_EQ(initial, Read(id)) << id;
        EXPECT_TRUE(properties.Set(id, taken)) << id;
        for (const std::int64_t value : refused)
            EXPECT_FALSE(properties.Set(id, value)) << id << ": " << value;
        EXPECT_EQ(after, Read(id)) << id;
    }
    for (const std::uint64_t id : {0ull, 16ull, 255ull, 261ull})
    {
        EXPECT_FALSE(properties.Set(id, 1)) << id;
        EXPECT_EQ("unknown", Read(id)) << id;
    }
}

TEST_F(ReportProperties, SizesGrowUntilTheOwnerSetsThem)
{
    // The heights and widths after it: item height, margin, check box, column.
    const std::tuple<const char*, std::function<void()>, std::array<int, 5>> steps[] = {
        {"at 96", [] {}, {10, 6, 8, 8, 200}},
        {"at 144", [&] { sizes.SetResolution(144); }, {15, 9, 12, 12, 300}},
        {"at 120, halves rounded up", [&] { sizes.SetResolution(120); }, {13, 8, 10, 10, 250}},
        {"with a grid", [&] { sizes.ChangeItemHeight(1); }, {14, 8, 10, 10, 250}},
        {"at 192", [&] { sizes.SetResolution(192); }, {21, 12, 16, 16, 400}},
        {"check size", [&] { sizes.SetCheckSize(7, 9); }, {21, 12, 7, 9, 400}},
        {"margin", [&] { sizes.SetMargin(0); }, {21, 0, 7, 9, 400}},
        {"height", [&] { sizes.SetItemHeight(30); }, {30, 0, 7, 9, 400}},
        {"without the grid", [&] { sizes.ChangeItemHeight(-1); }, {29, 0, 7, 9, 400}},
        {"too high", [&] { sizes.SetItemHeight(0x8000); }, {29, 0, 7, 9, 400}},
        {"at 96 again", [&] { sizes.SetResolution(96); }, {29, 0, 7, 9, 200}},
        {"check size of the control's", [&] { sizes.ResetCheckSize(); }, {29, 0, 8, 8, 200}},
        {"as needed: the tree box", [&] { sizes.FitItemHeight(true); }, {10, 0, 8, 8, 200}},
        {"text", [&] { sizes.SetFontHeight(13); }, {17, 0, 8, 8, 200}},
        {"images", [&] { sizes.SetImageSize(40, 32); }, {33, 0, 8, 8, 200}},
        {"check boxes", [&] { sizes.SetCheckSize(1, 40); }, {41, 0, 1, 40, 200}},
        {"height again", [&] { sizes.SetItemHeight(0); }, {0, 0, 1, 40, 200}},
        {"no lower", [&] { sizes.ChangeItemHeight(-1); }, {0, 0, 1, 40, 200}},
    };
    for (const auto& [what, act, expected] : steps)
    {
        act();
        EXPECT_EQ(expected, (std::array{view.itemHeight, view.margin, view.checkWidth, view.checkHeight,
                                        sizes.DefaultColumnWidth()}))
            << what;
    }
}

TEST(ReportHeaderMarks, GrowWithoutSteps)
{
    EXPECT_EQ((std::vector<int>{1, 3, 5, 7}), MarkRows(HeaderMark::Ascending, 96));
    EXPECT_EQ((std::vector<int>{7, 5, 3, 1}), MarkRows(HeaderMark::Descending, 96));
    EXPECT_EQ((std::vector<int>{7, 7, 5, 3, 1, 1, 1}), MarkRows(HeaderMark::Filtered, 96));
    for (const int dpi : {72, 120, 144, 192, 288, 480})
    {
        const std::vector<int> rows = MarkRows(HeaderMark::Descending, dpi);
        EXPECT_EQ(static_cast<std::size_t>(report::Scale(4, dpi)), rows.size());
        EXPECT_EQ(report::MarkWidth(dpi), rows.front()) << dpi;
        for (std::size_t y = 1; y < rows.size(); ++y)
        {
            EXPECT_LE(rows[y], rows[y - 1]) << dpi << ", row " << y;
            EXPECT_GE(rows[y], rows[y - 1] - 4) << dpi << ", row " << y;
            EXPECT_EQ(rows[0] % 2, rows[y] % 2) << dpi << ", row " << y;
        }
    }
}

} // namespace
