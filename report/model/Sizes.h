// The sizes of a report control that grow with the resolution of its display.
#pragma once

#include "report/model/View.h"

#include <optional>

namespace report
{

// What a View holds of item height, margin and check size. Each follows the resolution until the owner sets
// it.
class Sizes
{
public:
    explicit Sizes(View& view) : m_view(view) { Update(); }

    // Dots per inch; 96 at first. Sizes that the owner has set stay as they are.
    void SetResolution(int dpi);

    // Pixels. False, and nothing has changed, if it is negative or more than kMaxSize.
    static constexpr int kMaxSize = 0x7FFF;
    bool SetItemHeight(int height);
    bool SetMargin(int margin);
    void SetCheckSize(int width, int height);
    void ResetCheckSize(); // as if the owner had not set it

    // What the line of a grid adds to the item height, or takes away again.
    void ChangeItemHeight(int by);

    // Whether lines are as high as the tallest thing in them needs, until SetItemHeight is called.
    void FitItemHeight(bool fits);
    bool FitsItemHeight() const { return m_fitsItemHeight; }

    // What a line may hold: text, and images of this size.
    void SetFontHeight(int height);
    void SetImageSize(int width, int height);

    int DefaultColumnWidth() const { return Scale(200, m_view.dpi); }

private:
    void Update();
    int FittingHeight() const;

    View& m_view;
    std::optional<int> m_itemHeight; // by the owner
    std::optional<int> m_margin;
    std::optional<int> m_checkWidth;
    std::optional<int> m_checkHeight;
    int m_change = 0; // of the item height, by grid lines
    int m_fontHeight = 0;
    bool m_fitsItemHeight = false;
};

} // namespace report
