// Rows as JSON Lines and as CSV.
#include "logtool/ExportForm.h"
#include "logtool/ExportText.h"
#include "logtool/RowText.h"

namespace logtool
{

namespace
{

using sessionwalk::kNoBlock;
using sessionwalk::WalkedRow;

// A row's fields but for number, time and text, which are most often those of the row before in its log: what
// stands before the number and what stands after the time are kept as texts.
class KeptFields
{
public:
    struct Texts
    {
        std::string before;
        std::string after;
    };

    virtual ~KeptFields() = default;

    const Texts& Of(const WalkedRow& row)
    {
        if (row.log >= m_kept.size())
            m_kept.resize(row.log + 1);
        Kept& kept = m_kept[row.log];
        if (!kept.valid || kept.depth != row.depth || kept.kind != row.kind ||
            kept.isHeader != row.isHeader || kept.block != row.block || kept.parent != row.parent ||
            kept.skip != row.skip)
        {
            kept.valid = true;
            kept.depth = row.depth;
            kept.kind = row.kind;
            kept.isHeader = row.isHeader;
            kept.block = row.block;
            kept.parent = row.parent;
            kept.skip = row.skip;
            if (kept.texts.before.empty())
                PutBefore(row, kept.texts.before);
            kept.texts.after.clear();
            PutAfter(row, kept.texts.after);
        }
        return kept.texts;
    }

    void Forget() { m_kept.clear(); }

protected:
    virtual void PutBefore(const WalkedRow& row, std::string& to) const = 0; // the same for all of a log
    virtual void PutAfter(const WalkedRow& row, std::string& to) const = 0;

private:
    struct Kept
    {
        bool valid = false;
        std::uint8_t depth = 0;
        QmLogBlockKind kind = kPlainKind;
        bool isHeader = false;
        std::uint32_t block = kNoBlock;
        std::uint32_t parent = kNoBlock;
        std::size_t skip = 0;
        Texts texts;
    };
    std::vector<Kept> m_kept;
};

const char* TruthText(bool truth)
{
    return truth ? "true" : "false";
}

class JsonForm : public ExportForm, private KeptFields
{
public:
    explicit JsonForm(const ExportSource& source) : m_source(source) {}

    void SetSource(const ExportSource& source, std::string&) override
    {
        m_source = source;
        Forget();
    }

    void Row(const WalkedRow& row, std::string& to) override
    {
        constexpr std::string_view kEnd = "\"}\n";
        const Texts& texts = Of(row);
        const std::string_view text = row.text.substr(row.skip);
        const std::string& time = TimeField(row);
        m_row.Begin(texts.before.size() + time.size() + texts.after.size() + text.size() +
                    RowText::kMostDigits + kEnd.size());
        m_row.Put(texts.before);
        m_row.PutNumber(row.number);
        m_row.Put(time);
        m_row.Put(texts.after);
        if (m_row.PutPlain(text))
        {
            m_row.Put(kEnd);
            to += m_row.Text();
            return;
        }
        to += m_row.Text();
        AppendJson(to, text);
        to += kEnd;
    }

private:
    void PutBefore(const WalkedRow& row, std::string& to) const override
    {
        to += "{\"session\":\"";
        AppendJson(to, m_source.SessionName());
        to += "\",\"machine\":\"";
        AppendJson(to, m_source.machine);
        to += "\",\"log\":\"";
        AppendJson(to, *row.name);
        to += "\",\"number\":";
    }

    void PutAfter(const WalkedRow& row, std::string& to) const override
    {
        to += ",\"depth\":";
        AppendNumber(to, row.depth);
        to += ",\"kind\":\"";
        to += KindText(row.kind);
        to += "\",\"header\":";
        to += TruthText(row.isHeader);
        to += ",\"block\":";
        PutBlock(row.block, to);
        to += ",\"parent\":";
        PutBlock(row.parent, to);
        to += ",\"skip\":";
        AppendNumber(to, row.skip);
        to += ",\"text\":\"";
    }

    static void PutBlock(std::uint32_t block, std::string& to)
    {
        if (block != kNoBlock)
            AppendNumber(to, block);
        else
            to += "null";
    }

    // Rows of the same 10 ms have the same time.
    const std::string& TimeField(const WalkedRow& row)
    {
        if (m_timeField.empty() || row.time != m_time)
            m_timeField = row.time ? ",\"time\":\"" + UtcText(*row.time, 7) + '"' : ",\"time\":null";
        m_time = row.time;
        return m_timeField;
    }

    ExportSource m_source;
    RowText m_row;
    std::optional<QmLogTimeValue> m_time;
    std::string m_timeField; // of that time; empty before the first row
};

class CsvForm : public ExportForm, private KeptFields
{
public:
    explicit CsvForm(const ExportSource& source) : m_source(source) {}

    void Begin(std::string& to) override
    {
        to += "session,machine,log,number,time,depth,kind,header,block,parent,skip,text\r\n";
    }

    void SetSource(const ExportSource& source, std::string&) override
    {
        m_source = source;
        Forget();
    }

    void Row(const WalkedRow& row, std::string& to) override
    {
        const Texts& texts = Of(row);
        to += texts.before;
        AppendNumber(to, row.number);
        to += ',';
        to += row.time ? UtcText(*row.time, 7) : "";
        to += texts.after;
        std::string converted;
        AppendCsv(to, Utf8Text(row.text.substr(row.skip), converted));
        to += "\r\n";
    }

private:
    void PutBefore(const WalkedRow& row, std::string& to) const override
    {
        std::string converted;
        for (const std::string& text : {m_source.SessionName(), m_source.machine, *row.name})
        {
            AppendCsv(to, Utf8Text(text, converted));
            to += ',';
        }
    }

    void PutAfter(const WalkedRow& row, std::string& to) const override
    {
        to += ',';
        AppendNumber(to, row.depth);
        to += ',';
        to += KindText(row.kind);
        to += ',';
        to += TruthText(row.isHeader);
        for (const std::uint32_t block : {row.block, row.parent})
        {
            to += ',';
            if (block != kNoBlock)
                AppendNumber(to, block);
        }
        to += ',';
        AppendNumber(to, row.skip);
        to += ',';
    }

    ExportSource m_source;
};

} // namespace

std::unique_ptr<ExportForm> MakeJsonForm(const ExportSource& source)
{
    return std::make_unique<JsonForm>(source);
}

std::unique_ptr<ExportForm> MakeCsvForm(const ExportSource& source)
{
    return std::make_unique<CsvForm>(source);
}

} // namespace logtool
