#include "logtool/Commands.h"

#include "QmLogVerify.h"

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

class Verify : public Command
{
public:
    Verify()
        : Command({"verify", "checks the files of a log folder against each other",
                   "Prints what is damaged and, as notes, what a writer that was cut off leaves.\n"
                   "Rows count from 0. Exits with 1 when there is damage.\n",
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
        const std::vector<QmLogFinding> findings = QmLogVerify(LogFolder(), logs);
        std::ostream& output = host.Output();
        const std::size_t damaged = PrintFindings(output, findings, true);
        PrintFindings(output, findings, false);
        output << Totals(logs, host) << ": "
               << (damaged == 0 ? "no damage" : Counted(damaged, "damaged place")) << '\n';
        return damaged == 0 ? kDone : kFoundFaults;
    }

    std::optional<std::string> m_operand;
};

} // namespace

std::unique_ptr<Command> MakeVerify()
{
    return std::make_unique<Verify>();
}

} // namespace logtool
