#include "logtool/Commands.h"

#include "QmLogVerify.h"

#include <chrono>
#include <functional>
#include <ostream>

namespace logtool
{

namespace
{

std::size_t PrintFindings(std::ostream& output, const std::vector<QmLogFinding>& findings, bool damage)
{
    std::size_t count = 0;
    for (const QmLogFinding& finding : findings)
    {
        if (QmLogIsDamage(finding.kind) != damage)
            continue;
        ++count;
        output << (damage ? "damage: " : "note: ") << finding.file << ": ";
        if (finding.row != QmLogFinding::kNoRow)
            output << "row " << finding.row << ": ";
        output << finding.reason << '\n';
    }
    return count;
}

// Tells on a terminal how far the check has come, once it has taken a while, and whether it is to go on.
class Progress
{
public:
    explicit Progress(Host& host) : m_host(host) {}

    bool operator()(int percent)
    {
        using namespace std::chrono_literals;
        m_percent = percent;
        m_ended = m_host.IsEndWanted();
        m_shown =
            m_shown || (m_host.IsMessagesTerminal() && std::chrono::steady_clock::now() - m_begin > 500ms);
        if (m_shown)
            m_host.Messages() << "\rlogtool: " << percent << " % checked" << std::flush;
        return !m_ended;
    }

    void Clear()
    {
        if (m_shown)
            m_host.Messages() << '\r' << std::string(24, ' ') << '\r' << std::flush;
    }

    bool Ended() const { return m_ended; }
    int Percent() const { return m_percent; }

private:
    Host& m_host;
    const std::chrono::steady_clock::time_point m_begin = std::chrono::steady_clock::now();
    int m_percent = 0;
    bool m_shown = false;
    bool m_ended = false;
};

class Verify : public Command
{
public:
    Verify()
        : Command({"verify", "checks the files of a log folder against each other",
                   "Prints what is damaged and, as notes, what a writer that was cut off leaves.\n"
                   "Rows count from 0. Exits with 1 when there is damage, and with 2 when Ctrl+C has\n"
                   "ended the check before any was found.\n",
                   "logtool verify C:\\Logs"})
    {
        Line().AddOperand("[FOLDER]", m_operand);
    }

private:
    std::optional<std::string> NamedFolder() const override
    {
        const std::optional<std::string> folder = Command::NamedFolder();
        if (m_operand && folder)
            throw UsageError(*m_operand, "the folder is given already with --folder");
        return m_operand ? m_operand : folder;
    }

    int Run(Host& host) override
    {
        const std::vector<std::string> logs = host.ListLogs();
        Progress progress(host);
        const std::vector<QmLogFinding> findings = QmLogVerify(LogFolder(), logs, std::ref(progress));
        progress.Clear();
        std::ostream& output = host.Output();
        const std::size_t damaged = PrintFindings(output, findings, true);
        PrintFindings(output, findings, false);
        output << Totals(logs, host) << ": "
               << (damaged == 0 ? "no damage" : Counted(damaged, "damaged place"));
        if (progress.Ended())
            output << " so far, ended at " << progress.Percent() << " %";
        output << '\n';
        if (damaged > 0)
            return kFoundFaults;
        return progress.Ended() ? kMisuse : kDone;
    }

    std::optional<std::string> m_operand;
};

} // namespace

std::unique_ptr<Command> MakeVerify()
{
    return std::make_unique<Verify>();
}

} // namespace logtool
