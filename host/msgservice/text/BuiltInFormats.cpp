#include "msgservice/text/TextFormat.h"

namespace msgservice
{

// What occurs in many expressions. All that is taken of a time stamp stays taken, or a fraction could become
// text.
std::map<std::string, std::string, std::less<>> BuiltInPieces()
{
    return {
        {"month", R"((?:Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec)[a-z]{0,6})"},
        {"weekday", R"((?:Mon|Tue|Wed|Thu|Fri|Sat|Sun)[a-z]{0,6})"},
        {"clock", R"(\d{1,2}[:.]\d{1,2}(?:[:.]\d{1,2}(?:[.,:]\d{1,9})?)?(?: ?[AaPp][Mm]\b)?)"},
        {"zone", R"((?:Z\b|[+-]\d\d(?::?\d\d)?\b| ?[+-]\d\d:?\d\d\b)"
                 R"(| ?(?:UTC|GMT|[ECMP][SD]T|CES?T|EES?T|BST|MSK|JST|IST)\b)?)"},
        {"iso", R"(\d{4}[-/.]\d{1,2}[-/.]\d{1,2}(?:[T_:-]|[ ,\t]{1,2})%{clock}%{zone})"},
        {"compact",
         R"((?:\d{14}\b|(?:\d{8}[-T_ ]|\d{6}[-_ ] ?)(?:\d{6}\b|%{clock}))(?:[.,]\d{1,9})?%{zone})"},
        {"ctime",
         R"((?:%{weekday},? +)?%{month}\.? +\d{1,2},?(?: +\d{4}\b,?)? +%{clock}%{zone}(?: \d{4}\b)?)"},
        {"dayfirst",
         R"((?:%{weekday},? +)?\d{1,2}[-/ ]%{month}(?:[-/ ]\d{2,4}\b)?[ :T,]{1,2}%{clock}%{zone})"},
        {"numbers", R"(\d{1,2}[./-]\d{1,2}(?:[./-]\d{2,4}\b|\.)?[ ,T-]{1,2}%{clock}%{zone})"},
        {"epoch", R"([12]\d{9}(?:[.,]\d{1,9}|\d{3}(?:\d{3}){0,2})?\b)"},
        {"time",
         R"((?>%{iso}|%{epoch}|%{compact}|%{numbers}|%{dayfirst}|%{ctime}|\d\d?:\d\d:\d\d(?:[.,]\d{1,9})?)"
         R"((?: ?[AaPp][Mm])?)\b)"},
        {"rfc3339", R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d(?:[.,]\d{1,9})?%{zone})"},
        {"bsdtime", R"((?>%{month} +\d{1,2} (?:\d{4} )?\d\d:\d\d:\d\d(?:\.\d{1,9})?))"},
        {"logcattime", R"((?:\d{4}-)?\d\d-\d\d \d\d:\d\d:\d\d\.\d{3,9}(?: [+-]\d{4})?)"},
        // A time stamp at the beginning, in brackets or not. What may come before it: a file, a host, a
        // process id.
        {"column", R"((?<module>[^\s|]*[^\s:|])(?:[ \t]*\|[ \t]*|:[ \t]*|[ \t]+))"},
        {"stamp", R"([\[(<]?(?<timestamp>%{time})[\])>]?)"},
        // What separates header fields.
        {"gap", R"((?:[ \t]*(?:[-|,:;>]+[ \t]+|\|)|[ \t]+))"},
        {"maybegap", R"((?:[ \t]*(?:[-|,:;>]+[ \t]+|\|)|[ \t]*))"},
        {"level", R"((?<level>[A-Za-z]{3,13}\d?\b))"},
        {"inlevel", R"([\[(<] *(?<level>[A-Za-z]{3,13}\d?|[A-Z]) *[\])>])"}, // "[info]"
        {"anylevel", R"((?:%{inlevel}|%{level}))"},
        // What is within brackets, which may have brackets in it.
        {"inner", R"([^\[\]]*(?:\[[^\]]*\][^\[\]]*)*)"},
        // A logger: letters, then dots, slashes, colons within.
        {"name", R"([A-Za-z_](?:[\w.$/#@<>+~-]|:(?=[A-Za-z_:]))*)"},
        {"dotted", R"([A-Za-z_][\w$-]*(?:(?:\.|::|\/)[\w$<>-]+)+)"},
        // Who writes to syslog: words, a process id, what is meant.
        {"tag", R"((?<topic>(?:-- )?[^\s:\[\]]+(?: [^\s:\[\]]+){0,2})(?:\[(?<who>[^\]]{1,32})\])?)"
                R"((?: \((?<context>(?:[^()]|\([^()]*\)){1,200})\))?:(?: |$))"},
        {"host", R"((?<module>[^\s:\[\]<-][^\s:\[\]]*(?::[^\s:\[\]]+)*) +)"},
    };
}

namespace
{

constexpr std::uint32_t kInfo = 2;
constexpr std::uint32_t kWarning = 3;
constexpr std::uint32_t kError = 4;

using Kind = TextFormat::Kind;

} // namespace

// In the order of preference among formats that tell as much apart.
std::vector<TextFormat> BuiltInFormats()
{
    return {
        // Web servers.
        {"access", "httpd access log, common or combined", Kind::Expression,
         R"(^(?:(?<module>\S+:\d+) )?(?<who>\S+) \S+ \S+ \[(?<timestamp>\d{1,2}/\w{3}/\d{4}:\d\d:\d\d:\d\d)"
         R"((?: [+-]\d{4})?)\] (?<body>"(?:(?<topic>[A-Z]{3,16}) )?(?:[^"\\]|\\.)*" (?<status>\d{3}) .*)$)"},
        {"httpd-error", "httpd error log", Kind::Expression,
         R"(^\[(?<timestamp>%{weekday} %{month} +\d{1,2} \d\d:\d\d:\d\d(?:\.\d{1,9})? \d{4})\] )"
         R"(\[(?:(?<topic>[\w-]*):)?(?<level>\w+)\] (?:\[pid (?<who>[^\]]+)\] )?(?<body>.*)$)"},
        {"proxy-access", "proxy access log with seconds since 1970", Kind::Expression,
         R"(^(?<timestamp>%{epoch}) +\d+ (?<who>\S+) (?<body>(?<topic>[A-Z_]+)/(?<status>\d{3}) .*)$)"},

        // System logs.
        {"syslog-5424", "syslog, RFC 5424", Kind::Expression,
         R"(^(?:<(?<priority>\d{1,3})>)?\d{1,2} (?:-|(?<timestamp>%{rfc3339})) (?<module>\S+) (?<topic>\S+) )"
         R"((?<who>\S+) (?<context>\S+) (?<text1>-|(?:\[(?:[^\]\\"]|\\.|"(?:[^"\\]|\\.)*")*\])+)(?: (?:\xEF\xBB\xBF)?)"
         R"((?<body>.*))?$)"},
        {"syslog-facility", "syslog with facility and level", Kind::Expression,
         R"(^(?<timestamp>%{bsdtime}|%{weekday} %{bsdtime} \d{4}|%{rfc3339}) (?:%{host})?)"
         R"((?:kern|user|mail|daemon|auth|syslog|lpr|news|uucp|cron|authpriv|ftp|local\d)\.(?<level>\w+):? )"
         R"((?:%{tag})?(?<body>.*)$)"},
        {"network-device", "network devices: %FACILITY-SEVERITY-MNEMONIC", Kind::Expression,
         R"(^(?:<(?<priority>\d{1,3})>)?(?:\d+: )?(?:(?<module>\S+): )?(?:\d+: )?[*.]?(?<timestamp>%{time})(?: \w{3,5})?: )"
         R"(%(?<topic>[A-Z][\w-]*?)-(?<severity>[0-7])-(?<context>[A-Z]\w*): (?<body>.*)$)"},
        {"syslog", "syslog, RFC 3164", Kind::Expression,
         R"(^(?:<(?<priority>\d{1,3})>)?(?<timestamp>%{bsdtime}%{zone}|(?>%{rfc3339})) +(?:%{host})?%{tag}(?<body>.*)$)"},
        {"syslog-plain", "syslog without a program's name", Kind::Expression,
         R"(^(?:<(?<priority>\d{1,3})>)?(?<timestamp>%{bsdtime}%{zone}|(?>%{rfc3339})) +(?:%{host})?(?<body>.*)$)"},
        {"syslog-full", "journal with weekday, year and zone", Kind::Expression,
         R"(^(?<timestamp>%{weekday} %{iso}) %{host}%{tag}(?<body>.*)$)"},
        {"syslog-epoch", "syslog with seconds since 1970", Kind::Expression,
         R"(^(?<timestamp>%{epoch}) %{host}%{tag}(?<body>.*)$)"},
        {"audit", "audit records", Kind::Expression,
         R"(^(?:node=(?<module>\S+) )?type=(?<topic>\S+) msg=audit\((?<timestamp>\d+\.\d+):(?<context>\d+)\): ?(?<body>.*)$)"},
        {"display-server",
         "seconds since the start, marks (II), (WW), (EE)",
         Kind::Expression,
         R"(^\[ *(?<timestamp>\d+\.\d{3,6})\] \((?<level>II|WW|EE|--|\*\*|==|!!|NI|\?\?)\) (?:(?<topic>[\w-]+(?:\(\d+\))?): )?(?<body>.*)$)",
         {{"II", kInfo},
          {"WW", kWarning},
          {"EE", kError},
          {"--", kInfo},
          {"**", kInfo},
          {"==", kInfo},
          {"!!", kInfo},
          {"NI", kWarning},
          {"??", kInfo}}},
        {"kernel", "kernel messages, seconds since the start", Kind::Expression,
         R"(^(?:<(?<priority>\d{1,3})>)?\[ *(?<timestamp>\d+\.\d{3,9})\] (?:(?<topic>[^\s:\[\]]+(?: [^\s:\[\]]+)?): )?(?<body>.*)$)"},
        {"unified", "unified log, columns from thread to process", Kind::Expression,
         R"(^(?<timestamp>%{iso}) +0x[0-9a-f]+ +(?<level>\w+) +0x[0-9a-f]+ +(?<who>\d+) +\d+ +(?<topic>[^:]+): +(?<body>.*)$)"},

