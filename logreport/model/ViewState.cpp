#include "logreport/model/ViewState.h"

#include "zemacore/AppDataManager.h"

#include <algorithm>
#include <string>

namespace logreport
{
namespace
{

constexpr int kNoSubItem = -1; // in place of a key that is missing
constexpr int kMissingWidth = 100;
constexpr int kMostColumns = 100;
constexpr int kWidestColumn = 32767; // what windows can place

// The section of the viewer. Without a store it reads 0 and not the values for missing keys, and writes
// nothing.
class ViewerSection
{
public:
    ViewerSection()
    {
        IAppDataManager* const manager = AppDataManager::LoadAppDataManager();
        m_store = manager ? manager->GetProfileStore() : nullptr;
    }

    int Integer(const std::string& key, int missing) const
    {
        return m_store ? m_store->GetInteger(kName, key.c_str(), missing) : 0;
    }

    COLORREF Color(const char* key, COLORREF missing) const
    {
        return m_store ? m_store->GetColor(kName, key, missing) : 0;
    }

    void SetInteger(const std::string& key, int value)
    {
        if (m_store)
            m_store->SetInteger(kName, key.c_str(), value);
    }

    void SetColor(const char* key, COLORREF value)
    {
        if (m_store)
            m_store->SetColor(kName, key, value);
    }

    void Remove(const std::string& key)
    {
        if (m_store)
            m_store->RemoveKey(kName, key.c_str());
    }

private:
    static constexpr const char* kName = "Log.Report";

    IProfileStore* m_store;
};

std::string SubItemKey(std::size_t position)
{
    return "Column." + std::to_string(position) + ".SubItem";
}

std::string WidthKey(std::size_t position)
{
    return "Column." + std::to_string(position) + ".Width";
}

void ReadColumns(const ViewerSection& section, std::vector<CQmLogStateColumn>& columns)
{
    if (section.Integer(SubItemKey(0), kNoSubItem) == kNoSubItem)
        return;

    columns.clear();
    for (std::size_t i = 0; i < kMostColumns; ++i)
    {
        const int field = section.Integer(SubItemKey(i), kNoSubItem);
        if (field == kNoSubItem)
            return;
        const int width = section.Integer(WidthKey(i), kMissingWidth);
        columns.emplace_back(static_cast<ILogMsgDataKind>(field), width);
    }
}

void ReadFlag(const ViewerSection& section, const char* key, std::int32_t& flag)
{
    flag = section.Integer(key, flag) != 0 ? 1 : 0;
}

bool IsShown(const std::vector<CQmLogStateColumn>& columns, ILogMsgDataKind field)
{
    return std::any_of(columns.begin(), columns.end(),
                       [=](const CQmLogStateColumn& column) { return column.GetField() == field; });
}

} // namespace

void ReadFromProfile(ViewState& state)
{
    const ViewerSection section;
    ReadColumns(section, state.columns);
    ReadFlag(section, "Follow", state.follow);
    ReadFlag(section, "Header", state.header);
    ReadFlag(section, "Report", state.report);
    state.warning = section.Color("Color.Warning", state.warning);
    state.error = section.Color("Color.Error", state.error);
}

void WriteToProfile(const ViewState& state)
{
    ViewerSection section;
    for (std::size_t i = 0; i < state.columns.size(); ++i)
    {
        section.SetInteger(SubItemKey(i), state.columns[i].GetField());
        section.SetInteger(WidthKey(i), state.columns[i].GetWidth());
    }
    section.Remove(SubItemKey(state.columns.size())); // the end, should more have been saved before
    section.SetInteger("Follow", state.follow);
    section.SetInteger("Header", state.header);
    section.SetInteger("Report", state.report);
    section.SetColor("Color.Warning", state.warning);
    section.SetColor("Color.Error", state.error);
}

std::vector<CQmLogStateColumn> ShowableColumns(const std::vector<CQmLogStateColumn>& columns)
{
    std::vector<CQmLogStateColumn> showable;
    bool seen = false;
    for (const CQmLogStateColumn& column : columns)
    {
        const std::int32_t field = column.GetField();
        if (field < 0 || field >= kLogMsgKindCount || IsShown(showable, column.GetField()))
            continue;
        const std::int32_t width = column.GetWidth();
        const bool isSensible = width >= 0 && width <= kWidestColumn;
        showable.emplace_back(column.GetField(), isSensible ? width : kOwnWidth);
        seen = seen || width != 0;
    }
    for (CQmLogStateColumn& column : showable)
        column.SetWidth(seen ? column.GetWidth() : kOwnWidth);
    return showable;
}

} // namespace logreport
