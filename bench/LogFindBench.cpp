#include "LogFindBench.h"
#include "LogFiles.h"
#include "ShownWindow.h"

#include "QmLogReader.h"
#include "QmLogTextCtrl.h"
#include "logview/LogNames.h"
#include "logview/ReaderRows.h"
#include "logview/find/FindSearch.h"
#include "textmatch/Expression.h"

#include <random>

namespace bench
{

namespace
{

constexpr std::size_t kScanBytes = 256 * 1024 / LogFiles::kLineBytes * LogFiles::kLineBytes; // whole lines

const char* NameOf(unsigned file)
{
    return logview::GetLogName(static_cast<int>(file));
}

// Lines of words, as programs write them, in place of the lines that LogFiles writes.
void WriteWords(const std::string& path, unsigned rows)
{
    static const char* const kWords[] = {"job",   "started",  "after",   "12",     "ms",   "for",
                                         "order", "4711",     "of",      "Müller", "done", "select",
                                         "where", "customer", "waiting", "2026",   "ok",   "cache"};
    std::minstd_rand random;
    std::string lines;
    constexpr unsigned kTogether = 10'000;
    for (unsigned i = 0; i < kTogether; ++i)
    {
        std::string line;
        while (line.size() + 12 < LogFiles::kLineBytes)
            line += std::string(kWords[random() % std::size(kWords)]) + " ";
        line.resize(LogFiles::kLineBytes - 1, '.');
        lines += line + "\n";
    }
    std::FILE* const text = std::fopen(path.c_str(), "wb");
    Check(text != nullptr, "creating a log");
    for (; rows > 0; rows -= std::min(rows, kTogether))
        Check(std::fwrite(lines.data(), LogFiles::kLineBytes, std::min(rows, kTogether), text) ==
                  std::min(rows, kTogether),
              "writing text");
    std::fclose(text);
}

// Five logs that take turns.
void WriteSession(const std::string& folder, unsigned rows)
{
    for (unsigned file = 0; file < logview::kFileCount; ++file)
    {
        QmLogReaderDefine(NameOf(file)).Close();
        LogFiles log(folder, NameOf(file));
        log.Add(rows, 1 + file, logview::kFileCount);
        log.Write();
        WriteWords(folder + NameOf(file) + ".LOG", rows);
    }
}

// Reads the texts from end to end and looks for a text that is nowhere.
void Scan(const std::string& folder, const textmatch::TextSearch& wanted)
{
    std::string block(kScanBytes, '\0');
    for (unsigned file = 0; file < logview::kFileCount; ++file)
    {
        BareFile text(folder + NameOf(file) + ".LOG", BareFile::Role::Scan);
        while (const DWORD bytes = text.ReadNext(block.data(), static_cast<DWORD>(block.size())))
            Check(!wanted.IsIn(std::string_view(block).substr(0, bytes)), "scanning");
    }
}

// The same for an expression over many lines: what PCRE2 itself needs for them.
void Scan(const std::string& folder, const textmatch::Expression& wanted)
{
    std::string block(kScanBytes, '\0');
    for (unsigned file = 0; file < logview::kFileCount; ++file)
    {
        BareFile text(folder + NameOf(file) + ".LOG", BareFile::Role::Scan);
        while (const DWORD bytes = text.ReadNext(block.data(), static_cast<DWORD>(block.size())))
            Check(wanted.FindInUtf8(std::string_view(block).substr(0, bytes), 0) ==
                      textmatch::Expression::Outcome::NotFound,
                  "scanning");
    }
}

void Search(logview::FindSearch& search, const char* text, logview::FindOptions options, std::size_t found)
{
    search.Begin(std::make_unique<logview::FindText>(text, options), 1);
    search.Step([] { return true; });
    Check(search.CurrentState() == logview::FindSearch::State::Done && search.Matches().Count() == found,
          "finding");
}

// A page with two or three matches a row, against the same without a search and with a find bar as high.
void MeasureMarks(const Options& options, Report& report)
{
    CWnd frame;
    frame.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, 0, 0, 1000, 740, nullptr, nullptr);
    CQmLogTextCtrl windows[2];
    for (CQmLogTextCtrl& text : windows)
    {
        text.SetStartSession(false);
        text.SetFindInAll(&text == &windows[1]);
        Check(text.Create(WS_CHILD, CRect(0, 0, 1000, 740), &frame, 1) != FALSE, "the log text window");
        text.SetFollow(false);
        text.ShowWindow(SW_SHOW);
        text.FindInput();
    }
    windows[1].SetFindText("er");
    Check(windows[1].FindNext(), "finding");
    windows[1].CancelFind(); // the page is marked all the same
    windows[1].Focus(0, 0, false);
    const auto variant = [](HWND hwnd) { return WhenShown(hwnd, 20, [hwnd] { Repaint(hwnd); }); };
    const Comparison comparison({variant(windows[0]), variant(windows[1])}, options.quick ? 3 : 51);
    report.Add({"full repaint, matches marked", comparison.Time(1), "us", "without a search",
                comparison.Ratio(1), 1.2});
    for (CQmLogTextCtrl& text : windows)
        text.DestroyWindow();
    frame.DestroyWindow();
}

} // namespace

void MeasureFind(const Options& options, const TemporaryFolder& folder, Report& report)
{
    const unsigned rows = (options.quick ? 10u << 20 : 200u << 20) / LogFiles::kLineBytes;
    WriteSession(folder.Path(), rows / logview::kFileCount);
    {
        logview::ReaderRows source;
        logview::FindSearch search(source);
        const textmatch::TextSearch absent("failed", textmatch::TextSearch::Case::Kept);
        const auto find = [&](const char* text, logview::FindOptions how) {
            return Variant{rows, [&search, text, how] { Search(search, text, how, 0); }};
        };
        const textmatch::Expression lines("(?m)(order|job) [a-z]+(?=\\r?$)",
                                          textmatch::Expression::Syntax::Expression);
        const Comparison comparison({{rows, [&] { Scan(folder.Path(), absent); }},
                                     find("failed", {true, false, false}),
                                     find("failed", {}),
                                     find("größer", {}),
                                     find("order [0-9]+ failed", {true, false, true}),
                                     find("(order|job) [a-z]+$", {true, false, true}),
                                     {rows, [&] { Scan(folder.Path(), lines); }}},
                                    options.quick ? 3 : 11);
        const std::pair<const char*, bool> names[] = {{"find a text, per row", true},
                                                      {"find it in any case", true},
                                                      {"find a word with an umlaut in any case", false},
                                                      {"find an expression", true},
                                                      {"find one without a text that it needs", false}};
        for (std::size_t i = 0; i < std::size(names); ++i)
        {
            Measure measure = {names[i].first, comparison.Time(i + 1) * 1000, "ns",
                               "a plain scan of the texts", comparison.Ratio(i + 1)};
            if (names[i].second)
                measure.goal = 2.0;
            report.Add(measure);
        }
        constexpr std::size_t kExpression = 5;
        report.Add({"the same", comparison.Time(kExpression) * 1000, "ns", "PCRE2 over the same blocks",
                    comparison.Ratio(kExpression, kExpression + 1), 1.5});
        report.Add({"PCRE2 over the blocks", comparison.Time(kExpression + 1) * 1000, "ns",
                    "a plain scan of the texts", comparison.Ratio(kExpression + 1)});
    }
    MeasureMarks(options, report);
    for (unsigned file = 0; file < logview::kFileCount; ++file)
        QmLogReaderDefine(NameOf(file)).Close();
}

} // namespace bench
