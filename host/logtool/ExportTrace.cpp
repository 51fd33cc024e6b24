// Rows as events of the public trace event format: slices for blocks, a track a log, instants for rows.
#include "logtool/ExportForm.h"
#include "logtool/ExportText.h"
#include "logtool/RowText.h"

#include <algorithm>
#include <deque>
#include <sstream>
#include <vector>

namespace logtool
{

namespace
{

using sessionwalk::WalkedRow;

constexpr std::size_t kMostFields = 256; // bytes of an event but for its text

constexpr std::int64_t kFrom1601To1970 = 116'444'736'000'000'000; // in 100 ns

// Events go out with the comma before them, except for the first one, which says what the process is.
class TraceForm : public ExportForm
{
public:
    explicit TraceForm(const ExportSource& source) : m_source(source) {}

    void Begin(std::string& to) override
    {
        to += '[';
        PutName("process_name", 0, m_source.machine + ' ' + m_source.SessionName(), to);
    }

    void SetSource(const ExportSource& source, std::string& to) override
    {
        EndSlices(to);
        m_source = source;
        m_tracks.clear();
        m_byLog.clear();
        m_last = 0;
        to += ',';
        PutName("process_name", 0, m_source.machine + ' ' + m_source.SessionName(), to);
    }

    void Row(const WalkedRow& row, std::string& to) override
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
        const std::string_view text = row.text.substr(row.skip);
        m_event.Begin(text.size() + kMostFields);
        m_event.Put(",\n{\"name\":\"");
        if (!m_event.PutPlain(text))
        {
            to += m_event.Text();
            AppendJson(to, text);
            m_event.Begin(kMostFields);
        }
        m_event.Put("\",\"cat\":\"");
        m_event.Put(KindText(row.kind));
        m_event.Put(begins ? "\",\"ph\":\"B\"" : "\",\"ph\":\"i\",\"s\":\"t\"");
        PutPlace(track);
        m_event.Put(",\"args\":{\"number\":");
        m_event.PutNumber(row.number);
        m_event.Put(",\"depth\":");
        m_event.PutNumber(row.depth);
        m_event.Put("}}");
        to += m_event.Text();
    }

    void End(std::string& to) override
    {
        EndSlices(to);
        to += "\n]\n";
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

    // Of a log that has rows in the file.
    struct Track
    {
        std::string name;
        std::uint32_t number;      // in the order of the logs' first rows
        std::vector<Slice> slices; // begun and not ended; their depths ascend
    };

    // Without a clock a number is a time in microseconds.
    static std::int64_t TenthsOf(std::optional<std::int64_t> time, std::uint32_t number)
    {
        return time ? *time - kFrom1601To1970 : std::int64_t{number} * 10;
    }

    Track& AddTrack(const std::string& name)
    {
        m_tracks.push_back({name, static_cast<std::uint32_t>(m_tracks.size() + 1), {}});
        return m_tracks.back();
    }

    Track& TrackOf(const WalkedRow& row, std::string& to)
    {
        if (row.log >= m_byLog.size())
            m_byLog.resize(row.log + 1);
        Track*& track = m_byLog[row.log];
        for (Track& known : m_tracks)
            if (!track && known.name == *row.name)
                track = &known;
        if (!track)
        {
            track = &AddTrack(*row.name);
            to += ',';
            PutName("thread_name", track->number, track->name, to);
        }
        return *track;
    }

    void PutName(const char* what, std::uint32_t track, const std::string& name, std::string& to) const
    {
        to.append("\n{\"name\":\"").append(what).append("\",\"ph\":\"M\",\"pid\":");
        AppendNumber(to, m_source.ordinal);
        to += ",\"tid\":";
        AppendNumber(to, track);
        to += ",\"args\":{\"name\":\"";
        AppendJson(to, name);
        to += "\"}}";
    }

    // Where and when the event is.
    void PutPlace(const Track& track)
    {
        m_event.Put(",\"ts\":");
        m_event.PutNumber(static_cast<std::uint64_t>(m_last / 10));
        if (m_last % 10 != 0)
        {
            m_event.Put(".");
            m_event.PutNumber(static_cast<std::uint64_t>(m_last % 10));
        }
        m_event.Put(",\"pid\":");
        m_event.PutNumber(m_source.ordinal);
        m_event.Put(",\"tid\":");
        m_event.PutNumber(track.number);
    }

    // A block may have ended before its header's text came: then it has no slice yet.
    void EndBlock(const sessionwalk::OpenBlocks::Block& block, std::string& to)
    {
        for (Track& track : m_tracks)
            if (std::any_of(track.slices.begin(), track.slices.end(),
                            [&](const Slice& slice) { return slice.block == block.id; }))
                EndFrom(track, block.indent, to);
    }

    // Slices of this depth or more.
    void EndFrom(Track& track, unsigned depth, std::string& to)
    {
        while (!track.slices.empty() && track.slices.back().depth >= depth)
        {
            m_event.Begin(kMostFields);
            m_event.Put(",\n{\"ph\":\"E\"");
            PutPlace(track);
            m_event.Put("}");
            to += m_event.Text();
            track.slices.pop_back();
        }
    }

    void EndSlices(std::string& to)
    {
        for (Track& track : m_tracks)
            EndFrom(track, 0, to);
    }

    ExportSource m_source;
    RowText m_event;
    std::deque<Track> m_tracks;
    std::vector<Track*> m_byLog;
    std::int64_t m_last = 0; // 100 ns; a clock that is set back makes no event earlier
};

} // namespace

std::unique_ptr<ExportForm> MakeTraceForm(const ExportSource& source)
{
    return std::make_unique<TraceForm>(source);
}

} // namespace logtool
