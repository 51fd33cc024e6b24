// What the cells of a message show.
#pragma once

#include "LogMsg.h"
#include "ReportItem.h"

#include <string>
#include <string_view>

namespace logreport
{

// Entries of the viewer's colour table.
constexpr int kWarningColor = 1;
constexpr int kErrorColor = 2;

// The beginning of a body and "(...)" if it goes on after a line feed. The byte before the line feed is
// dropped as well: in bodies it is a carriage return. A line feed at either end does not count.
std::string FirstLine(std::string_view body);

// What a preview shows of a body: at most 65,535 bytes, or 65,529 and "(...)"; with `lines` above 0 at most
// so many lines, and a line "..." if there are more.
std::string PreviewText(std::string_view body, int lines);

// Of a text drawn in lines of one height, the lines from number `first` on, `count` at most: what is outside
// need not be drawn. A line ends with CR LF, or with one of the two.
std::string_view LinesOf(std::string_view text, int first, int count);

// Puts text, colour and image of a cell into the record of a callback, of which `text` and `textMax` say what
// room there is. Subitem -1 is the preview, which has `previewLines` lines at most; its height is not set.
void AnswerCell(const ILogMsgData& message, int previewLines, _RVITEM& cell);

// "Rows:3 | Selected:2 | Current:1". The focused row 0 is deliberately not told.
std::string StatusText(int rows, int selected, int focused);

} // namespace logreport
