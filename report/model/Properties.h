// The properties of a report control: which values they take, and what they are.
#pragma once

#include "ReportStyle.h"
#include "report/model/Sizes.h"
#include "zemacore/String.h"

#include <cstdint>

namespace report
{

// Values are by id (RVP_*), as CReportCtrl::ModifyProperty and GetProperty pass them: texts as their
// addresses. What says where things are is in the View that the sizes belong to.
class Properties
{
public:
    Properties(View& view, Sizes& sizes) : m_view(view), m_sizes(sizes) {}

    // False for an unknown id or a value that is refused; nothing has changed then.
    bool Set(std::uint64_t id, std::int64_t value);

    // False for an unknown id. The address of a text is valid until the text changes.
    bool Get(std::uint64_t id, std::int64_t& value) const;

    ZEMA::String emptyText = "<Empty list>";
    ZEMA::String sortCaption = "Sort by: %s";
    std::int64_t gridStyle = 2;
    std::uint32_t notifyMask = 0xFFFFFFFF;
    std::int64_t treeStyle = 0;
    bool doubleBuffer = true;
    std::int64_t imageMode = RVIB_NONE;
    bool keepImages = false;
    COLORREF color = 0xFFFFFF;
    std::int64_t inactiveHighlight = -1;
    unsigned keys = 0;    // RVK_*
    unsigned editing = 0; // RVED_*

    // Of all controls
    static inline char stringSeparator = '\t';
    static inline ZEMA::String treeIndent;

private:
    bool SetText(ZEMA::String& text, std::int64_t value);

    View& m_view;
    Sizes& m_sizes;
};

} // namespace report
