// gallery: what a report control can draw, in four controls side by side.
#include "../common/CommandLine.h"
#include "../common/Picture.h"

#include <ReportCtrl.h>
#include <ReportHeaderCtrl.h>

#include <string>
#include <vector>

namespace
{

// Places in the colour table. The first is that of alternating rows.
enum Color
{
    kStripe,
    kRed,
    kGreen,
    kYellow
};

// A control with three columns. All sizes are for 96 dots per inch.
class GalleryReport : public CReportCtrl
{
public:
    void Start(CWnd& parent, UINT id, DWORD style)
    {
        Create(WS_CHILD | WS_VISIBLE | WS_BORDER | style, CRect(), &parent, id);
        ModifyProperty(RVP_FITITEMHEIGHT, 1);
        ModifyProperty(RVP_CHECKSIZE, Scaled(13) | Scaled(13) << 16);
        InsertColor(kStripe, RGB(235, 242, 250));
        InsertColor(kRed, RGB(180, 0, 0));
        InsertColor(kGreen, RGB(0, 128, 0));
        InsertColor(kYellow, RGB(255, 245, 190));
        const struct
        {
            const char* caption;
            int width;
            std::uint32_t format;
        } columns[] = {{"Name", 130, 0}, {"State", 90, RVSF_CHECKPLACE}, {"Size", 80, HDF_RIGHT}};
        for (const auto& column : columns)
        {
            _RVSUBITEM subitem;
            subitem.text = column.caption;
            subitem.width = Scaled(column.width);
            subitem.format = column.format;
            ActivateSubItem(DefineSubItem(GetSubItemCount(), &subitem), -1);
        }
    }
    void Fill(int item, const char* state, int size)
    {
        SetItemText(item, 1, state);
        SetItemText(item, 2, std::to_string(size).c_str());
    }
    void SetColors(int item, int text, int background)
    {
        _RVITEM change;
        change.item = item;
        change.mask = RVIM_TEXTCOLOR | RVIM_BACKGROUNDCOLOR;
        change.textColor = text;
        change.backgroundColor = background;
        SetItem(&change);
    }
    int Scaled(int pixels) { return ::MulDiv(pixels, GetResolution(), 96); }
};

class GalleryWnd : public CWnd
{
public:
    bool Open()
    {
        if (!CreateEx(0, AfxRegisterWndClass(0, ::LoadCursor(nullptr, IDC_ARROW), nullptr), "gallery",
                      WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 50, 50, m_reports[0].Scaled(720),
                      m_reports[0].Scaled(540), nullptr, nullptr))
            return false;
        FillList();
        FillTree();
        FillRows();
        m_reports[3].Start(*this, 4, RVS_FACEBACKGROUND);
        ShowWindow(SW_SHOW);
        m_reports[0].SetFocus();
        return true;
    }

protected:
    afx_msg void OnSize(UINT, int width, int height)
    {
        for (int i = 0; i < 4; ++i)
            if (m_reports[i].GetSafeHwnd())
                m_reports[i].MoveWindow(i % 2 * width / 2, i / 2 * height / 2, width / 2, height / 2);
    }
    afx_msg void OnDestroy() { ::PostQuitMessage(0); }
    DECLARE_MESSAGE_MAP()

private:
    // Grid, fixed row, all check states, images, selection and focus.
    void FillList()
    {
        GalleryReport& report = m_reports[0];
        report.Start(*this, 1, RVS_HORIZONTALGRID | RVS_VERTICALGRID | RVS_EXTENDGRID | RVS_FIXEDROW);
        MakeImages();
        report.SetImageList(&m_images, nullptr);
        report.SetItemText(RVI_DEFAULT, 0, "the fixed row");
        const char* const states[] = {"empty",       "checked",       "crossed",       "both",
                                      "radio empty", "radio checked", "radio crossed", "radio both"};
        for (int check = 0; check < 8; ++check)
        {
            const int item = report.InsertItem(check, states[check]);
            report.Fill(item, "check", check * 1000);
            report.SetItemCheck(item, 1, check);
            report.SetItemImage(item, 0, check % m_images.GetImageCount());
        }
        report.SelectRows(6, 5, 1, 0, 0, 0);
        report.SortItems(2, 1);
        report.GetHeaderCtrl()->SetItemFiltered(0, true);
    }

