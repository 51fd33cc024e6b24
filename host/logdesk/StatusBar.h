// The bar at the bottom of the window.
#pragma once

#include "afxcmn.h"
#include "logdesk/DeskWatch.h"
#include "logdesk/StatusLink.h"
#include "qmcommon/QmButtonXP.h"

#include <array>
#include <functional>
#include <string>

namespace logdesk
{

// What its panes say, from left to right, and its button, which is hidden without a text.
struct StatusTexts
{
    std::string session;
    std::string link;   // the end of that, which leads somewhere
    std::string errors; // beside the watch, which shows the latest one
    std::string place;  // in the window that has the focus
    std::string rows;
    std::string messages;
    std::string button; // at the end of that pane
    std::string follow;
    bool operator==(const StatusTexts&) const = default;
};

// The session and the watch have what the others leave. The watch has no place while it shows nothing, and
// the session then has enough for its long text in a window of usual width.
class StatusBar : public CStatusBarCtrl
{
public:
    // What the user asks for: by the button, by the link, by the watch's menu, and by leaving the watch.
    StatusBar(std::function<void()> pressed, std::function<void()> follow, std::function<void()> clear,
              std::function<void()> leave)
        : m_pressed(std::move(pressed)), m_link(std::move(follow)),
          m_watch(std::move(clear), std::move(leave))
    {
    }
    ~StatusBar() override;

    BOOL Create(CWnd* parent, UINT id);

    DeskWatch& Watch() { return m_watch; }

    // Paints only what is another text than before, and makes room for what the watch shows.
    void SetTexts(const StatusTexts& texts);

    // Takes the font that the display wants now.
    void UseResolution();

    // After the parent's size has changed.
    void LayOut();

    // Pixels at which texts of usual length show in full.
    int GetLeastWidth();

protected:
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void OnButton();
    DECLARE_MESSAGE_MAP()

private:
    int GetColumnWidth();
    int GetSessionRight(int room);
    int GetWatchWidth();
    int GetPlaceWidth(int room, int width);
    int GetTextWidth(const std::string& text);
    int GetPartWidth(const std::string& text);
    CRect GetPart(int part);
    void DrawGrip(CDC& dc, COLORREF color);
    void PlaceLink();
    void PlaceWatch();
    void PlaceButton(int columns);

    std::function<void()> m_pressed;
    StatusTexts m_texts;
    CQmButtonXP m_button;
    StatusLink m_link;
    int m_watchWidth = 0; // as its text wants it; 0 while it has no place
    DeskWatch m_watch;
};

} // namespace logdesk