        // Telephones.
        {"logcat-threadtime", "logcat, threadtime", Kind::Expression,
         R"(^(?<timestamp>%{logcattime}) +(?:[a-z]\w* +)?(?<who>\d+ +\d+) (?<level>[VDIWEFAS]) (?<topic>.*?) *:(?: |$)(?<body>.*)$)"},
        {"logcat-time", "logcat, time", Kind::Expression,
         R"(^(?<timestamp>%{logcattime}) (?<level>[VDIWEFAS])/(?<topic>.*?) *\( *(?<who>\d+)\): ?(?<body>.*)$)"},
        {"logcat-long", "logcat, long", Kind::Expression,
         R"(^\[ (?<timestamp>%{logcattime}) +(?<who>\d+: *\d+) (?<level>[VDIWEFAS])/(?<topic>.*?) *\]$)"},
        {"logcat-brief", "logcat, brief", Kind::Expression,
         R"(^(?<level>[VDIWEFAS])/(?<topic>[^(]*?) *\( *(?<who>\d+)\): ?(?<body>.*)$)"},

        // Large machines: a mark or "-", seconds since 1970, the day once more.
        {"cluster-ras", "cluster: mark, seconds since 1970, node, RAS columns", Kind::Expression,
         R"(^(?<context>\S+) (?<timestamp>\d{9,10}) \d{4}\.\d\d\.\d\d (?<module>\S+) \d{4}-\d\d-\d\d-[\d.]+ \S+ \w+ (?<topic>\S+) (?<level>\w+) (?<body>.*)$)"},
        {"cluster-syslog", "cluster: mark, seconds since 1970, node, syslog", Kind::Expression,
         R"(^(?<context>\S+) (?<timestamp>\d{9,10}) \d{4}\.\d\d\.\d\d \S+ %{bsdtime} (?<module>\S+) +%{tag}(?<body>.*)$)"},
        {"cluster-plain", "cluster: mark, seconds since 1970", Kind::Expression,
         R"(^(?<context>\S+) (?<timestamp>\d{9,10}) \d{4}\.\d\d\.\d\d (?:(?<module>\S+) (?:%{bsdtime} \S+ )?)?(?<body>.*)$)"},
        {"cluster-columns", "columns: number, node, component, state, seconds since 1970, flag",
         Kind::Expression,
         R"(^(?:\d+ )?(?<module>\S+) (?<topic>\S+) (?<context>\S+) (?<timestamp>%{epoch}) \d+ (?<body>.*)$)"},

