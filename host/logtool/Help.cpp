#include "logtool/Commands.h"

#include <ostream>

namespace logtool
{

namespace
{

struct Topic
{
    const char* command;
    const char* summary;
    const char* text;
};

const Topic kTopics[] = {
    {"write", "appends files or standard input to a log",
     R"(logtool write LOG [--kind KIND] [--block CAPTION] [FILE...]

Appends the files, one after the other, to log LOG; without a file, or for "-", standard input, as it
comes. The folder is made when it is missing. NUL bytes are written as '?'.

  --block CAPTION  put the text into a block with this header line
  --kind KIND      the kind of the block: plain, notice, error, detail or a number; without --block
                   the first line of the text is the header

Example: logtool write Run --block "Nightly build" --kind notice build.txt
)"},
    {"cat", "shows the rows of all logs in the order they were written",
     R"(logtool cat [--log NAME]... [--from N] [--to N] [--kind KIND] [--grep TEXT] [-A N] [-B N] [--numbers]

Shows the rows of all logs as one stream by sequence number, indented by depth. On a terminal errors are
red, notices yellow and details grey; into a pipe or a file the bytes go as they are.

  --log NAME   only this log; may be repeated
  --from N     begin with sequence number N
  --to N       end with sequence number N
  --kind KIND  only rows of this kind: plain, notice, error, detail or a number
  --grep TEXT  only rows that contain TEXT
  -A N, -B N   also N rows after, before each row found
  --numbers    put sequence number and log name before each row

Example: logtool cat --log Main --log Run --grep "timeout" -B 3 --numbers
)"},
    {"tail", "shows the last rows, and new ones as they come",
     R"(logtool tail [-f] [-n N] [--after N] [--cursor-file FILE] [--log NAME]... [--numbers]

Shows the last 10 rows of all logs by sequence number.

  -n N                the last N rows
  --after N           all rows with greater sequence numbers instead
  -f                  go on with new rows as they come, until Ctrl+C
  --cursor-file FILE  go on behind the rows that the last call with this file has shown
  --log NAME          only this log; may be repeated
  --numbers           put sequence number and log name before each row

Example: logtool tail -f --cursor-file shown.txt
)"},
    {"tree", "outlines the blocks with their rows and errors",
     R"(logtool tree [--depth N] [--errors] [--log NAME]...

Shows each block's header line with its log, the rows in it and the errors in it.

  --depth N   only the outer N levels
  --errors    only what contains errors
  --log NAME  only this log; may be repeated

Example: logtool tree --depth 2
)"},
    {"errors", "shows every error with the blocks around it",
     R"(logtool errors [--log NAME]...

Shows each error block under the header lines of the blocks it lies in. Exits with 1 when there is any.

  --log NAME  only this log; may be repeated

Example: logtool errors --log Run
)"},
    {"verify", "checks the files of a log folder against each other",
     R"(logtool verify [FOLDER]

Prints what is damaged and, as notes, what a writer that was cut off leaves. Rows count from 0.
Exits with 1 when there is damage.

Example: logtool verify C:\Logs
)"},
};

} // namespace

int Help(const Arguments& arguments, Host& host)
{
    std::ostream& output = host.Output();
    if (!arguments.Operands().empty())
    {
        for (const Topic& topic : kTopics)
        {
            if (arguments.Operands().front() != topic.command)
                continue;
            output << topic.text;
            return kDone;
        }
        throw UsageError(arguments.Operands().front(), "no such command, see logtool help");
    }
    output << "logtool [--folder DIR] COMMAND ...\n\n";
    for (const Topic& topic : kTopics)
        output << "  " << topic.command << std::string(8 - std::string(topic.command).size(), ' ')
               << topic.summary << '\n';
    output << "\n  --folder DIR  the log folder, instead of the one in QM_LOG_FOLDER or the user's own\n"
              "\nlogtool help COMMAND explains a command.\n"
              "Exit code: 0 done, 1 something is wrong in the logs, 2 asked wrongly or no output possible.\n";
    return kDone;
}

} // namespace logtool
