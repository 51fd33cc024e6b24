// Rows as JSON Lines and as CSV.
#include "logtool/CountedText.h"
#include "logtool/ExportForm.h"
#include "logtool/ExportText.h"

namespace logtool
{

namespace
{

using namespace std::string_view_literals;
using sessionwalk::kNoBlock;
using sessionwalk::WalkedRow;

// Keeps what comes before a row's text, which but for the number is most often that of the row before in its
// log.
class HeadedForm : public ExportForm
{
public:
    explicit HeadedForm(const ExportSource& source) : m_source(source) {}

    void SetSource(const ExportSource& source, ExportBuffer&) override
    {
        m_source = source;
        m_kept.clear();
    }

protected:
    const ExportSource& Source() const { return m_source; }

    CountedText& HeadOf(const WalkedRow& row)
    {
        if (row.log >= m_kept.size())
            m_kept.resize(row.log + 1);
        Kept& kept = m_kept[row.log];
        const Fields fields = {row.depth, row.isHeader, row.kind, row.block, row.parent, row.skip, row.time};
        if (kept.fields != fields || !kept.head.CanCount(row.number))
        {
            kept.fields = fields;
            if (kept.before.empty())
                PutBefore(row, kept.before);
            ExportBuffer& text = kept.head.Begin();
            text.Append(kept.before);
            kept.head.AppendNumber(row.number);
            PutAfter(row, text);
        }
        return kept.head;
    }

private:
    // What precedes the number, the same for all rows of a log, and what follows it up to the text.
    virtual void PutBefore(const WalkedRow& row, std::string& to) const = 0;
    virtual void PutAfter(const WalkedRow& row, ExportBuffer& to) const = 0;

    struct Fields
    {
        std::uint8_t depth = 0;
        bool isHeader = false;
        QmLogBlockKind kind = kPlainKind;
        std::uint32_t block = kNoBlock;
        std::uint32_t parent = kNoBlock;
        std::size_t skip = 0;
        std::optional<QmLogTimeValue> time;
        bool operator==(const Fields&) const = default;
    };

    struct Kept
    {
        Fields fields;
        std::string before;
        CountedText head;
    };

    ExportSource m_source;
    std::vector<Kept> m_kept; // by log
};

std::string_view TruthText(bool truth)
{
    return truth ? "true"sv : "false"sv;
}

class JsonForm : public HeadedForm
{
public:
    using HeadedForm::HeadedForm;

    void Row(const WalkedRow& row, ExportBuffer& to) override
    {
        constexpr std::string_view kEnd = "\"}\n";
        CountedText& head = HeadOf(row);
        const std::string_view text = row.text.substr(row.skip);
        to.Reserve(head.Size() + text.size() + kEnd.size());
        head.PutTo(to, row.number);
        if (to.PutPlain(text))
        {
            to.Put(kEnd);
            return;
        }
        m_escaped.clear();
        AppendJson(m_escaped, text);
        m_escaped += kEnd;
        to.Append(m_escaped);
    }

private:
    void PutBefore(const WalkedRow& row, std::string& to) const override
    {
        to += "{\"session\":\"";
        AppendJson(to, Source().SessionName());
        to += "\",\"machine\":\"";
        AppendJson(to, Source().machine);
        to += "\",\"log\":\"";
        AppendJson(to, *row.name);
        to += "\",\"number\":";
    }

    void PutAfter(const WalkedRow& row, ExportBuffer& to) const override
    {
        if (row.time)
            to.Append(",\"time\":\"" + UtcText(*row.time, 7) + "\",\"depth\":");
        else
            to.Append(",\"time\":null,\"depth\":");
        to.AppendNumber(row.depth);
        to.Append(",\"kind\":\"");
        to.Append(KindText(row.kind));
        to.Append("\",\"header\":");
        to.Append(TruthText(row.isHeader));
        to.Append(",\"block\":");
        PutBlock(row.block, to);
        to.Append(",\"parent\":");
        PutBlock(row.parent, to);
        to.Append(",\"skip\":");
        to.AppendNumber(row.skip);
        to.Append(",\"text\":\"");
    }

    static void PutBlock(std::uint32_t block, ExportBuffer& to)
    {
        if (block != kNoBlock)
            to.AppendNumber(block);
        else
            to.Append("null");
    }

    std::string m_escaped;
};

class CsvForm : public HeadedForm
{
public:
    using HeadedForm::HeadedForm;

    void Begin(ExportBuffer& to) override
    {
        to.Append("session,machine,log,number,time,depth,kind,header,block,parent,skip,text\r\n");
    }

    void Row(const WalkedRow& row, ExportBuffer& to) override
    {
        const std::string_view text = row.text.substr(row.skip);
        m_value.clear();
        AppendCsv(m_value, Utf8Text(text, m_converted));
        m_value += "\r\n";
        CountedText& head = HeadOf(row);
        to.Reserve(head.Size() + m_value.size());
        head.PutTo(to, row.number);
        to.Put(m_value);
    }

private:
    void PutBefore(const WalkedRow& row, std::string& to) const override
    {
        std::string converted;
        for (const std::string& text : {Source().SessionName(), Source().machine, *row.name})
        {
            AppendCsv(to, Utf8Text(text, converted));
            to += ',';
        }
    }

    void PutAfter(const WalkedRow& row, ExportBuffer& to) const override
    {
        to.Append(",");
        to.Append(row.time ? UtcText(*row.time, 7) : "");
        to.Append(",");
        to.AppendNumber(row.depth);
        to.Append(",");
        to.Append(KindText(row.kind));
        to.Append(",");
        to.Append(TruthText(row.isHeader));
        for (const std::uint32_t block : {row.block, row.parent})
        {
            to.Append(",");
            if (block != kNoBlock)
                to.AppendNumber(block);
        }
        to.Append(",");
        to.AppendNumber(row.skip);
        to.Append(",");
    }

    std::string m_value;
    std::string m_converted;
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