        // Levels as one letter.
        {"glog", "level letter, month and day, thread, file:line]", Kind::Expression,
         R"(^(?<level>[IWEFD])(?<timestamp>(?:\d{4})?\d{4} \d\d:\d\d:\d\d(?:\.\d{1,9})?) +(?<who>\d+) (?<file>[^\s:\]]+):(?<line>\d+)\] ?(?<body>.*)$)"},
        {"letter-file", "time: level letter file:line]", Kind::Expression,
         R"(%{stamp}:? (?<level>[IWEFD]) (?<file>[^\s:\]]+):(?<line>\d+)\] ?(?<body>.*)$)"},
        {"letter-bracket", "[level letter time name]", Kind::Expression,
         R"(^\[(?<level>[DIWEFC]) (?<timestamp>%{time})(?: (?<topic>[^\]]+))?\] ?(?<body>.*)$)"},
        {"process-file", "[process:thread:time:LEVEL:file(line)]", Kind::Expression,
         R"(^\[(?<who>\d+(?::\d+)?):(?<timestamp>\d{4}/\d{6}(?:\.\d+)?):(?<level>[A-Z]+):(?<file>[^():]+)[(:](?<line>\d+)\)?\] ?(?<body>.*)$)"},
        {"letter-topic", "time level letter topic [thread]", Kind::Expression,
         R"(%{stamp} (?<level>[DIWEF])\d? +(?<topic>[A-Z-]+) +\[(?<who>[^\]]+)\] (?<body>.*)$)"},
        {"letter-bar", "time level letter | topic: text", Kind::Expression,
         R"(%{stamp} (?<level>[TDINWEF]) \| (?<topic>[^\s:]+): (?<body>.*)$)"},
        {"letter-start", "D, [time #process] LEVEL -- topic: text", Kind::Expression,
         R"(^[DIWEFAU], \[(?<timestamp>[^\s\]]+) +#(?<who>\d+)\] +(?<level>[A-Z]+) -- (?<topic>[^:]*): ?(?<body>.*)$)"},
        {"marks",
         "process:role time mark text, with the marks . - * #",
         Kind::Expression,
         R"(^(?<who>\d+:[A-Z]|\[\d+\]) (?<timestamp>%{dayfirst}) (?<level>[.*#-]) (?<body>.*)$)",
         {{".", 1}, {"-", 1}, {"*", kInfo}, {"#", kWarning}}},

