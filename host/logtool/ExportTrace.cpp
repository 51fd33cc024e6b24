// Rows as events of the public trace event format: slices for blocks, a track a log, instants for rows.
#include "logtool/CountedText.h"
#include "logtool/ExportForm.h"
#include "logtool/ExportText.h"

#include <algorithm>
#include <deque>
#include <sstream>
#include <vector>

namespace logtool
{

namespace
{

using namespace std::string_view_literals;
using sessionwalk::WalkedRow;

constexpr std::int64_t kFrom1601To1970 = 116'444'736'000'000'000; // in 100 ns

// Events go out with the comma before them, except for the first one, which says what the process is.
class TraceForm : public ExportForm
{
public:
    explicit TraceForm(const ExportSource& source) : m_source(source) {}

    void Begin(ExportBuffer& to) override
    {
        to.Append("[");
        PutName("process_name", 0, m_source.machine + ' ' + m_source.SessionName(), to);
    }

    void SetSource(const ExportSource& source, ExportBuffer& to) override
    {
        EndSlices(to);
        m_source = source;
        m_tracks.clear();
        m_byLog.clear();
        m_last = 0;
        to.Append(",");
        PutName("process_name", 0, m_source.machine + ' ' + m_source.SessionName(), to);
    }

    void Row(const WalkedRow& row, ExportBuffer& to) override
    {
        for (const sessionwalk::EndedBlock& ended : *row.ended)
        {
            if (ended.time || !row.time) // else it ended before the last event
                m_last = std::max(m_last, TenthsOf(ended.time, ended.number));
            EndBlock(ended.block, to);
        }
        m_last = std::max(m_last, TenthsOf(row.time, row.number));
        Track& track = TrackOf(row, to);
        const bool begins = row.isHeader && row.skip == 0;
        EndFrom(track, row.isHeader ? row.depth : row.depth + 1u, to);
        if (begins)
            track.slices.push_back({row.block, row.depth});
        SetTail(track, row, begins);
        PutEvent(row, track, to);
    }

    void End(ExportBuffer& to) override
    {
        EndSlices(to);
        to.Append("\n]\n");
    }

    std::string State() const override
    {
        std::string state = "time " + std::to_string(m_last) + '\n';
        for (const Track& track : m_tracks)
        {
            state += "track " + track.name + '\n';
            for (const Slice& slice : track.slices)
                state += "slice " + std::to_string(slice.block) + ' ' + std::to_string(slice.depth) + '\n';
        }
        return state;
    }

    void Resume(const std::string& state) override
    {
        std::istringstream lines(state);
        for (std::string what; lines >> what;)
        {
            Slice slice;
            if (what == "time")
                lines >> m_last;
            else if (what == "track")
                std::getline(lines >> std::ws, AddTrack("").name);
            else if (lines >> slice.block >> slice.depth && !m_tracks.empty())
                m_tracks.back().slices.push_back(slice);
        }
    }

private:
    struct Slice
    {
        std::uint32_t block = 0;
        unsigned depth = 0;
    };

    // Of a row's event, what is most often that of the one before.
    struct Fields
    {
        QmLogBlockKind kind = kPlainKind;
        unsigned depth = 0;
        bool begins = false;
        std::int64_t tenths = 0;
        bool operator==(const Fields&) const = default;
    };

    // Of a log that has rows in the file.
    struct Track
    {
        std::string name;
        std::uint32_t number = 0;  // in the order of the logs' first rows
        std::string place;         // as events have it
        std::vector<Slice> slices; // begun and not ended; their depths ascend

        // What comes after the text of its last row: the time and what is before it, and the rest.
        Fields fields;
        CountedText time;
        CountedText rest;
    };

    // Without a clock a number is a time in microseconds.
    static std::int64_t TenthsOf(std::optional<std::int64_t> time, std::uint32_t number)
    {
        return time ? *time - kFrom1601To1970 : std::int64_t{number} * 10;
    }

    Track& AddTrack(const std::string& name)
    {
        Track& track = m_tracks.emplace_back();
        track.name = name;
        track.number = static_cast<std::uint32_t>(m_tracks.size());
        track.place =
            ",\"pid\":" + std::to_string(m_source.ordinal) + ",\"tid\":" + std::to_string(track.number);
        return track;
    }

