// How the log text and the messages share the window's height.
#pragma once

namespace logdesk
{

enum class Pane
{
    LogText, // above
    Messages // below
};

// The place of the bar between them is kept as a share of the height, so that it fits windows of any size.
class PaneSplit
{
public:
    static constexpr int kWhole = 1000; // shares are thousandths
    static constexpr int kBarHeight = 6;
    static constexpr int kLeastHeight = 60; // of a pane, if there is room for both

    // In pixels, from the top down. A pane that is not shown has no height, and there is no bar then.
    struct Heights
    {
        int logText = 0;
        int bar = 0;
        int messages = 0;
        bool operator==(const Heights&) const = default;
    };
    Heights LayOut(int height) const;

    // The share of the log text, which is brought within 1 to 999.
    int Share() const { return m_share; }
    void SetShare(int share);

    // The bar is to begin at `y` of `height` pixels, as far as the panes' least heights allow.
    void MoveBar(int y, int height);

    // At least one of the panes shows: hiding one shows the other.
    bool Shows(Pane pane) const { return pane == Pane::LogText ? m_showsLogText : m_showsMessages; }
    void Show(Pane pane, bool show);

private:
    int m_share = kWhole / 2;
    bool m_showsLogText = true;
    bool m_showsMessages = true;
};

} // namespace logdesk