        // Files of the system's set-up: time, level and component in columns.
        {"servicing", "servicing log: time, level and component in columns", Kind::Expression,
         R"(^(?<timestamp>\d{4}-\d\d-\d\d \d\d:\d\d:\d\d), (?<level>[A-Z][a-z]+) +(?:(?<topic>[A-Z]\w*)(?: {2,}|\t+| (?=\[)))?(?<body>.*)$)"},
        {"update", "update log: time, process and thread, component in columns", Kind::Expression,
         R"(^(?<timestamp>%{iso})\s+(?<who>\d+\s+[0-9a-f]+)\s+(?<topic>[A-Z]\w+)\s+(?<body>.*)$)"},
        {"container",
         "container: time, stream, mark of a part",
         Kind::Expression,
         R"(^(?<timestamp>%{rfc3339}) (?<topic>stdout|stderr) [FP] (?<body>.*)$)",
         {},
         {},
         TextFormat::Trust::Checked,
         4},

        // Columns with bars.
        {"bars-level", "time|LEVEL|topic|text", Kind::Expression,
         R"(%{stamp} *\| *%{level} *\| *(?<topic>[^|\s]+?)(?: *\| *| - )(?<body>.*)$)"},
        {"bars-thread", "time|thread|LEVEL|topic|text", Kind::Expression,
         R"(%{stamp} *\| *(?<who>[^|]*?) *\| *%{level} *\| *(?<topic>[^|]*?) *\| *(?<body>.*)$)"},
        {"bars-topic-level", "time|topic|LEVEL|text", Kind::Expression,
         R"(%{stamp} *\| *(?<topic>[^|]*?) *\| *%{level} *[|:] *(?<body>.*)$)"},
        {"bars-thread-code", "time| thread| I125: text", Kind::Expression,
         R"(%{stamp}\| (?<who>[^|]*)\| (?:(?<level>[IWE])\d+: )(?<body>.*)$)"},
        {"bars-number", "time|topic|number|text", Kind::Expression,
         R"(%{stamp} *\| *(?<topic>[^|]*?) *\| *(?<who>\d+) *\| *(?<body>.*)$)"},
        {"bars-topic", "time|topic|text", Kind::Expression,
         R"(%{stamp} *\| *(?<topic>[^|]*?) *\| *(?<body>.*)$)"},
        {"bars-pairs", "time p=process u=user n=name | text", Kind::Expression,
         R"(%{stamp} p=(?<who>\d+) u=\S+ n=(?<topic>\S+) \| (?<body>.*)$)"},

