#include "qmcommon/MenuText.h"

namespace qmcommon
{
namespace
{

char Capital(char character)
{
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}

} // namespace

MenuText SplitMenuText(const std::string& text)
{
    const std::size_t tab = text.find('\t');
    if (tab == std::string::npos)
        return {text, {}};
    return {text.substr(0, tab), text.substr(tab + 1)};
}

char AccessKey(const std::string& caption)
{
    for (std::size_t i = 0; i + 1 < caption.size(); ++i)
    {
        if (caption[i] != '&')
            continue;
        ++i;
        if (caption[i] != '&') // two of them show one
            return Capital(caption[i]);
    }
    return caption.empty() ? '\0' : Capital(caption.front());
}

AccessItem FindAccessItem(const std::vector<std::string>& captions, int selected, char key)
{
    const int count = static_cast<int>(captions.size());
    int position = -1;
    int found = 0;
    for (int step = 1; step <= count; ++step)
    {
        const int candidate = (selected + step) % count;
        if (AccessKey(captions[static_cast<std::size_t>(candidate)]) != Capital(key) || key == '\0')
            continue;
        if (found++ == 0)
            position = candidate;
    }
    return {position, found == 1};
}

} // namespace qmcommon