    Track& TrackOf(const WalkedRow& row, ExportBuffer& to)
    {
        if (row.log >= m_byLog.size())
            m_byLog.resize(row.log + 1);
        if (!m_byLog[row.log])
            m_byLog[row.log] = &FindTrack(*row.name, to);
        return *m_byLog[row.log];
    }

    Track& FindTrack(const std::string& name, ExportBuffer& to)
    {
        for (Track& track : m_tracks)
            if (track.name == name)
                return track;
        Track& track = AddTrack(name);
        to.Append(",");
        PutName("thread_name", track.number, track.name, to);
        return track;
    }

    void PutName(const char* what, std::uint32_t track, const std::string& name, ExportBuffer& to) const
    {
        std::string text;
        AppendJson(text, name);
        to.Append("\n{\"name\":\"");
        to.Append(what);
        to.Append("\",\"ph\":\"M\",\"pid\":");
        to.AppendNumber(m_source.ordinal);
        to.Append(",\"tid\":");
        to.AppendNumber(track);
        to.Append(",\"args\":{\"name\":\"");
        to.Append(text);
        to.Append("\"}}");
    }

    void SetTail(Track& track, const WalkedRow& row, bool begins) const
    {
        const Fields fields = {row.kind, row.depth, begins, m_last % 10};
        if (track.fields == fields && track.time.CanCount(Microseconds()) && track.rest.CanCount(row.number))
            return;
        track.fields = fields;
        ExportBuffer& time = track.time.Begin();
        time.Append("\",\"cat\":\"");
        time.Append(KindText(row.kind));
        time.Append(begins ? "\",\"ph\":\"B\",\"ts\":"sv : "\",\"ph\":\"i\",\"s\":\"t\",\"ts\":"sv);
        track.time.AppendNumber(Microseconds());
        AppendFraction(time);
        ExportBuffer& rest = track.rest.Begin();
        rest.Append(track.place);
        rest.Append(",\"args\":{\"number\":");
        track.rest.AppendNumber(row.number);
        rest.Append(",\"depth\":");
        rest.AppendNumber(row.depth);
        rest.Append("}}");
    }

    void PutEvent(const WalkedRow& row, Track& track, ExportBuffer& to)
    {
        constexpr std::string_view kBegin = ",\n{\"name\":\"";
        const std::string_view text = row.text.substr(row.skip);
        const std::size_t tail = track.time.Size() + track.rest.Size();
        to.Reserve(kBegin.size() + text.size() + tail);
        to.Put(kBegin);
        if (!to.PutPlain(text))
        {
            m_escaped.clear();
            AppendJson(m_escaped, text);
            to.Append(m_escaped);
            to.Reserve(tail);
        }
        track.time.PutTo(to, Microseconds());
        track.rest.PutTo(to, row.number);
    }

    std::uint64_t Microseconds() const { return static_cast<std::uint64_t>(m_last / 10); }

    void AppendFraction(ExportBuffer& to) const
    {
        if (m_last % 10 == 0)
            return;
        to.Append(".");
        to.AppendNumber(static_cast<std::uint64_t>(m_last % 10));
    }

    // A block may have ended before its header's text came: then it has no slice yet.
    void EndBlock(const sessionwalk::OpenBlocks::Block& block, ExportBuffer& to)
    {
        for (Track& track : m_tracks)
            if (std::any_of(track.slices.begin(), track.slices.end(),
                            [&](const Slice& slice) { return slice.block == block.id; }))
                EndFrom(track, block.indent, to);
    }

    // Slices of this depth or more.
    void EndFrom(Track& track, unsigned depth, ExportBuffer& to)
    {
        for (; !track.slices.empty() && track.slices.back().depth >= depth; track.slices.pop_back())
        {
            to.Append(",\n{\"ph\":\"E\",\"ts\":");
            to.AppendNumber(Microseconds());
            AppendFraction(to);
            to.Append(track.place);
            to.Append("}");
        }
    }

    void EndSlices(ExportBuffer& to)
    {
        for (Track& track : m_tracks)
            EndFrom(track, 0, to);
    }

    ExportSource m_source;
    std::deque<Track> m_tracks;
    std::vector<Track*> m_byLog;
    std::string m_escaped;   // used again and again
    std::int64_t m_last = 0; // 100 ns; a clock that is set back makes no event earlier
};

} // namespace

std::unique_ptr<ExportForm> MakeTraceForm(const ExportSource& source)
{
    return std::make_unique<TraceForm>(source);
}

} // namespace logtool