    // Boxes, levels, a row of one cell, the focus on a cell.
    void FillTree()
    {
        GalleryReport& report = m_reports[1];
        report.Start(*this, 2, RVS_TREE | RVS_CELLFOCUS | RVS_KEEPSELECTION);
        _TREEITEM* item = nullptr;
        for (const char* const name : {"first level", "second level", "third level", "fourth level"})
        {
            item = report.InsertTreeItem(item, nullptr, name);
            report.Fill(report.GetItemIndex(item), "open", 10);
        }
        for (item = report.GetItemHandle(0); item; item = report.GetNextItem(item, RVGN_CHILD))
            report.Expand(item, RVE_EXPAND);
        item = report.InsertTreeItem(nullptr, nullptr, "a group of its own, across all columns");
        report.SetTreeSubItem(item, 0);
        const int inGroup = report.GetItemIndex(report.InsertTreeItem(item, nullptr, "in the group"));
        report.SetItemState(inGroup, RVIS_BOLD, RVIS_BOLD);
        report.Expand(item, RVE_EXPAND);
        item = report.InsertTreeItem(nullptr, nullptr, "folded");
        report.InsertTreeItem(item, nullptr, "not to be seen");
        report.SelectRows(1, 1, 1, 0, 0, 0);
    }

    // Alternating rows, colours, a preview, the selection without the focus.
    void FillRows()
    {
        GalleryReport& report = m_reports[2];
        report.Start(*this, 3, RVS_ALTERNATEROWS | RVS_KEEPSELECTION);
        const char* const names[] = {"plain", "odd",     "a text that does not fit its cell",
                                     "bold",  "red",     "on yellow",
                                     "green", "selected"};
        for (const char* const name : names)
            report.Fill(report.InsertItem(report.GetItemCount(), name), "", 12345);
        report.SetItemState(3, RVIS_BOLD, RVIS_BOLD);
        report.SetColors(4, kRed, -1);
        report.SetColors(5, -1, kYellow);
        report.SetColors(6, kGreen, -1);
        report.SetItemPreview(1, "The preview below a line may have\nas many lines as there is room for.",
                              report.Scaled(32), kGreen);
        report.SelectRows(7, 7, 1, 0, 0, 0);
    }

    // Discs on a background that is not drawn.
    void MakeImages()
    {
        const int size = m_reports[0].Scaled(12);
        m_images.Create(size, size, ILC_COLOR32 | ILC_MASK, 2, 1);
        for (const DWORD color : {0x3070C0u, 0xE08020u})
        {
            std::vector<DWORD> pixels;
            for (int y = 0; y < size; ++y)
                for (int x = 0; x < size; ++x)
                {
                    const int dx = 2 * x - size + 1;
                    const int dy = 2 * y - size + 1;
                    pixels.push_back(dx * dx + dy * dy < size * size ? color : 0xFFFFFF);
                }
            CBitmap disc;
            disc.CreateBitmap(size, size, 1, 32, pixels.data());
            m_images.Add(&disc, RGB(255, 255, 255));
        }
    }

    CImageList m_images; // outlives the controls that show them
    GalleryReport m_reports[4];
};

BEGIN_MESSAGE_MAP(GalleryWnd, CWnd)
    ON_WM_DESTROY()
    ON_WM_SIZE()
END_MESSAGE_MAP()

} // namespace

class GalleryApp : public CWinApp
{
    BOOL InitInstance() override
    {
        m_pMainWnd = &m_wnd;
        CommandLine line("gallery", "Shows what a report control can draw.");
        try
        {
            std::string picture;
            line.AddOperand("FILE", picture, CommandLine::Need::Optional,
                            "write a picture of the window, as BMP, and end");
            return line.Read(__argc, __argv) && Start(picture); // FALSE ends the program
        }
        catch (const std::exception& error)
        {
            m_exitCode = line.Fail(error);
            return FALSE;
        }
    }

    // True when the window is to stay.
    bool Start(const std::string& picture)
    {
        if (!m_wnd.Open())
            throw std::runtime_error("the window cannot be made");
        if (!picture.empty() && !WritePicture(m_wnd, picture))
            throw std::runtime_error(picture + ": cannot be written");
        return picture.empty();
    }

    int ExitInstance() override { return m_exitCode; }

    GalleryWnd m_wnd;
    int m_exitCode = 0;
};

GalleryApp theApp;

int WINAPI WinMain(HINSTANCE instance, HINSTANCE previous, LPSTR commandLine, int show)
{
    return AfxWinMain(instance, previous, commandLine, show);
}
