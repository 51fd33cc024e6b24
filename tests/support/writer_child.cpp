// A program that writes logs as its input tells it, a command a line, each answered by a line on its output.
// Ends with its input.
//
//     write LOG TEXT       "true" or "false"; the two characters \n in TEXT stand for a line feed
//     block LOG            BlockBegin
//     end LOG              BlockEnd
//     close                QmLogWriterCloseAll
//     texts LOG SEED N     writes the texts of the first N mixed steps to LOG
//     mixed SEED           takes mixed steps until it is killed; answers the index of each that was done
//     output NAME LENGTH   writes so many characters to an output file

#include "QmLogOutputFile.h"
#include "QmLogWriter.h"
#include "tests/support/MixedSteps.h"

#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <iostream>
#include <sstream>

namespace
{

std::string WithLineFeeds(std::string text)
{
    for (std::size_t at = 0; (at = text.find("\\n", at)) != std::string::npos; ++at)
        text.replace(at, 2, "\n");
    return text;
}

bool Take(const MixedStep& step)
{
    CQmLogWriter& log = QmLogWriterDefine(step.log.c_str());
    switch (step.kind)
    {
    case MixedStep::Kind::kBlockBegin:
        return log.BlockBegin(kDetailKind);
    case MixedStep::Kind::kBlockEnd:
        log.BlockEnd(); // refused when none is open
        return true;
    default:
        return log.Write(step.text.c_str());
    }
}

bool Run(const std::string& command, std::istream& arguments)
{
    std::string name;
    unsigned number = 0;
    if (command == "close")
        return QmLogWriterCloseAll();
    if (command == "mixed")
    {
        arguments >> number;
        for (unsigned index = 0; Take(MixedStep(number, index)); ++index)
        {
            std::cout << index << std::endl;
        }
        return false;
    }

    arguments >> name >> std::ws;
    CQmLogWriter& log = QmLogWriterDefine(name.c_str());
    if (command == "block")
        return log.BlockBegin(kNoticeKind);
    if (command == "end")
        return log.BlockEnd();
    if (command == "write")
    {
        std::string text;
        std::getline(arguments, text);
        return log.Write(WithLineFeeds(text).c_str());
    }
    arguments >> number;
    if (command == "texts")
    {
        unsigned count = 0;
        arguments >> count;
        bool done = true;
        for (unsigned index = 0; index < count; ++index)
            done = log.Write(MixedStep(number, index).text.c_str()) && done;
        return done;
    }
    if (command == "output")
    {
        QmLogOutputFile file(name.c_str());
        file.Write("%s", std::string(number, 'x').c_str());
        return true;
    }
    return false;
}

} // namespace

int main()
{
    _setmode(_fileno(stdout), _O_BINARY); // lines end as the reader expects them
    std::string line;
    while (std::getline(std::cin, line))
    {
        std::istringstream arguments(line);
        std::string command;
        arguments >> command;
        std::cout << (Run(command, arguments) ? "true" : "false") << std::endl;
    }
    return 0;
}
