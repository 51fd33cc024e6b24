#include "logtool/Commands.h"
#include "logtool/Console.h"

// The run-time would replace '*' and '?' in arguments by file names, which is not what a search text means.
extern "C" int _CRT_glob;
int _CRT_glob = 0;

int main(int count, char** words)
{
    logtool::Console console;
    return logtool::Run(std::vector<std::string>(words + 1, words + count), console);
}
