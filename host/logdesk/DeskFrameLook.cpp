// The look: colours, and font and zoom of the log text, as the user chose them and the system wants them.
#include "logdesk/DeskFrame.h"
#include "logdesk/FrameColours.h"
#include "vkgrafic/Display.h"
#include "vkgrafic/DrawingGuards.h"
#include "zemacore/WideText.h"

#include <algorithm>
#include <commdlg.h>

namespace logdesk
{

namespace
{

LOGFONTW DescribeFont(const TextLook& look, int points, HWND hwnd)
{
    LOGFONTW description = {};
    description.lfHeight = -::MulDiv(points, VkGrafic::GetResolution(hwnd), 72);
    description.lfCharSet = DEFAULT_CHARSET;
    description.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
    ZEMA::WideString name;
    ZEMA::ToWide(look.font.data(), look.font.size(), name);
    ::lstrcpynW(description.lfFaceName, name.c_str(), LF_FACESIZE);
    return description;
}

} // namespace

void DeskFrame::UseColours()
{
    const bool isDark = IsDark(m_options.look.colours, IsSystemDark());
    const QmLogColors colors = CQmLogTextCtrl::GetThemeColors(isDark ? QmLogTheme::Dark : QmLogTheme::Light);
    QmLogLook look;
    look.wideMargin = true;
    look.colors = &colors;
    GetTextCtrl().SetLook(look);
    UseFrameColours(m_hWnd, isDark);
    m_messages.UseColours();
}

void DeskFrame::OnDrawTools(NMHDR* header, LRESULT* result)
{
    *result = ToolBar::Draw(*reinterpret_cast<const NMTBCUSTOMDRAW*>(header));
}

void DeskFrame::SetColours(ColourChoice choice)
{
    m_options.look.colours = choice;
    UseColours();
}

// The font is of fixed pitch and has the letters of most languages; the system's own has Latin ones only.
void DeskFrame::UseTextFont()
{
    const TextLook& look = m_options.look;
    const LOGFONTW description = DescribeFont(look, ZoomedPoints(look.points, look.zoom), m_hWnd);
    CFont font;
    font.Attach(::CreateFontIndirectW(&description));
    GetTextCtrl().SetFont(&font);
    m_textFont.DeleteObject();
    m_textFont.Attach(font.Detach());
}

void DeskFrame::Zoom(int steps)
{
    const int zoom = ChangedZoom(m_options.look.points, m_options.look.zoom, steps);
    if (zoom == m_options.look.zoom)
        return;
    m_options.look.zoom = zoom;
    UseTextFont();
}

void DeskFrame::AskForTextFont()
{
    LOGFONTW description = DescribeFont(m_options.look, m_options.look.points, m_hWnd);
    CClientDC dc(this);
    const VkGrafic::Selected selected(
        dc, m_textFont); // the system takes another font if it has none of this name
    ::GetTextFaceW(dc, LF_FACESIZE, description.lfFaceName);
    CHOOSEFONTW dialog = {};
    dialog.lStructSize = sizeof(dialog);
    dialog.hwndOwner = m_hWnd;
    dialog.lpLogFont = &description;
    dialog.Flags = CF_SCREENFONTS | CF_FIXEDPITCHONLY | CF_SCALABLEONLY | CF_INITTOLOGFONTSTRUCT |
                   CF_NOSCRIPTSEL | CF_NOVERTFONTS | CF_FORCEFONTEXIST;
    if (!::ChooseFontW(&dialog))
        return;
    TextLook look = m_options.look;
    ZEMA::FromWide(description.lfFaceName, static_cast<std::size_t>(::lstrlenW(description.lfFaceName)),
                   look.font);
    look.points = (dialog.iPointSize + 5) / 10;
    look.zoom = 0;
    m_options.look = BoundedLook(look, static_cast<int>(look.colours));
    UseTextFont();
}

void DeskFrame::ScanZoom(IQmCommand& collector)
{
    AddCommand(collector, {"Zoom &In", [this] { Zoom(1); }, VK_OEM_PLUS, kQmControl});
    AddCommand(collector, {"Zoom O&ut", [this] { Zoom(-1); }, VK_OEM_MINUS, kQmControl});
    AddCommand(collector, {"&Normal Size", [this] { Zoom(0); }, '0', kQmControl});
}

void DeskFrame::ScanLook(IQmCommand& collector)
{
    const auto colours = [&](const char* caption, ColourChoice choice) {
        AddCommand(collector,
                   {caption, [this, choice] { SetColours(choice); }, 0, 0, m_options.look.colours == choice});
    };
    ScanZoom(collector);
    AddCommand(collector, {"&Font...", [this] { AskForTextFont(); }});
    collector.AddSeparator();
    colours("Colours as the &System", ColourChoice::AsSystem);
    colours("Li&ght Colours", ColourChoice::Light);
    colours("&Dark Colours", ColourChoice::Dark);
}

} // namespace logdesk
