#include "engineview/EngineSource.h"
#include "logtool/Commands.h"
#include "logtool/InputBytes.h"
#include "logtool/MessageFields.h"
#include "logtool/MessageFlow.h"
#include "logtool/MessageOutput.h"
#include "msgservice/saved/MessageFileWriter.h"
#include "msgservice/session/SessionSource.h"
#include "msgservice/sources/OpenSource.h"
#include "msgservice/sources/TextSource.h"

#include <algorithm>
#include <functional>
#include <map>
#include <ostream>
#include <sstream>
#include <stdexcept>

namespace logtool
{

namespace
{

using msgservice::MessageSource;

const std::map<std::string, std::uint32_t> kLevelNames = {{"trace", 0},   {"debug", 1}, {"info", 2},
                                                          {"warning", 3}, {"error", 4}, {"fatal", 5}};

// "FIELD=TEXT".
msgservice::Filter ParseFilter(const std::string& option, const std::string& text, std::int32_t operation)
{
    const std::size_t sign = text.find('=');
    if (sign == std::string::npos)
        throw UsageError(option, "'" + text + "' is not FIELD=TEXT");
    return {ParseField(option, text.substr(0, sign)), operation, text.substr(sign + 1), true};
}

// "FIELD" or "FIELD:desc".
msgservice::SortKey ParseKey(const std::string& text)
{
    const std::size_t colon = text.find(':');
    const std::string direction = colon == std::string::npos ? "asc" : text.substr(colon + 1);
    if (direction != "asc" && direction != "desc")
        throw UsageError("--sort", "'" + direction + "' is no direction: asc or desc");
    return {ParseField("--sort", text.substr(0, colon)), direction == "asc"};
}

std::uint32_t ParseLevel(const std::string& text)
{
    if (const auto name = kLevelNames.find(text); name != kLevelNames.end())
        return name->second;
    throw UsageError("--level", "'" + text + "' is no level: trace, debug, info, warning, error or fatal");
}

class Messages : public Command
{
public:
    Messages();

private:
    struct Input
    {
        std::string name;
        std::unique_ptr<MessageSource> source;
    };
    int Run(Host& host) override;
    bool UsesFolder() const override { return m_session; }
    void CheckOptions() const;
    msgservice::ViewDescription Description() const;
    MessageOutput Output(Host& host) const;
    std::vector<Input> OpenInputs(Host& host);
    std::unique_ptr<MessageSource> OpenInput(const std::string& path, Host& host);
    Input OpenEngine(Host& host);
    int Explain(Host& host);
    std::uint64_t Print(std::vector<Input>& inputs, Host& host);
    std::uint64_t Save(std::vector<Input>& inputs, Host& host);
    void ReadAll(std::vector<Input>& inputs, MessageFlow& flow, const std::function<void()>& onPiece,
                 Host& host);
    void Tell(const std::string& notices, Host& host);
    void TellFault(const std::string& sentences, Host& host);

