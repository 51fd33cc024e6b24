// Where there is no system to ask.
#include "qmcommandline/ProcessWords.h"

std::vector<std::string> ProcessWords()
{
    return {};
}
