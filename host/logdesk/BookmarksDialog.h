// The bookmarks as a list, to go to one and to remove some.
#pragma once

#include "afxwin.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace logdesk
{

class BookmarksDialog : public CDialog
{
public:
    struct Line
    {
        std::uint32_t number;
        std::string text;
    };

    // `remove` is called for each bookmark that the user removes.
    BookmarksDialog(CWnd* parent, std::vector<Line> lines, std::function<void(std::uint32_t)> remove);

    // The one that the user wants to go to, after DoModal.
    std::optional<std::uint32_t> Chosen() const { return m_chosen; }

protected:
    BOOL OnInitDialog() override;
    void OnOK() override;
    afx_msg void OnRemove();
    afx_msg void OnRemoveAll();
    DECLARE_MESSAGE_MAP()

private:
    LRESULT SendList(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    void EnableButtons();

    std::vector<Line> m_lines;
    std::function<void(std::uint32_t)> m_remove;
    std::optional<std::uint32_t> m_chosen;
};

} // namespace logdesk