    msgservice::TextFormats m_formats;
    std::vector<std::string> m_files, m_contain, m_notContain, m_sort;
    std::optional<std::string> m_format, m_fields, m_level, m_save, m_from;
    bool m_session = false, m_explain = false, m_csv = false, m_tsv = false, m_json = false;
    bool m_ignoreCase = false, m_noDuplicates = false, m_follow = false;
    bool m_faults = false; // something could not be read
};

Messages::Messages()
    : Command({"messages", "shows the messages of text logs, sessions and saved files",
               "Tells time stamp, level, topic and body apart in text logs of the usual kinds, in\n"
               "the rows of a session and in saved message files, and shows, sorts, filters,\n"
               "converts or saves what it finds. Without a file, or for \"-\", it reads standard\n"
               "input. A line that is no message of its own continues the one before it.\n",
               "logtool messages app.log --level warning --not-contain topic=Net --csv"})
{
    Line().AddOperands("[FILE...]", m_files);
    Line().AddFlag("--session", m_session, "the logs of the session in the log folder; a row is a message");
    AddLogOption();
    Line().AddText("--from", "URL", m_from,
                   "a shipped session: http[s]://host[:port]/[table]?session=NAME[&machine=NAME]");
    Line().AddText("--format", "NAME", m_format, "take the text for this format instead of finding it out");
    Line().AddFlag("--explain", m_explain, "tell which format was found, why, and which others there are");
    Line().AddText("--fields", "LIST", m_fields,
                   "show these fields, with commas between, or all: " + FieldNames());
    Line().AddFlag("--csv", m_csv, "as CSV (RFC 4180), with a line that names the fields");
    Line().AddFlag("--tsv", m_tsv, "as values with tabs between, with a line that names the fields");
    Line().AddFlag("--json", m_json, "as a JSON object a line");
    Line().AddTexts("--contain", "FIELD=TEXT", m_contain,
                    "only messages whose field contains TEXT; may be repeated");
    Line().AddTexts("--not-contain", "FIELD=TEXT", m_notContain,
                    "only messages whose field does not contain TEXT");
    Line().AddFlag("-i,--ignore-case", m_ignoreCase, "small and capital letters are the same to these two");
    Line().AddText("--level", "LEVEL", m_level,
                   "only messages of at least this level: trace, debug, info, warning, error or fatal");
    Line().AddTexts("--sort", "FIELD[:desc]", m_sort,
                    "sort by this field; a second one orders what is equal in the first");
    Line().AddFlag("--no-duplicates", m_noDuplicates,
                   "leave out what says the same as the message before it");
    Line().AddText("--save", "FILE", m_save, "save the messages in FILE (*.zemalog) instead of showing them");
    Line().AddFlag("-f", m_follow, "go on with new messages as they come, until Ctrl+C");
}

int Messages::Run(Host& host)
{
    if (const std::string formats = host.UserFormats(); !formats.empty())
        TellFault(m_formats.Add(formats), host);
    CheckOptions();
    if (m_explain)
        return Explain(host);
    std::vector<Input> inputs = OpenInputs(host);
    if (inputs.empty())
        return kFoundFaults; // and a file that was saved before stays
    const std::uint64_t found = m_save ? Save(inputs, host) : Print(inputs, host);
    const bool chosen = !m_contain.empty() || !m_notContain.empty() || m_level;
    return m_faults ? kFoundFaults : chosen && found == 0 ? kNothingFound : kDone;
}

void Messages::CheckOptions() const
{
    if (m_csv + m_tsv + m_json + (m_save ? 1 : 0) > 1)
        throw UsageError("--csv, --tsv, --json, --save", "give one of them");
    if (m_follow && !m_sort.empty())
        throw UsageError("-f", "cannot be sorted: what comes next may belong before what is shown");
    if (!m_session && NamesLogs())
        throw UsageError("--log", "names a log of --session, which is missing");
    if (m_from && (m_session || !m_files.empty() || m_format))
        throw UsageError("--from", "reads an engine, and neither files nor --session");
    if (m_session && !m_files.empty())
        throw UsageError("--session", "reads the log folder, and no files");
    if (m_format && !m_formats.Find(*m_format))
        throw UsageError("--format", "'" + *m_format + "' is no format; --explain names them");
}

msgservice::ViewDescription Messages::Description() const
{
    msgservice::ViewDescription description;
    for (const std::string& text : m_contain)
        description.filters.push_back(ParseFilter("--contain", text, kLogMsgContain));
    for (const std::string& text : m_notContain)
        description.filters.push_back(ParseFilter("--not-contain", text, kLogMsgNotContain));
    for (msgservice::Filter& filter : description.filters)
        filter.matchCase = !m_ignoreCase;
    for (const std::string& text : m_sort)
        description.keys.push_back(ParseKey(text));
    description.showDuplicates = !m_noDuplicates;
    description.leastLevel = m_level ? ParseLevel(*m_level) : 0;
    return description;
}

MessageOutput Messages::Output(Host& host) const
{
    const MessageOutput::Form form = m_csv    ? MessageOutput::Form::Csv
                                     : m_tsv  ? MessageOutput::Form::Tsv
                                     : m_json ? MessageOutput::Form::Json
                                              : MessageOutput::Form::Text;
    std::string fields = m_files.size() > 1 ? "source," : "";
    fields += "timestamp,level,topic,body";
    const bool terminal = host.IsOutputTerminal();
    return {host.Output(),
            form,
            ParseFields("--fields", m_fields.value_or(fields)),
            {terminal, terminal && host.HasColours()}};
}

// Each input, or why it cannot be read, which is no reason to leave out the others.
std::vector<Messages::Input> Messages::OpenInputs(Host& host)
{
    std::vector<Input> inputs;
    if (m_session)
        inputs.push_back(
            {LogFolder(), std::make_unique<msgservice::SessionSource>(
                              ChosenLogs(host), m_follow ? msgservice::SessionSource::Until::Forever
                                                         : msgservice::SessionSource::Until::Now)});
    else if (m_from)
        inputs.push_back(OpenEngine(host));
    else if (m_files.empty())
        m_files.emplace_back("-");
    for (const std::string& path : m_files)
        try
        {
            inputs.push_back({path, OpenInput(path, host)});
        }
        catch (const std::runtime_error& error)
        {
            TellFault(error.what(), host);
        }
    return inputs;
}

Messages::Input Messages::OpenEngine(Host& host)
{
    const engine::EngineUrl url = engine::ParseEngineUrl(*m_from);
    if (url.session.empty())
        throw UsageError("--from", "the address names no session: add ?session=NAME, see logtool sessions");
    host.IsEndWanted(); // from here on Ctrl+C gives a question up that waits for its answer
    return {url.Shown(),
            std::make_unique<engineview::EngineSource>(url, host.Connect(url),
                                                       m_follow ? engineview::EngineSource::Until::Forever
                                                                : engineview::EngineSource::Until::Now,
                                                       Description())};
}

std::unique_ptr<MessageSource> Messages::OpenInput(const std::string& path, Host& host)
{
    if (path == "-")
    {
        auto input = host.OpenInput(path);
        if (!input)
            throw std::runtime_error("standard input: cannot be opened: " + SystemReason());
        return std::make_unique<msgservice::TextSource>(
            std::make_unique<InputBytes>(std::move(input), "standard input"), m_formats,
            msgservice::TextSourceOptions{m_files.size() > 1 ? path : "",
                                          m_format ? m_formats.Find(*m_format) : nullptr});
    }
    msgservice::OpenOptions options;
    options.formats = &m_formats;
    options.format = m_format ? m_formats.Find(*m_format) : nullptr;
    options.follow = m_follow;
    options.named = m_files.size() > 1;
    if (m_files.size() == 1) // there is but one log folder
        options.useFolder = [&host](const std::string& folder) { host.UseFolder(folder); };
    return msgservice::OpenSource(path, options);
}

// What the first lines of each input tell, and what they could have told.
int Messages::Explain(Host& host)
{
    for (const Input& input : OpenInputs(host))
    {
        MessageFlow unseen({}, [](const auto&, std::uint32_t) {});
        while (input.source->Explanation().empty() &&
               unseen.Read(*input.source) == MessageSource::State::More)
            ; // a piece more
        Tell(input.source->TakeNotices(), host);
        host.Output() << Printable(input.name) << ":\n" << input.source->Explanation() << '\n';
    }
    host.Output() << "Formats:\n";
    for (const msgservice::TextFormat& format : m_formats.All())
        host.Output() << "  " << format.name
                      << std::string(18 - std::min<std::size_t>(format.name.size(), 17), ' ') << format.title
                      << '\n';
    return m_faults ? kFoundFaults : kDone;
}

std::uint64_t Messages::Print(std::vector<Input>& inputs, Host& host)
{
    MessageOutput output = Output(host);
    MessageFlow flow(Description(),
                     [&](const auto& store, std::uint32_t index) { output.Message(store, index); });
    output.Head();
    ReadAll(
        inputs, flow,
        [&] {
            output.Flush();
            host.Output().flush();
        },
        host);
    return flow.Count();
}

std::uint64_t Messages::Save(std::vector<Input>& inputs, Host& host)
{
    const std::string origin = m_from            ? engine::ParseEngineUrl(*m_from).Shown()
                               : m_session       ? LogFolder()
                               : m_files.empty() ? "-"
                                                 : m_files.front();
    msgservice::MessageFileWriter file(*m_save, msgservice::MessageFileWriter::Mode::Replace,
                                       {"", "logtool", LOGTOOL_VERSION, origin});
    MessageFlow flow(Description(), [&](const auto& store, std::uint32_t index) {
        file.Add(msgservice::FieldsOf(store, index));
    });
    ReadAll(
        inputs, flow, [&] { m_follow ? file.Commit() : void(); }, host);
    file.Commit();
    host.Messages() << "logtool: " << Counted(flow.Count(), "message") << " saved in " << Printable(*m_save)
                    << std::endl;
    return flow.Count();
}

// File by file, and then, if more may come, all of them again and again.
void Messages::ReadAll(std::vector<Input>& inputs, MessageFlow& flow, const std::function<void()>& onPiece,
                       Host& host)
{
    const auto readOn = [&](Input& input) {
        MessageSource::State state = MessageSource::State::More;
        while (state == MessageSource::State::More && !(m_follow && host.IsEndWanted()))
        {
            state = flow.Read(*input.source);
            const std::string notices = input.source->TakeNotices();
            Tell(notices, host);
            m_faults = m_faults || (state == MessageSource::State::Ended && !notices.empty());
            onPiece();
        }
        if (state == MessageSource::State::Ended)
            input.source.reset();
    };
    for (bool goOn = true; goOn;)
    {
        for (Input& input : inputs)
            if (input.source)
                readOn(input);
        const bool ended =
            std::none_of(inputs.begin(), inputs.end(), [](const Input& input) { return !!input.source; });
        goOn = m_follow && !ended && host.Wait();
    }
    flow.Finish();
    onPiece();
}

// What an input tells beside its messages. While it is followed this is what became of the file, and no
// fault unless it ends the input.
void Messages::Tell(const std::string& notices, Host& host)
{
    const bool faults = m_faults;
    TellFault(notices, host);
    m_faults = m_follow ? faults : m_faults;
}

void Messages::TellFault(const std::string& sentences, Host& host)
{
    std::istringstream lines(sentences);
    for (std::string line; std::getline(lines, line); m_faults = true)
        host.Messages() << "logtool: " << Printable(line) << std::endl;
}

} // namespace

std::unique_ptr<Command> MakeMessages()
{
    return std::make_unique<Messages>();
}

} // namespace logtool
