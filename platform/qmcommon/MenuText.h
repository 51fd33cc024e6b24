// The texts of menu items: caption, shortcut and access key. No window system.
#pragma once

#include <string>
#include <vector>

namespace qmcommon
{

// An item's text in two columns.
struct MenuText
{
    std::string caption;  // with "&" before its access key
    std::string shortcut; // what stands after the tab, if there is one
};

MenuText SplitMenuText(const std::string& text);

// The character after the first single "&", else the first one; as a capital letter. 0 for an empty caption.
char AccessKey(const std::string& caption);

// The items that an access key names.
struct AccessItem
{
    int position; // the next one after the selected item, around the end; -1 when there is none
    bool only;    // no other item has the key
};

// `selected` is a position or -1.
AccessItem FindAccessItem(const std::vector<std::string>& captions, int selected, char key);

} // namespace qmcommon
