#include "logtool/Commands.h"

#include "QmLogVerify.h"

#include <chrono>
#include <ostream>

namespace logtool
{

namespace
{

// The findings in lines. Tells on a terminal how far the check has come, once it has taken a while, and
// whether it is to go on.
class Findings : public QmLogVerifyListener
{
public:
    explicit Findings(Host& host) : m_host(host) {}

    void OnFinding(const QmLogFinding& finding) override
    {
        const bool isDamage = QmLogIsDamage(finding.kind);
        std::string& text = isDamage ? m_damage : m_notes;
        text += std::string(isDamage ? "damage: " : "note: ") + finding.file + ": ";
        if (finding.row != QmLogFinding::kNoRow)
            text += "row " + std::to_string(finding.row) + ": ";
        text += std::string(finding.reason) + "\n";
        m_damaged += isDamage;
    }

    bool OnProgress(int percent) override
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

    void ClearProgress()
    {
        if (m_shown)
            m_host.Messages() << '\r' << std::string(24, ' ') << '\r' << std::flush;
    }

    const std::string& Damage() const { return m_damage; }
    const std::string& Notes() const { return m_notes; }
    std::size_t Damaged() const { return m_damaged; }
    bool Ended() const { return m_ended; }
    int Percent() const { return m_percent; }

private:
    Host& m_host;
    const std::chrono::steady_clock::time_point m_begin = std::chrono::steady_clock::now();
    std::string m_damage;
    std::string m_notes;
    std::size_t m_damaged = 0; // places
    int m_percent = 0;
    bool m_shown = false;
    bool m_ended = false;
};

class Verify : public Command
{
public:
    Verify()
        : Command({"verify", "checks the files of a log folder against each other",
                   "Prints what is damaged and, as notes, what a writer that was cut off leaves\n"
                   "and where the clock was set back.\n"
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
        std::vector<const char*> names;
        for (const std::string& log : logs)
            names.push_back(log.c_str());
        Findings findings(host);
        QmLogVerify(LogFolder().c_str(), names.data(), names.size(), findings);
        findings.ClearProgress();
        host.Output() << findings.Damage() << findings.Notes() << Totals(logs, host) << ": "
                      << (findings.Damaged() == 0 ? "no damage"
                                                  : Counted(findings.Damaged(), "damaged place"));
        if (findings.Ended())
            host.Output() << " so far, ended at " << findings.Percent() << " %";
        host.Output() << '\n';
        if (findings.Damaged() > 0)
            return kFoundFaults;
        return findings.Ended() ? kMisuse : kDone;
    }

    std::optional<std::string> m_operand;
};

} // namespace

std::unique_ptr<Command> MakeVerify()
{
    return std::make_unique<Verify>();
}

} // namespace logtool
