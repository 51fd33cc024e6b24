#include "qmcommandline/QmCommandLineWorker.h"

#include "qmcommandline/ProcessWords.h"

#include <algorithm>

namespace
{

// After a dash or two: 0 for a word that is no option, as one of dashes only, or without a name before its
// "=".
std::size_t NameBegin(const std::string& word)
{
    const std::size_t name = word.find_first_not_of('-');
    return name <= 2 && word[name] != '=' ? name : 0;
}

} // namespace

QmCommandLineWorker::QmCommandLineWorker() = default;
QmCommandLineWorker::~QmCommandLineWorker() = default;

void QmCommandLineWorker::ReadFromProcess()
{
    ReadFromWords(ProcessWords());
}

void QmCommandLineWorker::ReadFromWords(const std::vector<std::string>& words)
{
    *this = QmCommandLineWorker();
    bool optionsEnded = false;
    for (const std::string& word : words)
    {
        const std::size_t name = NameBegin(word);
        if (&word == &words.front())
            m_program = word;
        else if (word == "--" && !optionsEnded)
            optionsEnded = true;
        else if (optionsEnded || name == 0)
            m_words.push_back(word);
        else
        {
            const std::size_t end = std::min(word.find('=', name), word.size());
            m_options.push_back({word.substr(name, end - name), word.substr(std::min(end + 1, word.size()))});
        }
    }
}

bool QmCommandLineWorker::HasOption(const std::string& name) const
{
    return FindOption(name) != nullptr;
}

bool QmCommandLineWorker::GetOption(const std::string& name, std::string& value) const
{
    const Option* const option = FindOption(name);
    if (option)
        value = option->value;
    return option != nullptr;
}

const QmCommandLineWorker::Option* QmCommandLineWorker::FindOption(const std::string& name) const
{
    const auto found = std::find_if(m_options.rbegin(), m_options.rend(),
                                    [&](const Option& option) { return option.name == name; });
    return found != m_options.rend() ? &*found : nullptr;
}
