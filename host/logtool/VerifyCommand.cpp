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

} // namespace

int Verify(const Arguments&, Host& host)
{
    const std::vector<std::string> logs = host.ListLogs();
    const std::vector<QmLogFinding> findings = QmLogVerify(LogFolder(), logs);
    std::ostream& output = host.Output();
    const std::size_t damaged = PrintFindings(output, findings, true);
    PrintFindings(output, findings, false);
    output << Totals(logs, host) << ": " << (damaged == 0 ? "no damage" : Counted(damaged, "damaged place"))
           << '\n';
    return damaged == 0 ? kDone : kFoundFaults;
}

} // namespace logtool
