// What looking at a large session costs: logtool's commands against reading and searching the same bytes.
#include "Bench.h"
#include "BenchFiles.h"
#include "BenchMemory.h"
#include "SessionFiles.h"

#include "logtool/Commands.h"

#include <array>
#include <cstdio>
#include <iostream>
#include <ostream>
#include <streambuf>
#include <string_view>
#include <vector>

namespace
{

using bench::BareFile;
using bench::Check;
using bench::Comparison;
using bench::SessionFiles;

constexpr std::size_t kPiece = 64 * 1024;

// Takes output as the program's own does, in pieces of 64 KiB, and drops it.
class Sink : public std::streambuf
{
public:
    Sink() { sync(); }
    std::uint64_t Bytes() const { return m_bytes; }

protected:
    int_type overflow(int_type character) override
    {
        sync();
        sputc(traits_type::to_char_type(character));
        return traits_type::not_eof(character);
    }

    std::streamsize xsputn(const char* data, std::streamsize size) override
    {
        if (size < static_cast<std::streamsize>(kPiece))
            return std::streambuf::xsputn(data, size);
        sync();
        m_bytes += static_cast<std::uint64_t>(size);
        return size;
    }

    int sync() override
    {
        m_bytes += static_cast<std::uint64_t>(pptr() - pbase());
        setp(m_buffer.data(), m_buffer.data() + m_buffer.size());
        return 0;
    }

private:
    std::array<char, kPiece> m_buffer;
    std::uint64_t m_bytes = 0;
};

class SinkHost : public logtool::Host
{
public:
    std::ostream& Output() override { return m_output; }
    std::ostream& Messages() override { return std::cerr; }
    bool IsOutputTerminal() override { return false; }
    bool HasColours() override { return false; }
    bool IsMessagesTerminal() override { return false; }
    std::string OutputFault() override { return ""; }
    std::string FolderName() override { return ""; }
    void UseFolder(const std::string&) override {}
    bool FolderExists() override { return true; }
    std::vector<std::string> ListLogs() override
    {
        return {std::begin(SessionFiles::kLogs), std::end(SessionFiles::kLogs)};
    }
    std::unique_ptr<logtool::Input> OpenInput(const std::string&) override { return nullptr; }
    bool IsEndWanted() override { return false; }
    bool Wait() override { return false; }

    std::uint64_t Bytes() const { return m_sink.Bytes(); }

private:
    Sink m_sink;
    std::ostream m_output{&m_sink};
};

class LogtoolBench
{
public:
    explicit LogtoolBench(const bench::Options& options)
        : m_options(options), m_session(m_folder.Path(), options.quick ? 20 << 20 : 1 << 30)
    {
    }

    bench::Report Run()
    {
        MeasureMemory();
        MeasureCommands();
        return m_report;
    }

private:
    // Text that the session lacks, though much of it begins likewise.
    static constexpr const char* kAbsent = "connecting to depot 99";

    // Answers the bytes that came out.
    static std::uint64_t RunCommand(const std::vector<std::string>& words, int exitCode)
    {
        SinkHost host;
        Check(logtool::Run(words, host) == exitCode, words[0].c_str());
        return host.Bytes();
    }

    void Cat() { Check(RunCommand({"cat"}, logtool::kDone) > m_session.TextBytes(), "cat"); }
    void Grep() { Check(RunCommand({"cat", "--grep", kAbsent}, logtool::kNothingFound) == 0, "cat --grep"); }
    void Tree() { Check(RunCommand({"tree"}, logtool::kDone) > m_session.RowCount(), "tree"); }
    void Errors() { Check(RunCommand({"errors"}, logtool::kFoundFaults) > 0, "errors"); }

    void Jsonl() { Check(RunCommand({"export", "--format", "jsonl"}, logtool::kDone) > 0, "export"); }
    void Trace() { Check(RunCommand({"export", "--format", "trace"}, logtool::kDone) > 0, "export"); }

