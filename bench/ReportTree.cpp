#include "ReportTree.h"
#include "BenchFiles.h"

#include <string>

namespace bench
{

namespace
{

// One item at the top, with `width` children that have `width` children each.
constexpr int Items(int width)
{
    return 1 + width + width * width;
}

class TreeList
{
public:
    TreeList(Frame& frame, int width) : m_list(frame, RVS_TREE), m_width(width) {}

    // Every item is expanded as soon as it has a child.
    void Fill()
    {
        m_list.SetRedraw(0);
        m_top = Insert(TVI_ROOT);
        for (int i = 0; i < m_width; ++i)
        {
            _TREEITEM* const branch = Insert(m_top);
            for (int j = 0; j < m_width; ++j)
                Insert(branch);
        }
        m_list.SetRedraw(1);
    }

    void Collapse()
    {
        Check(m_list.Expand(m_top, RVE_COLLAPSE) == 1 && m_list.GetRowCount() == 1, "collapsing");
    }

    void Expand()
    {
        Check(m_list.Expand(m_top, RVE_EXPAND) == 1 && m_list.GetRowCount() == Items(m_width), "expanding");
    }

private:
    _TREEITEM* Insert(_TREEITEM* parent)
    {
        const CellText text = MakeText(m_list.GetItemCount(), 0);
        _TREEITEM* const item = m_list.InsertTreeItem(parent, TVI_LAST, text.data());
        Check(item != nullptr, "a tree item");
        if (parent != TVI_ROOT && parent->expanded == 0)
            Check(m_list.Expand(parent, RVE_EXPAND) == 1, "expanding");
        return item;
    }

    ReportList m_list;
    int m_width;
    _TREEITEM* m_top = nullptr;
};

class TreeView
{
public:
    TreeView(Frame& frame, int width) : m_width(width)
    {
        INITCOMMONCONTROLSEX controls = {sizeof(controls), ICC_TREEVIEW_CLASSES};
        ::InitCommonControlsEx(&controls);
        m_hwnd = ::CreateWindowA(WC_TREEVIEWA, "", WS_CHILD | WS_VISIBLE, 0, 0, 1000, 740, frame.m_hWnd,
                                 nullptr, AfxGetInstanceHandle(), nullptr);
        Check(m_hwnd != nullptr, "the tree view");
    }

    ~TreeView() { ::DestroyWindow(m_hwnd); }
    TreeView(const TreeView&) = delete;
    TreeView& operator=(const TreeView&) = delete;

    void Fill()
    {
        Send(WM_SETREDRAW, FALSE, 0);
        m_top = Insert(TVI_ROOT);
        for (int i = 0; i < m_width; ++i)
        {
            const HTREEITEM branch = Insert(m_top);
            if (i == 0)
                Expand(m_top, TVE_EXPAND);
            for (int j = 0; j < m_width; ++j)
            {
                Insert(branch);
                if (j == 0)
                    Expand(branch, TVE_EXPAND);
            }
        }
        Send(WM_SETREDRAW, TRUE, 0);
    }

    void Collapse() { Expand(m_top, TVE_COLLAPSE); }
    void Expand() { Expand(m_top, TVE_EXPAND); }

private:
    LRESULT Send(UINT message, WPARAM wParam, LPARAM lParam) const
    {
        return ::SendMessageA(m_hwnd, message, wParam, lParam);
    }

    void Expand(HTREEITEM item, WPARAM action)
    {
        Check(Send(TVM_EXPAND, action, reinterpret_cast<LPARAM>(item)) != 0, "the tree view's expansion");
    }

    HTREEITEM Insert(HTREEITEM parent)
    {
        CellText text = MakeText(m_count++, 0);
        TVINSERTSTRUCTA insertion = {};
        insertion.hParent = parent;
        insertion.hInsertAfter = TVI_LAST;
        insertion.item.mask = TVIF_TEXT;
        insertion.item.pszText = text.data();
        const auto item =
            reinterpret_cast<HTREEITEM>(Send(TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&insertion)));
        Check(item != nullptr, "an item of the tree view");
        return item;
    }

    HWND m_hwnd;
    int m_width;
    int m_count = 0;
    HTREEITEM m_top = nullptr;
};

} // namespace

// The tree view gets slow with more items than it has here.
void MeasureTree(const Options& options, Frame& frame, Report& report)
{
    const int width = options.quick ? 100 : 1000;
    const int viewWidth = options.quick ? 30 : 100;
    const unsigned units = static_cast<unsigned>(Items(width));
    const unsigned viewUnits = static_cast<unsigned>(Items(viewWidth));
    const std::string name = " a tree of " + std::to_string(units);
    const std::string reference = "the tree view, " + std::to_string(viewUnits);
    TreeView view(frame, viewWidth);
    TreeList list(frame, width);

    const double viewFill = Microseconds({viewUnits, [&view] { view.Fill(); }});
    const double fill = Microseconds({units, [&list] { list.Fill(); }});
    report.Add({"fill" + name, fill, "us", reference, fill / viewFill, 1.0});

    const auto turn = [](auto& tree, unsigned items) {
        return Variant{items, [&tree] {
                           tree.Collapse();
                           tree.Expand();
                       }};
    };
    const Comparison comparison({turn(view, viewUnits), turn(list, units)}, options.quick ? 3 : 11);
    report.Add({"fold" + name, comparison.Time(1), "us", reference, comparison.Ratio(1), 1.0});
}

} // namespace bench
