// The C++ wrapper: writes a log, reads it back, and ends with 1 if anything differs. C++14, and no other
// header of ours.
#include "QmLog.hpp"

#include <cstdio>
#include <string>

namespace
{

int g_mismatches = 0;

void Check(bool same, const char* what)
{
    if (same)
        return;
    std::printf("mismatch: %s: %s\n", what, qmlog::LastErrorText());
    ++g_mismatches;
}

void WriteLog(qmlog::Writer log)
{
    Check(log && log.Name() == std::string("Wrapper"), "a writer has its name");
    Check(log.Line("Started"), "a text with its NUL");
    {
        const qmlog::Block block(log, QMLOG_C_ERROR, std::string("Block"));
        Check(log.Format("%d%% of %s", 7, "all"), "a short line");
        Check(log.Format("%0511d|%1000s|", 1, ""), "a line with room for its NUL and no more, and beyond");
        const qmlog::Block refused(qmlog::Writer(""), QMLOG_C_PLAIN, nullptr);
        Check(log.Write({"\nmore text", 5}), "a part of a text");
    }
    Check(log.Line("Done") && log.LostRows() == 0 && qmlog::Writer::CloseAll(), "the end");
}

void ReadLog(const qmlog::Reader& log)
{
    const std::string zeros(510, '0');
    const std::string expected[] = {"Started\n",   "Block\n",
                                    "7% of all\n", zeros + "1|" + std::string(1000, ' ') + "|\n",
                                    "more\n",      "Done"};
    Check(log.Count() == 6, "the number of rows");
    std::string text;
    QmLogCRow row = {};
    for (unsigned i = 0; i < 6; ++i)
        Check(log.Read(i, text, row) && text == expected[i] && row.number == i + 1 &&
                  row.depth == (i > 0 && i < 5 ? 1u : 0u),
              expected[i].c_str());
    Check(!log.Read(6, text, row) && text.empty() && qmlog::LastError() == QMLOG_C_NO_ROW, "no further row");
    unsigned index = 0;
    Check(log.Find(9, false, index) && index == 5, "the last row before a number");
}

} // namespace

int main(int, char** arguments)
{
    WriteLog(qmlog::Writer("Wrapper"));
    ReadLog(qmlog::Reader("Wrapper"));
    qmlog::Reader moved = qmlog::Reader("None");
    Check(moved && moved.Count() == 0, "a log that does not exist");
    moved = qmlog::Reader::AtPath(std::string(arguments[1]));
    ReadLog(moved);
    Check(!qmlog::Reader::AtPath(nullptr) && qmlog::LastError() == QMLOG_C_FAILED, "no path");
    return g_mismatches == 0 ? 0 : 1;
}
