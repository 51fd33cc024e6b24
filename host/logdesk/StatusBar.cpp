#include "logdesk/StatusBar.h"

#include "vkgrafic/DrawingGuards.h"

#include <algorithm>

namespace logdesk
{

namespace
{

constexpr UINT kButtonId = 1;

enum Part
{
    kSessionPart,
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
constexpr int kAroundText = 3;
constexpr int kAroundButton = 5;

} // namespace

BEGIN_MESSAGE_MAP(StatusBar, CStatusBarCtrl)
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
    m_button.SetFont(GetFont());
    LayOut();
    return TRUE;
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

void StatusBar::SetTexts(const StatusTexts& texts)
{
    const bool isOtherWidth = texts.messages.size() != m_texts.messages.size() ||
                              texts.button != m_texts.button || texts.rows.empty() != m_texts.rows.empty();
    const std::array<std::string StatusTexts::*, kPartCount> parts = {
        &StatusTexts::session, &StatusTexts::place, &StatusTexts::rows, &StatusTexts::messages,
        &StatusTexts::follow};
    for (std::size_t part = 0; part < parts.size(); ++part)
        if (texts.*parts[part] != m_texts.*parts[part])
            SetText((texts.*parts[part]).c_str(), static_cast<int>(part), 0);
    if (texts.button != m_texts.button)
        m_button.SetWindowText(texts.button.c_str());
    m_texts = texts;
    if (isOtherWidth)
        LayOut();
}

void StatusBar::LayOut()
{
    CRect client;
    GetClientRect(client);
    const int column = GetColumnWidth();
    const int buttonColumns =
        m_texts.button.empty() ? 0 : static_cast<int>(m_texts.button.size()) + kAroundButton;
    const int messagesColumns = static_cast<int>(m_texts.messages.size()) + kAroundText + buttonColumns;
    int rights[kPartCount] = {};
    rights[kFollowPart] = -1;
    rights[kMessagesPart] = std::max(0, client.Width() - kFollowColumns * column);
    rights[kRowsPart] = std::max(0, rights[kMessagesPart] - messagesColumns * column);
    rights[kPlacePart] = std::max(0, rights[kRowsPart] - (m_texts.rows.empty() ? 0 : kRowsColumns * column));
    rights[kSessionPart] = std::max(0, rights[kPlacePart] - kPlaceColumns * column);
    SetParts(kPartCount, rights);
    const int right = rights[kMessagesPart] - 2;
    m_button.MoveWindow(right - buttonColumns * column, 2, buttonColumns * column,
                        std::max(0, static_cast<int>(client.Height()) - 2));
    m_button.ShowWindow(m_texts.button.empty() ? SW_HIDE : SW_SHOWNA);
}

} // namespace logdesk
