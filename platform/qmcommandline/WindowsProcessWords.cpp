#include "qmcommandline/ProcessWords.h"
#include "zemacore/WideText.h"

#include <windows.h>

#include <cwchar>
#include <memory>

#include <shellapi.h>

std::vector<std::string> ProcessWords()
{
    int count = 0;
    const std::unique_ptr<LPWSTR[], decltype(&::LocalFree)> split(
        ::CommandLineToArgvW(::GetCommandLineW(), &count), &::LocalFree);
    std::vector<std::string> words(split ? static_cast<std::size_t>(count) : 0);
    for (std::size_t i = 0; i < words.size(); ++i)
        ZEMA::FromWide(split[i], std::wcslen(split[i]), words[i]);
    return words;
}