    void MeasureMemory()
    {
        const auto add = [this](const char* name, void (LogtoolBench::*command)()) {
            m_report.Add({name, bench::MemoryGrowth([this, command] { (this->*command)(); }), "KiB",
                          "growth at its peak"});
        };
        add("memory, cat", &LogtoolBench::Cat);
        add("memory, tree", &LogtoolBench::Tree);
        add("memory, export", &LogtoolBench::Trace);
    }

    void MeasureCommands()
    {
        const auto variant = [this](void (LogtoolBench::*action)()) {
            return bench::Variant{1, [this, action] { (this->*action)(); }};
        };
        const Comparison comparison(
            {
                variant(&LogtoolBench::ReadAll),
                variant(&LogtoolBench::ReadIndexes),
                variant(&LogtoolBench::Search),
                variant(&LogtoolBench::Cat),
                variant(&LogtoolBench::Tree),
                variant(&LogtoolBench::Errors),
                variant(&LogtoolBench::Grep),
                variant(&LogtoolBench::Jsonl),
                variant(&LogtoolBench::Trace),
            },
            m_options.quick ? 3 : 5, bench::Clock::Processor);
        const char* const all = "its bytes, read once in 64 KiB";
        const auto add = [&](const std::string& name, std::size_t at, const char* reference,
                             std::optional<double> ratio, std::optional<double> goal) {
            m_report.Add({name, comparison.Time(at) / 1000, "ms", reference, ratio, goal});
        };
        add("reading" + m_inRows, 0, "", {}, {});
        add("reading the indexes", 1, all, comparison.Ratio(1), {});
        add("plain search of the text in memory", 2, all, comparison.Ratio(2), {});
        add("cat" + m_inRows, 3, all, comparison.Ratio(3), 3);
        add("tree" + m_inRows, 4, all, comparison.Ratio(4), 3);
        add("errors" + m_inRows, 5, all, comparison.Ratio(5), 3);
        add("export as jsonl" + m_inRows, 7, all, comparison.Ratio(7), 3);
        add("export as trace" + m_inRows, 8, all, comparison.Ratio(8), 3);
        const double apart = (comparison.Time(6) - comparison.Time(0)) / comparison.Time(2);
        add("cat --grep, absent text", 6, "plain search, reading apart", apart, 2);
    }

    void ReadFiles(const char* extension)
    {
        static std::array<char, kPiece> buffer;
        for (const char* log : SessionFiles::kLogs)
        {
            BareFile file(m_folder.Path() + log + extension, BareFile::Role::Scan);
            while (file.ReadNext(buffer.data(), kPiece) > 0)
            {
            }
        }
    }

    void ReadIndexes() { ReadFiles(".ROW"); }

    void ReadAll()
    {
        ReadFiles(".ROW");
        ReadFiles(".LOG");
    }

    // What fits a piece is searched over and over, until it was as much as the session's text.
    void Search()
    {
        if (m_text.empty())
        {
            m_text.resize(kPiece);
            BareFile(m_folder.Path() + "Run.LOG", BareFile::Role::Scan).ReadNext(m_text.data(), kPiece);
        }
        for (std::uint64_t done = 0; done < m_session.TextBytes(); done += kPiece)
            Check(std::string_view(m_text.data(), kPiece).find(kAbsent) == std::string_view::npos,
                  "a search");
    }

    bench::Options m_options;
    bench::TemporaryFolder m_folder;
    SessionFiles m_session;
    std::string m_inRows = ", " + std::to_string(m_session.RowCount()) + " rows";
    std::vector<char> m_text;
    bench::Report m_report;
};

} // namespace

int main(int count, char** arguments)
{
    const bench::Options options = bench::ParseOptions(count, arguments);
    const bench::Report report = LogtoolBench(options).Run();
    report.Print(options);
    return options.quick || report.AllMet() ? 0 : 1;
}
