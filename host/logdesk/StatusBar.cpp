#include "logdesk/StatusBar.h"

#include "afxcontrolbarutil.h"
#include "qmcommon/QmIcon.h"
#include "vkgrafic/Display.h"
#include "vkgrafic/DrawingGuards.h"
#include "vkgrafic/GraphicText.h"
#include "vkgrafic/WindowColors.h"

#include <algorithm>
#include <utility>

namespace logdesk
{

namespace
{

constexpr UINT kButtonId = 1;
constexpr UINT kWatchId = 2;
constexpr UINT kLinkId = 3;

enum Part
{
    kSessionPart,
    kWatchPart,
    kErrorsPart,
    kPlacePart,
    kRowsPart,
    kMessagesPart,
    kFollowPart,
    kPartCount
};

// In columns, the mean width of a character.
constexpr int kFollowColumns = 19;
constexpr int kRowsColumns = 14;
constexpr int kPlaceColumns = 32;
constexpr int kWatchColumns = 12; // at least, beside a link
constexpr int kAroundText = 3;
constexpr int kAroundButton = 5;

constexpr int kTextMargin = 4; // pixels before a part's text
constexpr int kLineMargin = 4; // above and below the lines between parts

constexpr std::pair<Part, std::string StatusTexts::*> kParts[] = {
    {kSessionPart, &StatusTexts::session},   {kErrorsPart, &StatusTexts::errors},
    {kPlacePart, &StatusTexts::place},       {kRowsPart, &StatusTexts::rows},
    {kMessagesPart, &StatusTexts::messages}, {kFollowPart, &StatusTexts::follow}};

} // namespace

BEGIN_MESSAGE_MAP(StatusBar, CStatusBarCtrl)
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_BN_CLICKED(kButtonId, &StatusBar::OnButton)
END_MESSAGE_MAP()

StatusBar::~StatusBar()
{
    DestroyWindow();
}

BOOL StatusBar::Create(CWnd* parent, UINT id)
{
    if (!CStatusBarCtrl::Create(WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | SBARS_SIZEGRIP, CRect(), parent,
                                id))
        return FALSE;
    if (!m_button.Create("BUTTON", "", WS_CHILD | BS_PUSHBUTTON, CRect(), this, kButtonId))
        return FALSE;
    if (!m_watch.Create(WS_CHILD, CRect(), this, kWatchId))
        return FALSE;
    if (!m_link.Create(this, kLinkId, "Show them (Ctrl+M)"))
        return FALSE;
    m_watch.SetOwnerWnd(parent);
    UseResolution();
    return TRUE;
}

void StatusBar::UseResolution()
{
    CFont* const font = CFont::FromHandle(VkGrafic::GetGuiFont(m_hWnd));
    SetFont(font);
    m_button.SetFont(font);
    LayOut();
}

void StatusBar::OnButton()
{
    m_pressed();
}

int StatusBar::GetColumnWidth()
{
    TEXTMETRIC font = {};
    CClientDC dc(this);
    const VkGrafic::Selected selected(dc, GetFont()->GetSafeHandle());
    dc.GetTextMetrics(&font);
    return font.tmAveCharWidth;
}

BOOL StatusBar::OnEraseBkgnd(CDC*)
{
    return TRUE; // painted as a whole
}

// By itself, because the system's bar knows light colours only.
void StatusBar::OnPaint()
{
    using VkGrafic::UiColor;
    CPaintDC paint(this);
    CMemDC memory(paint, this);
    CDC& dc = memory.GetDC();
    const VkGrafic::WindowColors colors(m_hWnd);
    CRect client;
    GetClientRect(client);
    dc.FillSolidRect(client, colors[UiColor::Face]);
    dc.FillSolidRect(0, 0, client.Width(), 1, colors[UiColor::Edge]);
    const VkGrafic::Selected selected(dc, GetFont()->GetSafeHandle());
    dc.SetBkMode(TRANSPARENT);
    for (const auto& [part, text] : kParts)
    {
        CRect rect = GetPart(part);
        if (rect.Width() <= kTextMargin)
            continue;
        if (part != kFollowPart)
            dc.FillSolidRect(rect.right, rect.top + kLineMargin, 1, rect.Height() - 2 * kLineMargin,
                             colors[UiColor::Edge]);
        rect.left += kTextMargin;
        dc.SetTextColor(colors[UiColor::FaceText]);
        GraphicText(dc).Draw((m_texts.*text).data(), static_cast<int>((m_texts.*text).size()), rect,
                             DT_LEFT | DT_VCENTER | DT_END_ELLIPSIS);
    }
    if (!::IsZoomed(::GetParent(m_hWnd)))
        DrawGrip(dc, colors[UiColor::DarkShadow]);
}

// Dots in the corner, by which the window is made larger.
void StatusBar::DrawGrip(CDC& dc, COLORREF color)
{
    constexpr int kDots = 3;
    CRect client;
    GetClientRect(client);
    const int dot = std::max(1, ::MulDiv(2, VkGrafic::GetResolution(m_hWnd), 96));
    for (int row = 0; row < kDots; ++row)
        for (int column = 0; column <= row; ++column)
            dc.FillSolidRect(client.right - (column + 1) * 2 * dot, client.bottom - (kDots - row) * 2 * dot,
                             dot, dot, color);
}

void StatusBar::SetTexts(const StatusTexts& texts)
{
    const bool isOtherWidth = texts.messages.size() != m_texts.messages.size() ||
                              texts.errors.size() != m_texts.errors.size() ||
                              texts.session != m_texts.session ||
                              texts.place.size() != m_texts.place.size() || texts.button != m_texts.button ||
                              texts.rows.empty() != m_texts.rows.empty() || GetWatchWidth() != m_watchWidth;
    const StatusTexts before = std::exchange(m_texts, texts); // setting one may paint at once
    for (const auto& [part, text] : kParts)
        if (texts.*text != before.*text)
            SetText((texts.*text).c_str(), part, 0);
    if (texts.button != before.button)
        m_button.SetWindowText(texts.button.c_str());
    if (texts.link != before.link)
        m_link.SetWindowText(texts.link.c_str());
    m_watch.UpdateTip();
    if (isOtherWidth)
        LayOut();
}

// Of the room for session and watch: the watch has what the session's text leaves, and half of it at least if
// its own text needs that.
int StatusBar::GetSessionRight(int room)
{
    if (m_watchWidth == 0)
        return room;
    return std::min(GetPartWidth(m_texts.session), room - std::min(m_watchWidth, room / 2));
}

int StatusBar::GetWatchWidth()
{
    return m_watch.IsShowing() ? QmIconSize(m_hWnd) + GetPartWidth(m_watch.GetShownText().c_str()) : 0;
}

// Of what is left for session, watch and place: as much as it has in a wide window if a quarter of the whole
// stays to the others and a link can be read, as much as its text needs if an eighth does.
int StatusBar::GetPlaceWidth(int room, int width)
{
    const int link = m_texts.link.empty() ? 0
                                          : GetPartWidth(m_texts.session) +
                                                std::min(m_watchWidth, kWatchColumns * GetColumnWidth());
    const int wanted = std::clamp(room - std::max(width / 4, link), 0, kPlaceColumns * GetColumnWidth());
    return std::max(wanted, std::min(GetPartWidth(m_texts.place), std::max(0, room - width / 8)));
}

int StatusBar::GetTextWidth(const std::string& text)
{
    CClientDC dc(this);
    const VkGrafic::Selected selected(dc, GetFont()->GetSafeHandle());
    return GraphicText(dc).GetWidth(text.data(), static_cast<int>(text.size()));
}

int StatusBar::GetPartWidth(const std::string& text)
{
    return GetTextWidth(text) + kAroundText * GetColumnWidth();
}

CRect StatusBar::GetPart(int part)
{
    CRect rect;
    SendMessage(SB_GETRECT, static_cast<WPARAM>(part), reinterpret_cast<LPARAM>(&rect));
    return rect;
}

void StatusBar::LayOut()
{
    CRect client;
    GetClientRect(client);
    const int column = GetColumnWidth();
    const int buttonColumns =
        m_texts.button.empty() ? 0 : static_cast<int>(m_texts.button.size()) + kAroundButton;
    const int messagesColumns = static_cast<int>(m_texts.messages.size()) + kAroundText + buttonColumns;
    const int errorsColumns = static_cast<int>(m_texts.errors.size()) + kAroundText;
    m_watchWidth = GetWatchWidth();
    int rights[kPartCount] = {};
    rights[kFollowPart] = -1;
    rights[kMessagesPart] = std::max(0, client.Width() - kFollowColumns * column);
    rights[kRowsPart] = std::max(0, rights[kMessagesPart] - messagesColumns * column);
    rights[kPlacePart] = std::max(0, rights[kRowsPart] - (m_texts.rows.empty() ? 0 : kRowsColumns * column));
    rights[kErrorsPart] =
        rights[kPlacePart] - GetPlaceWidth(rights[kPlacePart] - errorsColumns * column, client.Width());
    rights[kWatchPart] = std::max(0, rights[kErrorsPart] - errorsColumns * column);
    rights[kSessionPart] = GetSessionRight(rights[kWatchPart]);
    SetParts(kPartCount, rights);
    PlaceWatch();
    PlaceLink();
    PlaceButton(buttonColumns);
}

int StatusBar::GetLeastWidth()
{
    int width = (kFollowColumns + kRowsColumns) * GetColumnWidth();
    for (const char* const text :
         {"Session opened", "1,234 errors", "Row 1234567: Service, number 12345678", "1,234,567 messages"})
        width += GetPartWidth(text);
    return width;
}

void StatusBar::PlaceWatch()
{
    CRect part = GetPart(kWatchPart);
    ::InflateRect(part, -1, -1); // within its border
    m_watch.MoveWindow(part.left, part.top, std::max(0, part.Width()), std::max(0, part.Height()));
    m_watch.ShowWindow(m_watchWidth > 0 ? SW_SHOWNA : SW_HIDE);
}

// At the end of the session's text.
void StatusBar::PlaceLink()
{
    const CRect part = GetPart(kSessionPart);
    const int left = part.left + kTextMargin + GetTextWidth(m_texts.session) - GetTextWidth(m_texts.link);
    const int width = std::min(GetTextWidth(m_texts.link), static_cast<int>(part.right) - left);
    m_link.MoveWindow(left, part.top, std::max(0, width), part.Height());
    m_link.ShowWindow(m_texts.link.empty() || width <= 0 ? SW_HIDE : SW_SHOWNA);
}

// At the end of the messages' part.
void StatusBar::PlaceButton(int columns)
{
    const CRect part = GetPart(kMessagesPart);
    const int width = columns * GetColumnWidth();
    m_button.MoveWindow(part.right - 2 - width, 2, width, std::max(0, static_cast<int>(part.bottom) - 2));
    m_button.ShowWindow(m_texts.button.empty() ? SW_HIDE : SW_SHOWNA);
}

} // namespace logdesk