        // Words and brackets.
        {"dashes-thread", "time LEVEL process --- [thread] topic : text", Kind::Expression,
         R"(%{stamp} +%{level} (?<context>\d+) --- (?:\[[^\]]*\] )*?\[ *(?<who>[^\]]*)\] (?<topic>\S+) *: (?<body>.*)$)"},
        {"channel", "[time] channel.LEVEL: text", Kind::Expression,
         R"(%{stamp} (?<topic>[\w-]+)\.(?<level>[A-Z]+): (?<body>.*)$)"},
        {"level-thread-topic", "time LEVEL [thread] topic: text", Kind::Expression,
         R"(%{stamp}%{gap}%{anylevel} *\[(?<who>%{inner})\] (?<topic>%{name})(?::| -) ?(?<body>.*)$)"},
        {"level-thread-dotted", "time LEVEL [thread] topic text", Kind::Expression,
         R"(%{stamp}%{gap}%{anylevel} *\[(?<who>%{inner})\] (?<topic>%{dotted}) (?<body>.*)$)"},
        {"thread-level-topic", "time [thread] LEVEL topic - text", Kind::Expression,
         R"(%{stamp}%{gap}[\[(](?<who>%{inner})[\])] +%{anylevel} +(?<topic>%{name})(?: *:| +-)(?: |$)(?<body>.*)$)"},
        {"thread-level-dotted", "time [thread] LEVEL topic text", Kind::Expression,
         R"(%{stamp}%{gap}\[(?<who>%{inner})\] +%{anylevel} +(?<topic>%{dotted}) (?<body>.*)$)"},
        {"level-place", "time - LEVEL [thread:class@line] - text", Kind::Expression,
         R"(%{stamp}(?: \[[^\]]*\])?%{gap}%{level} +\[(?<who>%{inner}):(?<topic>[\w$.]+)@(?<line>\d+)\] - (?<body>.*)$)"},
        {"level-topic-thread", "time LEVEL [topic] (thread) text", Kind::Expression,
         R"(%{stamp}%{gap}%{level} +\[(?<topic>[^\]\s]+)\] \((?<who>[^)]*)\) (?<body>.*)$)"},
        {"level-thread-file", "LEVEL [thread] time file:line - text", Kind::Expression,
         R"(^%{level} +\[(?<who>[^\]]*)\] +(?<timestamp>%{time}) (?<file>[\w.$-]+):(?<line>\d+) - (?<body>.*)$)"},
        {"file-level", "[time] {file:line} LEVEL - text", Kind::Expression,
         R"(%{stamp} \{(?<file>[^:}]+):(?<line>\d+)\} %{level}(?: -|:) (?<body>.*)$)"},
        {"slash-thread", "[time] [thread/LEVEL]: text", Kind::Expression,
         R"(%{stamp} \[(?<who>[^\]]*)/(?<level>[A-Z]+)\](?: [\[(](?<topic>[^\])]*)[\])])?: (?<body>.*)$)"},
        {"inside-thread", "[time: LEVEL/thread] text", Kind::Expression,
         R"(^\[(?<timestamp>%{time}): (?<level>[A-Z]+)/(?<who>[^\]]+)\] (?<body>.*)$)"},
        {"inside-topic", "[time LEVEL topic] text", Kind::Expression,
         R"(^\[(?<timestamp>%{time}) +%{level} +(?<topic>[^\]\s]+)\] (?<body>.*)$)"},
        {"inside", "[time LEVEL] text", Kind::Expression,
         R"(^\[(?<timestamp>%{time}) +%{level}\] (?<body>.*)$)"},
        {"frames", "[time][frame]topic: level: text", Kind::Expression,
         R"(%{stamp}\[ *\d+\](?<topic>\w+): (?:(?<level>Display|Warning|Error|Verbose|VeryVerbose|Fatal|Log): )?(?<body>.*)$)"},
        {"brackets-uptime", "[time][uptime][level][topic] text", Kind::Expression,
         R"(%{stamp}(?:\[\d+[.,]\d+m?s\])?\[(?<level>[a-z]+) *\]\[(?<topic>[a-z0-9,+]+) *\] (?<body>.*)$)"},
        {"brackets-level-topic", "[time][level][topic] text", Kind::Expression,
         R"(%{stamp} ?\[(?<level>[A-Za-z]+) *\] ?\[(?<topic>[^\]\s=]+) *\](?: \[(?<module>[^\]\s]*)\])?:? ?(?<body>.*)$)"},
        {"brackets-file", "[time] [topic] [level] [file:line] text", Kind::Expression,
         R"(%{stamp}(?: \[(?<topic>[^\]]*)\])? \[(?<level>[a-z]+)\] \[(?<file>[^\]:]+):(?<line>\d+)\] (?<body>.*)$)"},
        {"brackets-process", "[time] [process] [level] text", Kind::Expression,
         R"(%{stamp} ?\[(?<who>\d+)\] ?\[(?<level>[A-Za-z]+) *\] ?(?<body>.*)$)"},
        {"brackets-topic-level", "[time] [topic] [level] text", Kind::Expression,
         R"(%{stamp} ?\[(?<topic>[^\]\d][^\]]*)\] ?\[(?<level>[A-Za-z]+) *\] ?(?<body>.*)$)"},
        {"number-bracket", "time number [level] [code] [topic] text", Kind::Expression,
         R"(%{stamp} (?<who>\d+) \[(?<level>\w+)\](?: \[(?<context>[A-Z]+-\d+)\])?(?: \[(?<topic>\w+)\])? (?<body>.*)$)"},
        {"level-process", "time [level] process#thread: text", Kind::Expression,
         R"(%{stamp} \[(?<level>\w+)\] (?<who>\d+#\d+): (?<body>.*)$)"},
        {"level-process-topic", "time [level] <process>@topic text", Kind::Expression,
         R"(%{stamp} \[(?<level>\w+)\] <(?<who>[\d.]+)>(?:@(?<topic>\S+))? (?<body>.*)$)"},
        {"process-level", "time [process] user LEVEL: text", Kind::Expression,
         R"(%{stamp} \[(?<who>\d+)\](?:: \[\d+-\d+\])?:? *(?<context>[^\s:]*@[^\s:]*)? *(?<level>[A-Z]+\d?):  ?(?<body>.*)$)"},
        {"process-level-topic", "time process LEVEL topic: text", Kind::Expression,
         R"(%{stamp}%{gap}(?<who>\d+) +%{level} +(?<topic>%{name}): (?<body>.*)$)"},
        {"process-level-dotted", "time process LEVEL topic text", Kind::Expression,
         R"(%{stamp}%{gap}(?<who>\d+) +%{level} +(?<topic>%{dotted}|[a-z_]+(?= \[)) (?=(?:\[(?<context>req-[^\]]*)\])?)(?<body>.*)$)"},
        {"level-topic-process", "time LEVEL topic[process] text", Kind::Expression,
         R"(%{stamp}%{gap}%{level} +(?<topic>[\w.-]+)\[(?<who>\w+)\]:? (?<body>.*)$)"},
        {"topic-process-level", "time topic [process]: LEVEL text", Kind::Expression,
         R"(%{stamp}%{gap}(?<topic>[\w.-]+) *\[(?<who>\d+)\]: +%{level} +(?<body>.*)$)"},
        {"topic-level-dashes", "time - topic - LEVEL - text", Kind::Expression,
         R"(%{stamp}%{gap}(?<topic>[^\s|,;]+(?<! -)) *[-|,;] *%{anylevel} *[-|,;:] *(?<body>.*)$)"},
        {"bracket-topic-level", "time [topic] LEVEL: text", Kind::Expression,
         R"(%{stamp}%{gap}\[(?<topic>[^\]\s\d][^\]\s]*)\]%{maybegap}%{level}(?::| -)? (?<body>.*)$)"},
        {"id-level-topic", "time [id=number] LEVEL topic: text", Kind::Expression,
         R"(%{stamp}\s+\[id=(?<who>\d+)\]\s+%{level}\s+(?<topic>%{name}): (?<body>.*)$)"},
        {"tabs", "time LEVEL topic file:line text, with tabs", Kind::Expression,
         R"(%{stamp}\t+%{level}\t+(?:(?<topic>[^\t:]+)\t+)?(?<file>[^\t:]+):(?<line>\d+)\t+(?<body>.*)$)"},
        {"topic-colon-level", "time topic: level: text", Kind::Expression,
         R"(%{stamp}%{gap}(?<topic>%{name}): %{level}: (?<body>.*)$)"},
        {"topic-word-level", "[time] topic LEVEL error: text", Kind::Expression,
         R"(%{stamp}%{gap}(?<topic>%{name}) %{level}(?: error)?: +(?<body>.*)$)"},
        {"level-topic-line", "time LEVEL topic:function:line - text", Kind::Expression,
         R"(%{stamp}%{gap}%{anylevel}%{gap}(?<topic>[\w.]+:[\w<>.]+):(?<line>\d+)%{gap}(?<body>.*)$)"},
        {"level-file", "time LEVEL file:line text", Kind::Expression,
         R"(%{stamp}%{gap}%{anylevel}%{gap}(?:(?<topic>%{name}) )?[\[(]?(?<file>[\w./\\-]+\.[a-z]\w{0,4}):(?<line>\d+)[\])]?(?::| -)? (?<body>.*)$)"},
        {"level-trailing-topic", "[time] LEVEL text (topic)", Kind::Expression,
         R"(%{stamp} %{level} (?<body>.*) \((?<topic>%{dotted})\)$)"},
        {"level-topic", "time LEVEL topic: text", Kind::Expression,
         R"(%{stamp}%{gap}%{anylevel}%{maybegap}(?<topic>%{name})(?: *:| +-)(?: |$)(?<body>.*)$)"},
        {"level-bracket-topic", "time LEVEL [topic] text", Kind::Expression,
         R"(%{stamp}%{gap}%{level}:? *\[(?<topic>[^\]\s=]+)\]%{maybegap}(?<body>.*)$)"},
        {"level-dotted", "time LEVEL topic text", Kind::Expression,
         R"(%{stamp}%{gap}%{anylevel} +(?<topic>%{dotted}) (?<body>.*)$)"},
        {"topic-level", "time topic LEVEL text", Kind::Expression,
         R"(%{stamp}%{gap}(?<topic>%{name}) +%{anylevel}(?::| -)? (?<body>.*)$)"},
        {"level", "time LEVEL text", Kind::Expression,
         R"(%{stamp}%{maybegap}%{anylevel}%{maybegap}(?<body>.*)$)"},
        {"source-file",
         "[time, level] file:line(function)",
         Kind::Expression,
         R"(^\[(?<timestamp>%{time}),? +(?<level>\d+)[^\]]*\] (?<file>[^\s:]+):(?<line>\d+)\((?<topic>[^)]*)\)(?<body>.*)$)",
         {{"0", kError},
          {"1", kWarning},
          {"2", kInfo},
          {"3", kInfo},
          {"4", 1},
          {"5", 1},
          {"6", 1},
          {"7", 1},
          {"8", 1},
          {"9", 1},
          {"10", 0}}},
        {"file", "time file:line: text", Kind::Expression,
         R"(%{stamp}%{gap}(?<file>[\w./\\-]+\.[a-z]\w{0,4}):(?<line>\d+):? (?<body>.*)$)"},
        {"processor", "time cpu:world)topic: text", Kind::Expression,
         R"(%{stamp} (?<who>cpu\d+:\d+)\)(?:(?<topic>[\w ]+): )?(?<body>.*)$)"},
        {"topic-process", "time topic[process]: text", Kind::Expression,
         R"(%{stamp}%{gap}(?<topic>[^\s:\[\]]+)\[(?<who>[^\]]+)\]:? (?<body>.*)$)"},
        {"topic-dash", "[time] topic - text", Kind::Expression,
         R"(%{stamp} (?<topic>[^\s:\[\]]+(?: [^\s:\[\]]+){0,2}?) - (?<body>.*)$)"},
        {"topic-colon", "time topic: text", Kind::Expression,
         R"(%{stamp}%{gap}(?<topic>%{name}): (?<body>.*)$)"},
        {"bracket-topic", "time [topic] text", Kind::Expression,
         R"(%{stamp}%{maybegap}\[(?<topic>[^\]\s=]+)\]%{maybegap}(?<body>.*)$)"},
        {"name-first", "name time: text", Kind::Expression,
         R"(^(?<topic>[\w.@/-]+):? \[?(?<timestamp>%{time})\]?: (?<body>.*)$)"},

