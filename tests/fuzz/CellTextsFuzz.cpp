#include "report/model/CellCodec.h"
#include "report/sort/CellKey.h"
#include "tests/fuzz/Fuzz.h"

namespace fuzz
{

namespace
{

using report::CellKey;

// Keys have one order. What two keys say of each other does not depend on who is asked, nor on a third.
void CompareKeys(const std::string_view (&texts)[3])
{
    const auto keyOf = [](std::string_view text, unsigned way) -> CellKey {
        switch (way)
        {
        case 0:
            return report::TextKey(text);
        case 1:
            return report::CaselessTextKey(text);
        case 2:
            return report::NaturalTextKey(text);
        case 3:
            return report::NumberKey(text, '.');
        case 4:
            return report::NumberKey(text, ',');
        default:
            return report::DateKey(text,
                                   way == 5 ? report::DateOrder::MonthFirst : report::DateOrder::DayFirst);
        }
    };
    for (unsigned way = 0; way < 7; ++way)
    {
        const CellKey a = keyOf(texts[0], way);
        const CellKey b = keyOf(texts[1], way);
        const CellKey c = keyOf(texts[2], way);
        Require((a < b) == (b > a) && (a == b) == (b == a), "the other way round");
        Require(!(a < b && b < c) || a < c, "by way of a third");
        const std::string blanks = " " + std::string(texts[0]) + " ";
        Require(way < 3 || a.kind == CellKey::Kind::Text || keyOf(blanks, way) == a,
                "blanks around do not count");
    }
}

} // namespace

void CellTexts(std::string_view bytes)
{
    Input input(bytes);
    const int field = static_cast<int>(input.Byte() % 6) - 1;
    const std::size_t size = input.Byte();
    const std::string_view encoded = input.Bytes(size);
    ZEMA::String cells(encoded.data(), encoded.size());
    const report::Cell read = report::ReadCell(cells, field);
    Require(read.hasText || read.text.empty(), "only a text has bytes");
    const std::string text(read.text);
    Require(text.find(report::CellSeparator()) == std::string::npos, "a text ends at the separator");

    report::Cell kept = read;
    kept.text = text;
    const auto contents = [&] { return std::string(cells.c_str(), cells.GetLength()); };
    report::WriteCell(cells, field, kept);
    Require(report::ReadCell(cells, field) == kept, "a cell that was written is read");
    const std::string written = contents();
    report::WriteCell(cells, field, report::ReadCell(cells, field));
    Require(written == contents(), "writing again changes nothing");
    report::InsertCell(cells, field);
    report::RemoveCell(cells, field);
    Require(written == contents(), "a cell inserted and removed leaves no trace");

    const std::string_view rest = input.Rest();
    const std::size_t third = rest.size() / 3;
    const std::string_view texts[3] = {rest.substr(0, third), rest.substr(third, third),
                                       rest.substr(2 * third)};
    CompareKeys(texts);
}

} // namespace fuzz