        // The level first.
        {"level-time-topic", "LEVEL time topic: text", Kind::Expression,
         R"(^%{anylevel}:? *\[?(?<timestamp>%{time})\]?%{gap}(?:\[[^\]]*\] )?(?<topic>%{name})(?::| -) (?<body>.*)$)"},
        {"level-time-file", "LEVEL: time file:line: text", Kind::Expression,
         R"(^%{anylevel}:? *\[?(?<timestamp>%{time})\]?%{gap}(?<file>[\w./\\-]+\.[a-z]\w{0,4}):(?<line>\d+):? (?<body>.*)$)"},
        {"level-time", "LEVEL time text", Kind::Expression,
         R"(^%{anylevel}:? *\[?(?<timestamp>%{time})\]?%{maybegap}(?<body>.*)$)"},
        {"time", "time text", Kind::Expression, R"(%{stamp}%{gap}(?<body>.*)$)"},
        {"time-line", "a line with the time, then the text", Kind::Expression,
         R"(^\[?(?<timestamp>%{time})\]?:?$)"},
        {"block", "blocks that begin with a line such as Start-Date: time", Kind::Expression,
         R"(^(?<topic>(?:\w+[ -])?(?i:start|begin)\w*(?:[ -]\w+)?): +(?<timestamp>%{time})$)"},
        {"level-name-text", "LEVEL:topic:text", Kind::Expression,
         R"(^(?<level>[A-Z]+):(?<topic>%{name}):(?<body>.*)$)"},
        {"level-category", "level: topic[number], then the text", Kind::Expression,
         R"(^(?<level>[a-z]{4}): (?<topic>[\w.]+)\[(?<error>-?\d+)\]$)"},
        {"level-seconds", "LEVEL[seconds] text", Kind::Expression,
         R"(^(?<level>[A-Z]{4})\[\d+\] (?<body>.*)$)"},
        {"level-only", "LEVEL: text", Kind::Expression,
         R"(^(?:%{inlevel}:?|(?<level>[A-Za-z]{3,13})(?::| -)) +(?<body>.*)$)"},

        {"json", "JSON Lines", Kind::Json, ""},
        {"logfmt", "logfmt: key=value", Kind::Logfmt, ""},
        {"none", "no format: a line is a message", Kind::Lines, ""},
    };
}

} // namespace msgservice
